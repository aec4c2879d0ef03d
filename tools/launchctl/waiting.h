#pragma once

#include <chrono>
#include <functional>

namespace varnhold::services {

// Looks again and again, every few milliseconds, until the condition holds or the time is up. True
// if it held.
bool waitUntil(std::chrono::milliseconds limit, const std::function<bool()>& condition);

} // namespace varnhold::services
