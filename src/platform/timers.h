#pragma once

#include <chrono>
#include <functional>
#include <memory>

// What is done again and again, as long as somebody holds on to it.
namespace varnhold::platform {

// Ends its repetition when destroyed. Main thread only.
class Timer {
public:
    virtual ~Timer() = default;

    // No tick comes until resume(). For work that has nothing to do for the time being: a tick that
    // finds nothing still wakes the processor up.
    virtual void pause() = 0;
    // The first tick comes after one interval at the latest. Nothing happens to one that isn't
    // paused.
    virtual void resume() = 0;
};

class Timers {
public:
    virtual ~Timers() = default;

    // Calls the task on the main thread, first after one interval; ticks that the main thread was
    // too busy for are dropped. Main thread only.
    [[nodiscard]] virtual std::unique_ptr<Timer> repeat(std::chrono::milliseconds interval,
                                                        std::function<void()> task) = 0;
};

} // namespace varnhold::platform
