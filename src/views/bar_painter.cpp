#include "views/bar_painter.h"

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

void paintBars(QPainter& painter, const BarImage& image, const QPointF& origin, qreal scale) {
    painter.setPen(Qt::NoPen);
    painter.setRenderHint(QPainter::Antialiasing);
    for (const BarRectangle& bar : image.bars) {
        const QRectF place =
            snapped(QRectF(bar.x, bar.y, bar.width, bar.height).translated(origin), scale);
        painter.setBrush(QColor::fromHsvF(static_cast<float>(bar.hue),
                                          static_cast<float>(barSaturation),
                                          static_cast<float>(barBrightness)));
        painter.drawRoundedRect(place, barCornerRadius, barCornerRadius);
    }
}

QPixmap barPixmap(const BarImage& image, qreal scale) {
    QPixmap pixmap(QSizeF(image.width * scale, image.height * scale).toSize());
    pixmap.setDevicePixelRatio(scale);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paintBars(painter, image, {0, 0}, scale);
    return pixmap;
}

} // namespace varnhold
