// Lets the clocks of all processes of a sandbox jump, by being loaded ahead of their libraries.
//
// The file holds two 64-bit numbers, nanoseconds that are added to the wall clock and to the boot
// clock. Whoever sleeps by the system's own clocks isn't disturbed.

#include <cstdint>
#include <ctime>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <unistd.h>

namespace {

constexpr const char* clockFile = "/tmp/clocks"; // as test_clocks.py has it
constexpr std::int64_t second = 1'000'000'000;

struct Offsets {
    std::int64_t wall;
    std::int64_t boot;
};

// Mapped anew by each process, so that all see a jump at the same moment.
const volatile Offsets* offsets() {
    static const volatile Offsets* const mapped = [] {
        const int file = ::open(clockFile, O_RDONLY | O_CLOEXEC);
        void* const found = file < 0
                                ? MAP_FAILED
                                : ::mmap(nullptr, sizeof(Offsets), PROT_READ, MAP_SHARED, file, 0);
        if (file >= 0) {
            ::close(file);
        }
        return found == MAP_FAILED ? nullptr : static_cast<const volatile Offsets*>(found);
    }();
    return mapped;
}

std::int64_t jump(clockid_t clock) {
    const volatile Offsets* const by = offsets();
    if (by == nullptr) {
        return 0;
    }
    if (clock == CLOCK_REALTIME || clock == CLOCK_REALTIME_COARSE) {
        return by->wall;
    }
    return clock == CLOCK_BOOTTIME ? by->boot : 0;
}

} // namespace

extern "C" int clock_gettime(clockid_t clock, struct timespec* time) noexcept {
    const auto result = static_cast<int>(::syscall(SYS_clock_gettime, clock, time));
    if (result == 0) {
        const std::int64_t whole = time->tv_sec * second + time->tv_nsec + jump(clock);
        time->tv_sec = whole / second;
        time->tv_nsec = whole % second;
    }
    return result;
}

extern "C" int gettimeofday(struct timeval* time, void*) noexcept {
    struct timespec now {};
    ::clock_gettime(CLOCK_REALTIME, &now);
    time->tv_sec = now.tv_sec;
    time->tv_usec = now.tv_nsec / 1000;
    return 0;
}

extern "C" time_t time(time_t* result) noexcept {
    struct timespec now {};
    ::clock_gettime(CLOCK_REALTIME, &now);
    if (result != nullptr) {
        *result = now.tv_sec;
    }
    return now.tv_sec;
}
