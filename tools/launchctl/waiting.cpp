#include "launchctl/waiting.h"

#include <thread>

namespace varnhold::services {

bool waitUntil(std::chrono::milliseconds limit, const std::function<bool()>& condition,
               std::chrono::milliseconds pauseBetweenLooks) {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() >= end) {
            return false;
        }
        std::this_thread::sleep_for(pauseBetweenLooks);
    }
    return true;
}

} // namespace varnhold::services
