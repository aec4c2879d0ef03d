#include "views/desktop/panel.h"

#include <QPainter>
#include <QPalette>
#include <QWidget>

#include "views/desktop/x11_hints.h"

namespace varnhold {

namespace {

constexpr const char* squareCorners = "squareCorners";

} // namespace

void drawPanel(QPainter& painter, const QRectF& place, const QPalette& palette, qreal radius,
               float strength) {
    painter.save();
    const auto* widget = dynamic_cast<const QWidget*>(painter.device());
    const bool isSquare = widget != nullptr && widget->property(squareCorners).toBool();
    painter.setRenderHint(QPainter::Antialiasing);
    QColor frame = palette.color(QPalette::WindowText);
    frame.setAlphaF(strength);
    painter.setPen(QPen(frame, 1));
    painter.setBrush(palette.color(QPalette::Window));
    painter.drawRoundedRect(place.adjusted(0.5, 0.5, -0.5, -0.5), isSquare ? 0 : radius,
                            isSquare ? 0 : radius);
    painter.restore();
}

void chooseCorners(QWidget& widget) {
    widget.setProperty(squareCorners, !windowsAreBlended());
}

} // namespace varnhold
