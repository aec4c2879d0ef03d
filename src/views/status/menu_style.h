#pragma once

#include <QProxyStyle>

namespace varnhold {

// Draws the rows of a menu as this program wants them on every desktop: emoji in colour, keys in a
// quiet column at the right, rows whose action has the property alertProperty in red.
class MenuStyle final : public QProxyStyle {
    Q_OBJECT
public:
    static constexpr const char* alertProperty = "alert";

    using QProxyStyle::QProxyStyle;

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
};

} // namespace varnhold
