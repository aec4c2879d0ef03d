#pragma once

#include <QPoint>
#include <QRect>
#include <optional>

#include "platform/user_defaults.h"

namespace varnhold {

// Remembers where the user has put the strip, for each set of screens by itself: a place beside a
// laptop is none at a desk. Main thread.
class StripPlace final {
public:
    // `defaults` must outlive it.
    explicit StripPlace(platform::UserDefaults& defaults) : defaults_(defaults) {}

    // Upper right corner on the screens of this moment; nothing if it was never moved there.
    [[nodiscard]] std::optional<QPoint> kept() const;
    void keep(const QPoint& upperRight);

private:
    platform::UserDefaults& defaults_;
};

// Upper left corner for a strip that nobody has moved, where it covers no window's buttons: at the
// bottom right of what panels leave of the screen.
[[nodiscard]] QPoint freePlace(const QSize& strip, const QRect& area);

// The same in a bar of the shell's own at the top: between the clock in its middle and the signs at
// its right end. Nothing where there isn't the room.
[[nodiscard]] std::optional<QPoint> placeInTopBar(const QSize& strip, const QRect& screen,
                                                  const QRect& area);

} // namespace varnhold
