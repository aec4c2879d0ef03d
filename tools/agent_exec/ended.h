#pragma once

#include "agent_exec/job_files.h"

namespace varnhold::services {

enum class AfterEnd { startAgain, stayDown };

// Looks after a job whose agent has just ended: notes how, and waits until it may be started again.
// A job that isn't kept alive stays down, unless somebody was in a hurry to have it started.
[[nodiscard]] AfterEnd agentEnded(const JobFiles& job, int waitStatus);

} // namespace varnhold::services
