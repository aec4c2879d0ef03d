#pragma once

#include <QProxyStyle>
#include <QWidget>

namespace varnhold {

// Draws the rows of a menu as this program wants them on every desktop: emoji in colour, keys in a
// quiet column at the right, rows whose action has the property alertProperty in red. No row is
// wider than its menu may be, and what doesn't fit is left out; a long menu scrolls.
class MenuStyle final : public QProxyStyle {
    Q_OBJECT
public:
    static constexpr const char* alertProperty = "alert";

    using QProxyStyle::QProxyStyle;

    // In points; rows are as wide as their texts by default.
    void setWidestRow(int width) { widestRow_ = width; }

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    [[nodiscard]] QSize sizeFromContents(ContentsType type, const QStyleOption* option,
                                         const QSize& size, const QWidget* widget) const override;
    [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption* option,
                                  const QWidget* widget) const override;
    [[nodiscard]] int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                                QStyleHintReturn* result) const override;

private:
    int widestRow_ = QWIDGETSIZE_MAX;
};

// What a row of a menu says, without its key, and the points that all of it takes.
[[nodiscard]] QString menuRowTitle(const QString& row);
[[nodiscard]] int menuRowWidth(const QFont& font, const QString& row);

} // namespace varnhold
