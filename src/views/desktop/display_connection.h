#pragma once

namespace varnhold {

// Descriptor of the toolkit's connection to the X server or the Wayland compositor, which stays the
// toolkit's; -1 if there is none or it can't be found. Main thread, after the application object
// has been made.
[[nodiscard]] int displayConnection();

// Whether the desktop is a Wayland compositor's, though our own windows may be those of an X server
// beside it. Such a server knows where the pointer is, and hears of presses, only while they are
// over windows of its own.
[[nodiscard]] bool desktopIsWayland();

} // namespace varnhold
