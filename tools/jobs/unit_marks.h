#pragma once

#include "base/result.h"
#include "jobs/job_files.h"
#include "jobs/job_store.h"

// Marks in the folder of a job that a systemd user manager has, for launchctl, which sets them, and
// agent-exec, which goes by them. A failure to set one has its reason.
namespace varnhold::services {

// A job that is loaded but not to run yet. The manager can't hold a unit without starting it, so it
// starts agent-exec all the same, which then ends at once; nothing of that is shown.
[[nodiscard]] bool isHeld(const JobFiles& job);
[[nodiscard]] Result<void> hold(const JobFiles& job);
void release(const JobFiles& job);

// Of a manager that doesn't answer for a moment nobody could tell otherwise that it has any.
[[nodiscard]] bool isUnit(const JobFiles& job);
[[nodiscard]] Result<void> markAsUnit(const JobFiles& job);
// Whether there is the folder of any such job.
[[nodiscard]] bool hasUnits(const JobStore& store);

} // namespace varnhold::services
