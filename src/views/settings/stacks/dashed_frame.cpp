#include "views/settings/stacks/dashed_frame.h"

#include <QPainter>

namespace varnhold {

DashedFrame::DashedFrame(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setAntialiasing(true);
    connect(this, &DashedFrame::looksChanged, this, [this] { update(); });
}

void DashedFrame::paint(QPainter* painter) {
    const double inset = lineWidth_ / 2;
    const QRectF place = boundingRect().adjusted(inset, inset, -inset, -inset);
    QPen pen(stroke_, lineWidth_);
    pen.setCapStyle(Qt::FlatCap);
    if (dash_ > 0) {
        pen.setDashPattern(
            {dash_ / lineWidth_, dash_ / lineWidth_}); // counted in widths of the pen
    }
    painter->setPen(pen);
    painter->setBrush(fill_);
    painter->drawRoundedRect(place, radius_ - inset, radius_ - inset);
}

} // namespace varnhold
