#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/result.h"

// Labels as file names: any text to a name and back, without two labels ever sharing one.
namespace varnhold::services {

// Letters, digits, "-", "_" and inner dots stand for themselves, every other byte for "%" and two
// hex digits. Refuses an empty label, one with control characters or that isn't UTF-8, which could
// forge rows of a listing or spoil it, and one whose name would be too long.
[[nodiscard]] Result<std::string> nameOfLabel(std::string_view label);

// None for a name that no label has.
[[nodiscard]] std::optional<std::string> labelOfName(std::string_view name);

} // namespace varnhold::services
