#pragma once

#include <QObject>
#include <QThreadPool>
#include <chrono>
#include <memory>

#include "platform/platform.h"

namespace varnhold::platform {

// The main thread's event loop and a pool of its own for everything else.
class QtQueues final : public Queues {
public:
    QtQueues();
    ~QtQueues() override;

    void postMain(Task task) override;
    void postMainAfter(std::chrono::milliseconds delay, Task task) override;
    void postBackground(Priority priority, Task task) override;

private:
    // Lives on the main thread; posted tasks die with it rather than run after it.
    QObject mainContext_;
    QThreadPool pool_;
};

class QtTimers final : public Timers {
public:
    [[nodiscard]] std::unique_ptr<Timer> repeat(std::chrono::milliseconds interval,
                                                Task task) override;
};

} // namespace varnhold::platform
