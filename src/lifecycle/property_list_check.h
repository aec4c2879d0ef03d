#pragma once

#include <cstddef>
#include <string_view>

#include "base/result.h"

namespace varnhold {

inline constexpr std::size_t largestPropertyList = std::size_t{1024} * 1024; // bytes

// Whether a property list is one that its library can be trusted with. Lists come from folders that
// anything may write to, and the library recurses as deep as they nest, follows shared references
// of binary ones as often as they are named, and ends the process over a NUL in a key. Refused is
// what no service's definition needs: more than a megabyte, thousands of values, deep nesting and
// texts with a NUL. What is accepted may still be no property list.
[[nodiscard]] Result<void> checkPropertyList(std::string_view content);

} // namespace varnhold
