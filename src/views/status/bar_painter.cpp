#include "views/status/bar_painter.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace varnhold {

namespace {

qreal snapped(qreal points, qreal scale) {
    return std::round(points * scale) / scale;
}

QRectF snapped(const QRectF& rectangle, qreal scale) {
    const qreal onePixel = 1 / scale;
    const qreal left = snapped(rectangle.left(), scale);
    const qreal top = snapped(rectangle.top(), scale);
    return {left, top, std::max(onePixel, snapped(rectangle.width(), scale)),
            std::max(onePixel, snapped(rectangle.bottom(), scale) - top)};
}

} // namespace

QColor barColour(double hue) {
    return QColor::fromHsvF(static_cast<float>(hue), static_cast<float>(barSaturation),
                            static_cast<float>(barBrightness));
}

void paintBars(QPainter& painter, const BarImage& image, const QPointF& origin) {
    const qreal scale = painter.device()->devicePixelRatio();
    painter.setPen(Qt::NoPen);
    painter.setRenderHint(QPainter::Antialiasing);
    for (const BarRectangle& bar : image.bars) {
        painter.setBrush(barColour(bar.hue));
        painter.drawRoundedRect(
            snapped(QRectF(bar.x, bar.y, bar.width, bar.height).translated(origin), scale),
            barCornerRadius, barCornerRadius);
    }
}

} // namespace varnhold
