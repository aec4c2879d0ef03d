#pragma once

#include <optional>

namespace varnhold::doctor {

// Whether a panel on the X server that DISPLAY names takes in windows of others (XEmbed system
// tray, freedesktop.org); none if the server refuses us or hasn't answered within a second. Only
// asks.
[[nodiscard]] std::optional<bool> displayHasTray();

} // namespace varnhold::doctor
