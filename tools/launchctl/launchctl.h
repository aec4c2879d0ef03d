#pragma once

#include <cstdint>
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

// Does what a command asks for, in the words and with the exit codes that other programs know.
// `userId` is whose services these are.
[[nodiscard]] int perform(const Command& command, ServiceManager& manager, std::uint64_t userId,
                          std::ostream& out, std::ostream& error);

} // namespace varnhold::services
