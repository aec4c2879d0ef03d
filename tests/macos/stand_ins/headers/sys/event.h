#pragma once

#include <cstdint>
#include <ctime>

struct kevent {
    std::uintptr_t ident;
    std::int16_t filter;
    std::uint16_t flags;
    std::uint32_t fflags;
    std::intptr_t data;
    void* udata;
};

constexpr std::int16_t EVFILT_PROC = -5;
constexpr std::uint16_t EV_ADD = 1;
constexpr std::uint32_t NOTE_EXIT = 0x80000000U;

// NOLINTNEXTLINE(cppcoreguidelines-macro-usage): as it is there
#define EV_SET(event, a, b, c, d, e, f) (*(event) = {static_cast<std::uintptr_t>(a), b, c, d, e, f})

extern "C" {
int kqueue();
int kevent(int queue, const struct kevent* changes, int changeCount, struct kevent* events,
           int eventCount, const timespec* timeout);
}
