#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <sys/types.h>

namespace varnhold::services {

// What the system knows of a process: its number alone may be another's by now.
struct ProcessIdentity {
    pid_t process = 0;
    pid_t parent = 0;
    std::uint64_t start = 0; // clock ticks after the machine's start

    bool operator==(const ProcessIdentity&) const = default;
};

// From the machine's start, as CLOCK_BOOTTIME counts.
[[nodiscard]] std::chrono::nanoseconds timeOfTicks(std::uint64_t ticks);

// None if there is no such process, or it has ended and only waits to be reaped.
[[nodiscard]] std::optional<ProcessIdentity> identify(pid_t process);

// Stands for one process, and never for another that has got its number since.
class ProcessHandle final {
public:
    // If there is no such process any more, the handle is good for nothing and does nothing.
    explicit ProcessHandle(pid_t process);
    ProcessHandle(const ProcessHandle&) = delete;
    ProcessHandle& operator=(const ProcessHandle&) = delete;
    ~ProcessHandle();

    // Returns when the process has ended, or the time is up.
    void waitForEnd(std::chrono::milliseconds limit) const;

    // Asks it politely.
    void askToEnd() const;
    [[nodiscard]] bool hasEnded() const;

    // Ends the process by force, unless it has ended by itself.
    void kill() const;

private:
    int handle_;
};

} // namespace varnhold::services
