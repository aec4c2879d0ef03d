#pragma once

#include "base/result.h"
#include "jobs/job_files.h"

// How an agent's supervisor under s6 learns that its job is up. Without that it would pause for a
// second before it starts the job again, however long it had been running.
namespace varnhold::services {

// By launchctl, when it makes the job.
[[nodiscard]] Result<void> askToListen(const JobFiles& job);
// By agent-exec. Nothing happens in a job whose manager wasn't asked to listen.
void tellReady(const JobFiles& job);

} // namespace varnhold::services
