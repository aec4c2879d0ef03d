#pragma once

#include <QImage>

#include "status/bars.h"

namespace varnhold {

// The bars for a square of `side` device pixels, on nothing. `attention`: with a red mark in the
// lower right corner. Any thread.
[[nodiscard]] QImage trayImage(const BarImage& image, int side, bool attention = false);

} // namespace varnhold
