#pragma once

#include <chrono>
#include <functional>

namespace varnhold::services {

// Looks again and again until the condition holds or the time is up. True if it held.
bool waitUntil(std::chrono::milliseconds limit, const std::function<bool()>& condition,
               std::chrono::milliseconds pauseBetweenLooks = std::chrono::milliseconds(4));

} // namespace varnhold::services
