#pragma once

#include <optional>

namespace varnhold::doctor {

// Whether anybody on the session's bus shows status items; none if the bus doesn't answer. Asks the
// bus alone, and nothing is started by it.
[[nodiscard]] std::optional<bool> sessionHasTray();

} // namespace varnhold::doctor
