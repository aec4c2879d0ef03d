#pragma once

#include <QPixmap>

#include "status/bars.h"

class QPainter;

namespace varnhold {

// Paints the bars with their upper left corner at `origin`, in points. Edges are moved to whole
// device pixels of `scale`, so that bars of two points stay crisp at every scale.
void paintBars(QPainter& painter, const BarImage& image, const QPointF& origin, qreal scale);

// The bars alone on nothing.
[[nodiscard]] QPixmap barPixmap(const BarImage& image, qreal scale);

} // namespace varnhold
