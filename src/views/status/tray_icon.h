#pragma once

#include <QIcon>

#include "status/bars.h"

class QPainter;

namespace varnhold {

// Paints the bars for a square of `side` device pixels, its upper left corner at the painter's
// origin; the painter must count device pixels.
void paintTrayBars(QPainter& painter, const BarImage& image, int side);

// An icon that paints the bars afresh for every size that it is asked for.
[[nodiscard]] QIcon trayIcon(const BarImage& image);

} // namespace varnhold
