#pragma once

#include "platform/platform.h"
#include "shell/constants.h"

namespace varnhold {

// What every operation on agents needs. Both must outlive the operation, also one that goes on in
// the background.
struct FleetContext {
    platform::Platform& platform;
    const Constants& constants;
};

} // namespace varnhold
