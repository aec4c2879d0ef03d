#pragma once

#include "doctor/finding.h"
#include "doctor/jobs.h"
#include "doctor/surroundings.h"

namespace varnhold::doctor {

// Each bot: whether it can be started, whether it is loaded and runs, how it last ended, with which
// definition it runs, and what its logs say last. Reads only.
[[nodiscard]] Section checkFleet(const Surroundings& surroundings, const Jobs& jobs);

} // namespace varnhold::doctor
