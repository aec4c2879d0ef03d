#pragma once

#include "doctor/finding.h"
#include "doctor/jobs.h"
#include "doctor/surroundings.h"

namespace varnhold::doctor {

// What the fleet stands on: the service manager, the daemon code, the session, the supervisor
// itself, processes that were left behind, logs and the daemons' events. Reads only.
[[nodiscard]] Section checkSystem(const Surroundings& surroundings, const Jobs& jobs);

} // namespace varnhold::doctor
