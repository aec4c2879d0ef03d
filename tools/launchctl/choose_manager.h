#pragma once

#include <memory>
#include <string>

#include "launchctl/launchctl.h"
#include "launchctl/service_manager.h"

namespace varnhold::services {

// The manager that has the user's jobs, so that a fleet is never split between two: s6 while it has
// any, else the systemd user manager of the session that the runtime folder belongs to, where one
// answers, else s6. While a user manager is executed anew, it is away for a moment and still has
// its jobs: whoever wants to change something waits some seconds for it, and gets a manager that
// lists what is known and refuses the rest if it doesn't come back. Whoever lists gets that at
// once. Fails if the folder isn't private to the user.
//
// `folder`: our own folder in the session's runtime folder; `agentExec`: the helper beside us.
[[nodiscard]] Result<std::unique_ptr<ServiceManager>>
chooseManager(const std::string& folder, const std::string& agentExec, Purpose purpose);

} // namespace varnhold::services
