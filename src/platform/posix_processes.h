#pragma once

#include <mutex>
#include <vector>

#include <sys/types.h>

#include "platform/platform.h"

namespace varnhold::platform {

// Child processes by posix_spawn, whose cost doesn't grow with the program as that of a fork does.
//
// A child gets no signal that is blocked or, of those that concern pipes and children, ignored, and
// reads nothing. A call that fails leaves no descriptor behind. Any thread may call.
class PosixProcesses final : public Processes {
public:
    ProcessResult run(const ProcessRequest& request) override;
    void start(const ProcessRequest& request) override;

private:
    void keep(pid_t child);
    void reap();

    std::mutex mutex_;
    std::vector<pid_t> left_; // children that nobody waits for, until they have ended
};

} // namespace varnhold::platform
