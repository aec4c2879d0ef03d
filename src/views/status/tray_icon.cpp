#include "views/status/tray_icon.h"

#include <QPainter>
#include <cmath>

#include "status/tray_bars.h"
#include "views/status/bar_painter.h"

namespace varnhold {

namespace {

constexpr int narrowestRounded = 4; // pixels; narrower bars keep their corners, or they would blur
constexpr qreal markPerSide = 0.45;
constexpr qreal rimPerSide = 0.07;
constexpr QRgb markColor = 0xffe5252a;

void paintBarsOf(const BarImage& image, int side, QPainter& painter) {
    for (const TrayBar& bar : trayBars(image, side)) {
        const QRect place(bar.x, bar.y, bar.width, bar.height);
        const qreal radius = bar.width < narrowestRounded ? 0 : bar.width / 3.0;
        painter.setBrush(barColor(bar.hue));
        painter.drawRoundedRect(place, radius, radius);
    }
}

// Cut out of the bars with a rim, so that it is seen on a red bar too.
void paintMark(int side, QPainter& painter) {
    const qreal size = std::round(side * markPerSide);
    const QRectF place(side - size, side - size, size, size);
    const qreal rim = std::max(1.0, std::round(side * rimPerSide));
    painter.setCompositionMode(QPainter::CompositionMode_Clear);
    painter.setBrush(Qt::black);
    painter.drawEllipse(place.adjusted(-rim, -rim, rim, rim));
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.setBrush(QColor::fromRgba(markColor));
    painter.drawEllipse(place);
}

} // namespace

QImage trayImage(const BarImage& image, int side, bool attention) {
    QImage picture(side, side, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    paintBarsOf(image, side, painter);
    if (attention) {
        paintMark(side, painter);
    }
    return picture;
}

} // namespace varnhold
