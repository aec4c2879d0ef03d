#pragma once

#include <string>
#include <vector>

#include "status/bars.h"
#include "status/menu.h"

// Fleets on paper for the views to show.
namespace varnhold::testing {

inline constexpr double rainbowEnd = 0.83;

// Bars of so many bots at levels that look like a working day, or flat ones.
[[nodiscard]] BarImage barsOf(int bots, bool busy = true);

// The menu of a fleet of six with an alert and a custom group.
[[nodiscard]] std::vector<MenuRow> menuRows();

} // namespace varnhold::testing
