#pragma once

#include <memory>

#include "platform/platform.h"

namespace varnhold::platform {

// The facts of this machine, read once. HOME decides the home folder, and the password database
// where it is unset or no absolute path.
[[nodiscard]] std::unique_ptr<System> makeSystem();

} // namespace varnhold::platform
