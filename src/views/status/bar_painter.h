#pragma once

#include <QColor>
#include <QPointF>

#include "status/bars.h"

class QPainter;

namespace varnhold {

// The same on light and dark grounds, so that a bot keeps its colour.
[[nodiscard]] QColor barColor(double hue);

// Paints the bars with their upper left corner at `origin`, in points. Edges are moved to whole
// device pixels of what is painted on, so that bars of two points stay crisp at every scale.
void paintBars(QPainter& painter, const BarImage& image, const QPointF& origin);

} // namespace varnhold
