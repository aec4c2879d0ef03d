#pragma once

#include <vector>

#include "status/bars.h"

// The bars on the small square of pixels that a tray has room for.
//
// A tray's square is too narrow for many bars of the strip's measure, and shrinking the strip's
// picture would smear them. So the bars are laid out afresh for each size on whole pixels, and
// where there are more bots than fit, neighbours share a bar. Pure; any thread.
namespace varnhold {

struct TrayBar {
    int x = 0; // pixels, as all of these
    int y = 0;
    int width = 0;
    int height = 0;
    double hue = 0; // 0 to 1

    bool operator==(const TrayBar&) const = default;
};

// Bars for a square of `side` pixels, centred in it. Each is at least two pixels wide with a gap of
// at least one beside it. A bar that several bots share stands as high as the busiest of them and
// has the hue of their middle. A bar at rest takes a third of the height: two pixels in the middle
// of a panel look like dirt on it.
[[nodiscard]] std::vector<TrayBar> trayBars(const BarImage& image, int side);

} // namespace varnhold
