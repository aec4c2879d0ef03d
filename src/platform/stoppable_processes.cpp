#include "platform/stoppable_processes.h"

#include <chrono>

namespace varnhold::platform {

ProcessResult StoppableProcesses::run(const ProcessRequest& request) {
    if (!enter()) {
        return {};
    }
    ProcessResult result = processes_.run(request);
    leave();
    return result;
}

void StoppableProcesses::start(const ProcessRequest& request) {
    if (enter()) {
        processes_.start(request);
        leave();
    }
}

bool StoppableProcesses::stop(std::chrono::milliseconds longest) {
    std::unique_lock lock(mutex_);
    stopped_ = true;
    return idle_.wait_for(lock, longest, [this] { return running_ == 0; });
}

bool StoppableProcesses::enter() {
    const std::lock_guard guard(mutex_);
    running_ += stopped_ ? 0 : 1;
    return !stopped_;
}

void StoppableProcesses::leave() {
    const std::lock_guard guard(mutex_);
    --running_;
    idle_.notify_all();
}

} // namespace varnhold::platform
