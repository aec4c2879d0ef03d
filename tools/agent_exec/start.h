#pragma once

#include <map>
#include <string>

#include "jobs/job_files.h"
#include "lifecycle/property_list.h"

namespace varnhold::services {

// What a manager of the launchd family reports when an agent could not be started at all.
inline constexpr int cannotSpawn = 78;

// The agent's environment: a small base from the password database, so that it is the same however
// the service manager came up, and over it the variables of the list.
[[nodiscard]] std::map<std::string, std::string> agentEnvironment(const PropertyList& list);

// Turns this process into the agent: session, folder, logs, environment, then the program itself.
// Logs are opened for appending, and one that can't be opened never keeps an agent down; the job
// has the reason. Returns only if the agent can't be started, with what to exit with; the reason is
// on standard error.
[[nodiscard]] int becomeAgent(const PropertyList& list, const JobFiles& job);

} // namespace varnhold::services
