#pragma once

// What windows may count on. Main thread, after the application object has been made.
namespace varnhold {

// Whether somebody keeps windows that are minimised: everywhere but under X11 without a window
// manager.
[[nodiscard]] bool hasWindowManager();

// Whether see-through parts of windows show what is behind them: everywhere but under X11, and
// there while a compositor holds its selection.
[[nodiscard]] bool windowsAreBlended();

} // namespace varnhold
