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

// Upper left corner for a strip that nobody has moved, in what panels leave of the screen: at the
// bottom right, where it covers no window's buttons.
[[nodiscard]] QPoint freePlace(const QSize& strip, const QRect& area);

} // namespace varnhold
