#pragma once

#include <optional>
#include <string>

#include "platform/layout.h"
#include "platform/platform.h"

// The questions that each system answers in its own way; linux/ and macos/ implement them.
namespace varnhold::platform {

// Absolute path of the running program, links resolved; empty if the system won't tell.
[[nodiscard]] std::string executablePath();

// The layout rule of the system that this was built for.
[[nodiscard]] Layout systemLayout(const std::string& executable);

// See System::terminalRequest.
[[nodiscard]] std::optional<ProcessRequest> systemTerminalRequest(const std::string& script,
                                                                  const std::string& argument);

} // namespace varnhold::platform
