#include "status/tray_bars.h"

#include <algorithm>
#include <cmath>

namespace varnhold {

namespace {

constexpr int narrowestBar = 2; // pixels
constexpr int narrowestGap = 1;
constexpr int widestBarsInSquare = 4; // a fleet of one or two isn't a wall of colour
constexpr int flatBarsInSquare = 3;   // a fleet at rest is seen too, and clearly at rest

struct Measure {
    int width = narrowestBar;
    int gap = narrowestGap;

    [[nodiscard]] int total(int count) const { return count * width + (count - 1) * gap; }
};

// The bars that fill the square best, with gaps of a third to a half of a bar.
Measure measureFor(int count, int side) {
    Measure best;
    for (int width = narrowestBar + 1; width <= side / widestBarsInSquare; ++width) {
        for (int gap = (width + 2) / 3; gap <= (width + 1) / 2; ++gap) {
            const Measure measure{width, gap};
            if (measure.total(count) <= side && measure.total(count) >= best.total(count)) {
                best = measure;
            }
        }
    }
    return best;
}

// Even or odd like the side, so that it can stand in the very middle.
int heightFor(double level, int side) {
    const int flat = side / flatBarsInSquare;
    const int height = flat + static_cast<int>(std::lround(level * (side - flat)));
    return height + (side - height) % 2;
}

} // namespace

std::vector<TrayBar> trayBars(const BarImage& image, int side) {
    std::vector<TrayBar> bars;
    const std::size_t bots = image.bars.size();
    const int room = std::max(1, (side + narrowestGap) / (narrowestBar + narrowestGap));
    const std::size_t count = std::min(bots, static_cast<std::size_t>(room));
    const Measure measure = measureFor(static_cast<int>(count), side);
    int x = (side - measure.total(static_cast<int>(count))) / 2;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t first = i * bots / count;
        const std::size_t last = (i + 1) * bots / count - 1;
        double highest = 0;
        for (std::size_t bot = first; bot <= last; ++bot) {
            highest = std::max(highest, image.bars[bot].height);
        }
        const double lifted = std::max(0.0, highest - smallestBar) / (image.height - smallestBar);
        const int height = heightFor(lifted, side);
        bars.push_back({.x = x,
                        .y = (side - height) / 2,
                        .width = measure.width,
                        .height = height,
                        .hue = (image.bars[first].hue + image.bars[last].hue) / 2});
        x += measure.width + measure.gap;
    }
    return bars;
}

} // namespace varnhold
