#include "platform/qt/qt_queues.h"

#include <QMetaObject>
#include <QThread>
#include <QTimer>
#include <chrono>
#include <memory>

namespace varnhold::platform {

namespace {

// Tasks here wait for child processes, some of them for many minutes. With one thread a core, two
// downloads would hold up every restart.
constexpr int maximumThreads = 256;

QThread::Priority threadPriority(Priority priority) {
    switch (priority) {
    case Priority::userInitiated:
        return QThread::NormalPriority;
    case Priority::utility:
        return QThread::LowPriority;
    case Priority::background:
        return QThread::LowestPriority;
    }
    return QThread::NormalPriority;
}

class QtTimer final : public Timer {
public:
    QtTimer(std::chrono::milliseconds interval, Task task) {
        timer_.setTimerType(Qt::PreciseTimer); // the coarse default drifts by a twentieth
        timer_.setInterval(interval);
        QObject::connect(&timer_, &QTimer::timeout, &timer_, std::move(task));
        timer_.start();
    }
    void pause() override { timer_.stop(); }
    void resume() override {
        if (!timer_.isActive()) {
            timer_.start();
        }
    }

private:
    QTimer timer_;
};

} // namespace

QtQueues::QtQueues() {
    pool_.setMaxThreadCount(maximumThreads);
}

// The pool's destructor waits for tasks that have begun; those that haven't are dropped, as at any
// end of the process.
QtQueues::~QtQueues() {
    pool_.clear();
}

void QtQueues::postMain(Task task) {
    QMetaObject::invokeMethod(&mainContext_, std::move(task), Qt::QueuedConnection);
}

void QtQueues::postMainAfter(std::chrono::milliseconds delay, Task task) {
    QMetaObject::invokeMethod(
        &mainContext_,
        [this, delay, task = std::move(task)]() mutable {
            QTimer::singleShot(delay, Qt::PreciseTimer, &mainContext_, std::move(task));
        },
        Qt::QueuedConnection);
}

void QtQueues::postBackground(Priority priority, Task task) {
    pool_.start([priority, task = std::move(task)] {
        QThread::currentThread()->setPriority(threadPriority(priority));
        task();
    });
}

std::unique_ptr<Timer> QtTimers::repeat(std::chrono::milliseconds interval, Task task) {
    return std::make_unique<QtTimer>(interval, std::move(task));
}

} // namespace varnhold::platform
