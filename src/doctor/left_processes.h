#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "doctor/jobs.h"
#include "doctor/surroundings.h"

namespace varnhold::doctor {

struct LeftProcess {
    std::int64_t id = 0;
    std::string name; // "claude", or the role of a daemon
};

// Command-line tools that daemons have run and left behind: their parent is whoever takes in
// orphans. Pure; any thread.
[[nodiscard]] std::vector<LeftProcess> orphanedTools(const std::vector<Process>& processes);

// Daemons that belong to no loaded job.
[[nodiscard]] std::vector<LeftProcess> strayDaemons(const std::vector<Process>& processes,
                                                    const Jobs& jobs);

} // namespace varnhold::doctor
