#include "views/desktop/panel.h"

#include <QPainter>
#include <QPalette>
#include <QWidget>

#include "views/colors/colors.h"
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
    // A strong contrast knows no faint frame, but a thicker one.
    const bool isStrong = isHighContrast(palette);
    const qreal width = isStrong && strength > usualFrame ? 3 : 1;
    QColor frame = palette.color(QPalette::WindowText);
    frame.setAlphaF(isStrong ? 1 : strength);
    painter.setPen(QPen(frame, width));
    painter.setBrush(palette.color(QPalette::Window));
    const qreal inset = width / 2;
    painter.drawRoundedRect(place.adjusted(inset, inset, -inset, -inset), isSquare ? 0 : radius,
                            isSquare ? 0 : radius);
    painter.restore();
}

void chooseCorners(QWidget& widget) {
    widget.setProperty(squareCorners, !windowsAreBlended());
}

} // namespace varnhold
