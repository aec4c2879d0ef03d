#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

// Where things go on a screen, in its points. Pure; any thread.
namespace varnhold {

enum class Alignment { left, centre };

// Upper left corner of a panel that belongs to an anchor: under it, or above it where there is no
// room below, and in any case inside the area. `gap`: distance from the anchor.
[[nodiscard]] QPoint placeBeside(const QRect& anchor, const QSize& panel, const QRect& area,
                                 Alignment alignment, int gap);

// A panel beside its anchor: at the side where it fits, or else at the one with more room, and then
// no higher than that room. It never covers the anchor, unless there is no room at either side.
[[nodiscard]] QRect fittedBeside(const QRect& anchor, const QSize& panel, const QRect& area,
                                 Alignment alignment, int gap);

// A point-like anchor where a desktop's panel usually keeps its tray: at the right end of the edge
// of `screen` that a panel takes from `area`, or at the top right where none does.
[[nodiscard]] QRect panelCorner(const QRect& screen, const QRect& area);

// The place nearest to `window` that lies inside the area.
[[nodiscard]] QPoint keptInside(const QRect& window, const QRect& area);

} // namespace varnhold
