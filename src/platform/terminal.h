#pragma once

#include <functional>
#include <optional>
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

// The user's chosen terminal emulator, or the first known one for which `exists` holds; none where
// there is no such. The window stays until a key is pressed, so that the script's last words can be
// read, above all when it has failed. Script and argument are passed as they are and become part of
// no shell's text.
[[nodiscard]] std::optional<ProcessRequest>
linuxTerminalRequest(const std::string& script, const std::string& argument,
                     const std::function<bool(const std::string& path)>& exists);

} // namespace varnhold::platform
