#pragma once

#include <memory>
#include <string>

#include "launchctl/service_manager.h"

namespace varnhold::services {

// The manager that has the user's jobs, so that a fleet is never split between two: s6 while it has
// any, else the systemd user manager of the session that the runtime folder belongs to, where one
// answers, else s6. Fails if there are jobs of a user manager that doesn't answer, even after some
// seconds: while it is executed anew, it is away for a moment and still has them.
//
// `folder`: our own folder in the session's runtime folder; `agentExec`: the helper beside us.
[[nodiscard]] Result<std::unique_ptr<ServiceManager>> chooseManager(const std::string& folder,
                                                                    const std::string& agentExec);

} // namespace varnhold::services
