#include "views/desktop/placement.h"

#include <algorithm>

namespace varnhold {

namespace {

// Like std::clamp, but a window larger than its area starts where the area starts.
int clamped(int wanted, int lowest, int highest) {
    return std::max(lowest, std::min(wanted, highest));
}

} // namespace

QPoint keptInside(const QRect& window, const QRect& area) {
    return {clamped(window.x(), area.x(), area.x() + area.width() - window.width()),
            clamped(window.y(), area.y(), area.y() + area.height() - window.height())};
}

QPoint placeBeside(const QRect& anchor, const QSize& panel, const QRect& area, Alignment alignment,
                   int gap) {
    const int left = alignment == Alignment::left
                         ? anchor.x()
                         : anchor.x() + (anchor.width() - panel.width()) / 2;
    const int below = anchor.y() + anchor.height() + gap;
    const int above = anchor.y() - gap - panel.height();
    const bool fitsBelow = below + panel.height() <= area.y() + area.height();
    const int top = fitsBelow || above < area.y() ? below : above;
    return keptInside({QPoint(left, top), panel}, area);
}

QRect fittedBeside(const QRect& anchor, const QSize& panel, const QRect& area, Alignment alignment,
                   int gap) {
    const int below = area.y() + area.height() - anchor.y() - anchor.height() - gap;
    const int above = anchor.y() - gap - area.y();
    const int room = std::min(std::max(below, above), area.height());
    const QSize fitted(std::min(panel.width(), area.width()),
                       room > 0 ? std::min(panel.height(), room) : panel.height());
    return {placeBeside(anchor, fitted, area, alignment, gap), fitted};
}

QRect panelCorner(const QRect& screen, const QRect& area) {
    const int takenAtTop = area.y() - screen.y();
    const int takenAtBottom = screen.y() + screen.height() - area.y() - area.height();
    const int y = takenAtBottom > takenAtTop ? area.y() + area.height() - 1 : area.y();
    return {area.x() + area.width() - 1, y, 1, 1};
}

} // namespace varnhold
