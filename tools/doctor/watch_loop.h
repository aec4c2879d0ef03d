#pragma once

#include <functional>

#include "doctor/surroundings.h"

namespace varnhold::doctor {

// Shows the fleet on the whole terminal, every two seconds anew, until "q" is typed or a signal
// ends the program; the terminal is then as it was. `around` gives the surroundings of the moment.
// 0, or 64 where input or output is no terminal.
[[nodiscard]] int watchFleet(const std::function<Surroundings()>& around, bool color);

} // namespace varnhold::doctor
