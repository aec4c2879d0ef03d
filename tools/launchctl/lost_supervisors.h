#pragma once

#include <string>

#include "jobs/label_name.h"

namespace varnhold::services {

// Ends what s6 runs for jobs whose folders were removed under it, by a cleaner or by hand: nobody
// could tell it to end any more, and a job that is loaded again would run twice. Agents are asked
// to end and have five seconds for it. `folder`: the runtime folder in which theirs were.
void endLostSupervisors(const std::string& folder);
// Of this one job. True if there was any.
[[nodiscard]] bool endLostSupervisor(const std::string& folder, const JobName& name);

} // namespace varnhold::services
