#include "views/colours.h"

#include <QPainter>
#include <QPainterPath>
#include <QWidget>

#include "views/x11_hints.h"

namespace varnhold {

namespace {

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() < 128;
}

} // namespace

QColor alertColour(const QPalette& palette) {
    return isDark(palette) ? QColor(0xff, 0x6b, 0x63) : QColor(0xb8, 0x1f, 0x18);
}

QColor warningColour(const QPalette& palette) {
    return isDark(palette) ? QColor(0xff, 0x9f, 0x0a) : QColor(0x9c, 0x48, 0x00);
}

QColor quietColour(const QPalette& palette) {
    return isDark(palette) ? QColor(0xa8, 0xa8, 0xad) : QColor(0x5c, 0x5c, 0x61);
}

void drawPanel(QPainter& painter, const QRectF& place, const QPalette& palette, qreal radius,
               float strength) {
    painter.save();
    // A mask cuts the corners where nothing blends them; smooth ones would be dark behind it.
    const auto* widget = dynamic_cast<const QWidget*>(painter.device());
    if (widget != nullptr && !widget->mask().isEmpty()) {
        painter.fillRect(place, palette.color(QPalette::Window));
    }
    painter.setRenderHint(QPainter::Antialiasing);
    QColor frame = palette.color(QPalette::WindowText);
    frame.setAlphaF(strength);
    painter.setPen(QPen(frame, 1));
    painter.setBrush(palette.color(QPalette::Window));
    painter.drawRoundedRect(place.adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    painter.restore();
}

void roundCorners(QWidget& widget, qreal radius) {
    if (windowsAreBlended()) {
        widget.clearMask();
        return;
    }
    QPainterPath path;
    path.addRoundedRect(widget.rect(), radius, radius);
    widget.setMask(QRegion(path.toFillPolygon().toPolygon()));
}

} // namespace varnhold
