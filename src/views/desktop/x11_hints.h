#pragma once

#include "views/desktop/window_system.h"

class QWindow;

// What the toolkit doesn't say about X11. Main thread; all of it is harmless where there is no X
// server.
namespace varnhold {

// Asks the window manager to keep a window above others, on every workspace and out of task bars
// and pagers, and yet to let the user move it. Must come before the window is first shown; does
// nothing where there is no X server (EWMH, freedesktop.org).
void setStripHints(QWindow& window);

[[nodiscard]] bool hasX11();

// Whether the window that is in use takes the whole screen (EWMH). Two round trips.
[[nodiscard]] bool hasX11FullScreenWindow();

} // namespace varnhold
