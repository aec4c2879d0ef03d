#pragma once

class QWindow;

namespace varnhold {

// Asks the window manager to keep a window above others, on every workspace and out of task bars
// and pagers, and yet to let the user move it. Must come before the window is first shown; does
// nothing where there is no X server (EWMH, freedesktop.org).
void setStripHints(QWindow& window);

// Whether see-through parts of windows show what is behind them: always under Wayland, and under
// X11 while a compositor holds its selection.
[[nodiscard]] bool windowsAreBlended();

} // namespace varnhold
