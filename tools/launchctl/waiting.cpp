#include "launchctl/waiting.h"

#include <thread>

namespace varnhold::services {

namespace {

using namespace std::chrono_literals;

constexpr auto pauseBetweenLooks = 4ms;

} // namespace

bool waitUntil(std::chrono::milliseconds limit, const std::function<bool()>& condition) {
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
