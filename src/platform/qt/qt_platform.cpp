#include "platform/qt/qt_platform.h"

#include <chrono>
#include <thread>

#include "platform/posix_processes.h"
#include "platform/posix_system.h"
#include "platform/qt/qt_http_client.h"
#include "platform/qt/qt_queues.h"

namespace varnhold::platform {

namespace {

class RealClock final : public Clock {
public:
    [[nodiscard]] std::chrono::system_clock::time_point now() override {
        return std::chrono::system_clock::now();
    }
    void sleep(std::chrono::microseconds duration) override {
        std::this_thread::sleep_for(duration);
    }
};

} // namespace

struct QtPlatform::Parts {
    PosixProcesses processes;
    QtQueues queues;
    QtTimers timers;
    RealClock clock;
    std::unique_ptr<System> system = makeSystem();
    std::unique_ptr<UserDefaults> defaults = makeUserDefaults(system->homeDirectory());
    QtHttpClient http;
};

QtPlatform::QtPlatform()
    : parts_(std::make_unique<Parts>()), platform_{parts_->processes, parts_->queues,
                                                   parts_->timers,    parts_->clock,
                                                   *parts_->system,   *parts_->defaults,
                                                   parts_->http} {}

QtPlatform::~QtPlatform() = default;

} // namespace varnhold::platform
