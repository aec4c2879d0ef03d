#pragma once

#include <string>

#include "platform/layout.h"

// The two questions that each system answers in its own way; linux/ and macos/ implement them.
namespace varnhold::platform {

// Absolute path of the running program, links resolved; empty if the system won't tell.
[[nodiscard]] std::string executablePath();

// The layout rule of the system that this was built for.
[[nodiscard]] Layout systemLayout(const std::string& executable);

} // namespace varnhold::platform
