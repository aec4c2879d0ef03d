#pragma once

#include <optional>
#include <string>

#include "jobs/job_files.h"

namespace varnhold::services {

enum class AfterEnd { startAgain, stayDown };

// Waits until the job may be started again: only one that is kept alive has to wait, and not if
// somebody skips the rest of it to have it started. That is what it gives back. One whose
// definition can't be read waits too: its manager may start it again for ever.
[[nodiscard]] AfterEnd waitForTurn(const JobFiles& job);

// Looks after a job whose agent has just ended: notes how, and waits for its turn. A job that isn't
// kept alive stays down, unless somebody skipped the wait.
[[nodiscard]] AfterEnd agentEnded(const JobFiles& job, int waitStatus);

// Wait status from what a systemd unit tells of its last process in EXIT_CODE and EXIT_STATUS:
// "exited" with a number, "killed" or "dumped" with a signal's short name. None if it tells none.
[[nodiscard]] std::optional<int> waitStatusOfUnit(const std::string& code,
                                                  const std::string& status);

} // namespace varnhold::services
