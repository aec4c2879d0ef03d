#include "launchctl/choose_manager.h"

#include "launchctl/s6_manager.h"
#include "launchctl/systemd_manager.h"

namespace varnhold::services {

std::unique_ptr<ServiceManager> chooseManager(const std::string& folder,
                                              const std::string& agentExec) {
    auto s6 = std::make_unique<S6Manager>(folder, agentExec);
    if (s6->hasJobs()) {
        return s6;
    }
    // Whoever asks, from a terminal, a timer or another session, finds the same manager by the
    // runtime folder; variables of the caller have no say in it.
    auto manager = UserManager::connect(folder.substr(0, folder.rfind('/')));
    if (!manager) {
        return s6;
    }
    return std::make_unique<SystemdManager>(*std::move(manager), folder, agentExec);
}

} // namespace varnhold::services
