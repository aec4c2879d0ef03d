#pragma once

#include <cstddef>
#include <functional>

namespace varnhold {

// One hash from several values; their order counts.
template <class... Values>
[[nodiscard]] std::size_t hashOf(const Values&... values) {
    constexpr std::size_t spread = 0x9E3779B9; // golden ratio: equal neighbours don't cancel out
    std::size_t seed = 0;
    ((seed ^= std::hash<Values>{}(values) + spread + (seed << 6U) + (seed >> 2U)), ...);
    return seed;
}

} // namespace varnhold
