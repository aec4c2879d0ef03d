#pragma once

#include <atomic>
#include <cstdint>
#include <ctime>
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

// How many agents of a benchmark are alive, and when the last of them came or went: a file that all
// of them have mapped, so that nobody has to look for them while they are being timed.
// fleets/alive.py reads the same layout.
namespace varnhold::bench {

inline constexpr const char* aliveFile = "/tmp/bench-alive";

struct Alive {
    std::atomic<std::uint64_t> count;
    std::atomic<std::uint64_t> lastStart; // nanoseconds of the monotonic clock
    std::atomic<std::uint64_t> lastEnd;
};

inline std::uint64_t nanoseconds() {
    timespec now{};
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<std::uint64_t>(now.tv_sec) * 1'000'000'000U +
           static_cast<std::uint64_t>(now.tv_nsec);
}

// Null if there is no such file.
inline Alive* mapAlive() {
    const int file = ::open(aliveFile, O_RDWR | O_CLOEXEC);
    void* place = file < 0
                      ? MAP_FAILED
                      : ::mmap(nullptr, sizeof(Alive), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    if (file >= 0) {
        ::close(file);
    }
    return place == MAP_FAILED ? nullptr : static_cast<Alive*>(place);
}

} // namespace varnhold::bench
