#pragma once

namespace varnhold {

// Where desktops put the token that lets a window come to the front under Wayland (XDG activation
// of freedesktop.org), and where toolkits look for it.
inline constexpr const char* activationTokenVariable = "XDG_ACTIVATION_TOKEN";

} // namespace varnhold
