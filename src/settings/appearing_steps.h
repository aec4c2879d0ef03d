#pragma once

#include <functional>

namespace varnhold {

// Steps of the settings window's appearing that belong to other subjects than files.
struct AppearingSteps {
    std::function<void()> fetchTelegramNames;
    std::function<void()> startKeepaliveTimer;
};

} // namespace varnhold
