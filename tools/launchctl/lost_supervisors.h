#pragma once

#include <string>

namespace varnhold::services {

// Ends what s6 runs for jobs whose folders were removed under it, by a cleaner or by hand: nobody
// could tell it to end any more, and a job that is loaded again would run twice. Agents are asked
// to end and have five seconds for it. `folder`: the runtime folder in which theirs were.
void endLostSupervisors(const std::string& folder);

} // namespace varnhold::services
