#include "views/status/bar_painter.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "views/colors/colors.h"

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

QColor barColor(double hue) {
    return fromHsv(hue, barSaturation, barBrightness);
}

void paintBars(QPainter& painter, const BarImage& image, const QPointF& origin) {
    const qreal scale = painter.device()->devicePixelRatio();
    painter.setPen(Qt::NoPen);
    painter.setRenderHint(QPainter::Antialiasing);
    for (const BarRectangle& bar : image.bars) {
        painter.setBrush(barColor(bar.hue));
        painter.drawRoundedRect(
            snapped(QRectF(bar.x, bar.y, bar.width, bar.height).translated(origin), scale),
            barCornerRadius, barCornerRadius);
    }
}

} // namespace varnhold
