#pragma once

#include <chrono>
#include <string>

// Moments as text that other programs read. Pure; any thread.
namespace varnhold::dates {

// "2026-03-04T05:06:07Z": ISO 8601 in UTC, the fraction of the second cut off, not rounded.
[[nodiscard]] std::string iso8601(std::chrono::system_clock::time_point moment);

} // namespace varnhold::dates
