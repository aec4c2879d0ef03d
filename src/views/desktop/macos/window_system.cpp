#include "views/desktop/window_system.h"

namespace varnhold {

bool hasWindowManager() {
    return true;
}

bool windowsAreBlended() {
    return true;
}

} // namespace varnhold
