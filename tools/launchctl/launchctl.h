#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <ostream>

#include "launchctl/command_line.h"
#include "launchctl/service_manager.h"

namespace varnhold::services {

enum ExitCode : int {
    exitDone = 0,
    exitNoSuchProcess = 3,
    exitInputOutput = 5,
    exitWrongUse = 64,
    exitUnavailable = 69,
    exitNoSuchService = 113,
    exitWrongDomain = 125,
};

enum class Purpose { list, change };

using ChooseManager = std::function<Result<std::shared_ptr<ServiceManager>>(Purpose)>;

// Does what a command asks for, in the words and with the exit codes that other programs know.
// `choose` is asked once, and only for a command that needs a manager; `userId` is whose services
// these are.
[[nodiscard]] int perform(const Command& command, const ChooseManager& choose, std::uint64_t userId,
                          std::ostream& out, std::ostream& error);

} // namespace varnhold::services
