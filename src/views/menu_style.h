#pragma once

#include <QProxyStyle>

namespace varnhold {

// Draws menu rows whose action has the property alertProperty in red. Qt has no colour of its own
// for a single row.
class MenuStyle final : public QProxyStyle {
    Q_OBJECT
public:
    static constexpr const char* alertProperty = "alert";

    using QProxyStyle::QProxyStyle;

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
};

} // namespace varnhold
