#pragma once

namespace varnhold {

// Descriptor of the toolkit's connection to the X server or the Wayland compositor, which stays the
// toolkit's; -1 if there is none or it can't be found. Main thread, after the application object
// has been made.
[[nodiscard]] int displayConnection();

} // namespace varnhold
