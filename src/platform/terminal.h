#pragma once

#include <functional>
#include <string>

#include "platform/platform.h"

// Running a script with one argument in a terminal window of the user's.
//
// Both systems' ways are plain builders of a child process, so that each is tested on the other.
namespace varnhold::platform {

// Scripts the system's terminal. The script's path stands in single quotes inside the text; the
// argument isn't quoted.
[[nodiscard]] ProcessRequest macTerminalRequest(const std::string& script,
                                                const std::string& argument);

// The user's chosen terminal emulator, or the first known one for which `exists` holds. Script and
// argument are passed as they are, never through a shell.
[[nodiscard]] ProcessRequest
linuxTerminalRequest(const std::string& script, const std::string& argument,
                     const std::function<bool(const std::string& path)>& exists);

} // namespace varnhold::platform
