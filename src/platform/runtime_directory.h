#pragma once

#include <cstdint>
#include <string>

namespace varnhold::platform {

// The program's own folder for locks, sockets and other things that are gone with the session:
// below XDG_RUNTIME_DIR (freedesktop.org base directories), or where that isn't set, below the
// folder that a login manager would have made, or else in /tmp with the user's id in its name. Only
// named here, not made; whoever makes it gives it the mode 0700.
[[nodiscard]] std::string runtimeDirectory(const char* xdgRuntimeDir, std::uint32_t userId);

} // namespace varnhold::platform
