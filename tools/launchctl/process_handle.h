#pragma once

#include <sys/types.h>

namespace varnhold::services {

// Stands for one process, and never for another that has got its number since.
class ProcessHandle final {
public:
    // If there is no such process any more, the handle is good for nothing and does nothing.
    explicit ProcessHandle(pid_t process);
    ProcessHandle(const ProcessHandle&) = delete;
    ProcessHandle& operator=(const ProcessHandle&) = delete;
    ~ProcessHandle();

    // Ends the process by force, unless it has ended by itself.
    void kill() const;

private:
    int handle_;
};

} // namespace varnhold::services
