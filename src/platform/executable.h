#pragma once

#include <optional>
#include <string>
#include <sys/types.h>

#include "platform/layout.h"
#include "platform/platform.h"

// The questions that each system answers in its own way; linux/ and macos/ implement them.
namespace varnhold::platform {

// Absolute path of the running program, links resolved; empty if the system won't tell.
[[nodiscard]] std::string executablePath();

// The layout rule of the system that this was built for.
[[nodiscard]] Layout systemLayout(const std::string& executable);

// A descriptor of the caller's that can be read from once the child has ended; below 0 where the
// system has none to give.
[[nodiscard]] int exitDescriptor(pid_t child);

// See System::orphanSweep.
[[nodiscard]] std::string systemOrphanSweep();

// See System::terminalRequest.
[[nodiscard]] std::optional<ProcessRequest> systemTerminalRequest(const std::string& script,
                                                                  const std::string& argument);

} // namespace varnhold::platform
