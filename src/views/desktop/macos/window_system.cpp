#include "views/desktop/window_system.h"

#include <QScreen>
#include <functional>

#include "views/desktop/session_kind.h"
#include "views/desktop/work_area.h"

namespace varnhold {

bool hasWindowManager() {
    return true;
}

bool windowsAreBlended() {
    return true;
}

bool desktopIsWayland() {
    return false;
}

QRect freeArea(const QScreen& screen) {
    return screen.availableGeometry();
}

// The toolkit tells of them all.
void onPanelsChanged(QObject*, const std::function<void()>&) {}

} // namespace varnhold
