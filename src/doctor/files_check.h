#pragma once

#include "doctor/finding.h"
#include "doctor/surroundings.h"

namespace varnhold::doctor {

// Each settings file: whether the supervisor can read it, where it can't and what that means, what
// the next save drops, who else can read it, and whether a save has room. Reads only.
[[nodiscard]] Section checkFiles(const Surroundings& surroundings);

} // namespace varnhold::doctor
