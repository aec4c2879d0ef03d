#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

#include "platform/platform.h"

namespace varnhold::platform {

// Children of work that may be stopped for good while it goes on in the background. Once it has
// been stopped, requests are as those of programs that can't be launched. Any thread.
class StoppableProcesses final : public Processes {
public:
    explicit StoppableProcesses(Processes& processes) : processes_(processes) {}

    ProcessResult run(const ProcessRequest& request) override;
    void start(const ProcessRequest& request) override;

    // Waits until the children that are running have ended, but no longer than so long: false if
    // some are running even then.
    bool stop(std::chrono::milliseconds longest);

private:
    [[nodiscard]] bool enter();
    void leave();

    Processes& processes_;
    std::mutex mutex_;
    std::condition_variable idle_;
    bool stopped_ = false;
    int running_ = 0;
};

} // namespace varnhold::platform
