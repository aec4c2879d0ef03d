#pragma once

#include <memory>

#include "platform/platform.h"

namespace varnhold::platform {

// The real surroundings, on QtCore. Make it on the main thread after the application object, and
// keep it until the application is gone: background tasks may still use it.
class QtPlatform final {
public:
    QtPlatform();
    ~QtPlatform();
    QtPlatform(const QtPlatform&) = delete;
    QtPlatform& operator=(const QtPlatform&) = delete;

    [[nodiscard]] Platform& interfaces() { return platform_; }

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
    Platform platform_;
};

} // namespace varnhold::platform
