#include "platform/qt/qt_queues.h"

#include <QCoreApplication>
#include <condition_variable>
#include <gmock/gmock.h>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace varnhold::testing {
namespace {

using platform::Priority;
using platform::QtQueues;
using platform::QtTimers;
using platform::Timer;
using ::testing::ElementsAre;
using namespace std::chrono_literals;

struct Loop {
    int count = 1;
    char name[5] = "loop";
    char* words[2] = {name, nullptr};
    QCoreApplication application{count, words};

    static void run() { QCoreApplication::exec(); }
    static void end() { QCoreApplication::quit(); }
    static void serveWhatIsDue() {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
};

TEST(QtQueues, PostToTheMainThreadLaterNeverAtOnce) {
    const Loop loop;
    QtQueues queues;
    bool ran = false;
    queues.postMain([&ran] {
        ran = true;
        Loop::end();
    });
    EXPECT_FALSE(ran);
    Loop::run();
    EXPECT_TRUE(ran);
}

TEST(QtQueues, KeepTheOrderOfOneThreadsPosts) {
    const Loop loop;
    QtQueues queues;
    std::vector<int> order;
    std::vector<std::thread::id> threads;
    queues.postBackground(Priority::userInitiated, [&] {
        threads.push_back(std::this_thread::get_id());
        for (const int number : {1, 2, 3}) {
            queues.postMain([&, number] {
                order.push_back(number);
                threads.push_back(std::this_thread::get_id());
            });
        }
        queues.postMain([] { Loop::end(); });
    });
    Loop::run();
    EXPECT_THAT(order, ElementsAre(1, 2, 3));
    const auto main = std::this_thread::get_id();
    EXPECT_THAT(threads, ElementsAre(::testing::Ne(main), main, main, main));
}

TEST(QtQueues, HoldBackWhatIsToRunAfterADelay) {
    const Loop loop;
    QtQueues queues;
    std::vector<std::string> ran;
    queues.postMainAfter(24h, [&ran] { ran.emplace_back("tomorrow"); });
    queues.postMainAfter(1ms, [&ran] {
        ran.emplace_back("soon");
        Loop::end();
    });
    EXPECT_THAT(ran, ::testing::IsEmpty());
    Loop::run();
    EXPECT_THAT(ran, ElementsAre("soon"));
}

TEST(QtQueues, TakeTheirPostsWithThem) {
    const Loop loop;
    std::optional<QtQueues> queues(std::in_place);
    bool ran = false;
    queues->postMain([&ran] { ran = true; });
    queues->postMainAfter(0ms, [&ran] { ran = true; });
    queues.reset();
    Loop::serveWhatIsDue();
    EXPECT_FALSE(ran);
}

TEST(QtQueues, LetNoTaskThatBlocksHoldUpOthers) {
    constexpr int together = 64; // more than a machine for this program has cores
    const Loop loop;
    std::mutex mutex;
    std::condition_variable changed;
    int running = 0;
    bool released = false;
    QtQueues queues;
    for (int i = 0; i < together; ++i) {
        queues.postBackground(i % 2 == 0 ? Priority::utility : Priority::background, [&] {
            std::unique_lock lock(mutex);
            ++running;
            changed.notify_all();
            changed.wait(lock, [&] { return released; });
        });
    }
    std::unique_lock lock(mutex);
    EXPECT_TRUE(changed.wait_for(lock, 60s, [&] { return running == together; }));
    released = true;
    changed.notify_all();
}

TEST(QtTimers, FireFirstAfterOneIntervalAndThenAgainUntilTheirOwnerEndsThem) {
    const Loop loop;
    QtTimers timers;
    int ticks = 0;
    int later = 0;
    const auto slow = timers.repeat(24h, [&later] { ++later; });
    std::unique_ptr<Timer> quick = timers.repeat(1ms, [&ticks] {
        if (++ticks == 3) {
            Loop::end();
        }
    });
    EXPECT_EQ(ticks, 0);
    Loop::run();
    EXPECT_EQ(ticks, 3);
    quick.reset();

    int others = 0;
    const auto other = timers.repeat(1ms, [&others] {
        if (++others == 3) {
            Loop::end();
        }
    });
    Loop::run();
    EXPECT_EQ(ticks, 3);
    EXPECT_EQ(later, 0);
}

} // namespace
} // namespace varnhold::testing
