#include "support/fake_platform.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

// The other tests trust these stand-ins, so they are held to the same contract as the real ones.
namespace varnhold::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;

TEST(FakePlatform, PostedTasksNeverRunInsideTheCall) {
    FakePlatform fake;
    bool ran = false;
    fake.interfaces.queues.postMain([&] { ran = true; });
    EXPECT_FALSE(ran);
    fake.settle();
    EXPECT_TRUE(ran);
}

TEST(FakePlatform, WhatIsDueRunsInOrderOfTimeAsTimePasses) {
    FakePlatform fake;
    std::vector<std::string> order;
    const auto timer = fake.interfaces.timers.repeat(10ms, [&] { order.emplace_back("timer"); });
    fake.interfaces.queues.postMainAfter(25ms, [&] { order.emplace_back("late"); });
    fake.interfaces.queues.postMainAfter(5ms, [&] { order.emplace_back("early"); });
    fake.advance(30ms);
    EXPECT_THAT(order, ElementsAre("early", "timer", "timer", "late", "timer"));
    EXPECT_EQ(fake.elapsed(), 30ms);
}

TEST(FakePlatform, ATimerEndsWithItsOwner) {
    FakePlatform fake;
    int ticks = 0;
    auto timer = fake.interfaces.timers.repeat(1ms, [&] { ++ticks; });
    fake.advance(2ms);
    timer.reset();
    fake.advance(10ms);
    EXPECT_EQ(ticks, 2);
}

TEST(FakePlatform, TheMainThreadGoesOnWhileAnotherSleeps) {
    FakePlatform fake;
    std::chrono::microseconds ranAt{};
    fake.interfaces.queues.postMainAfter(100ms, [&] { ranAt = fake.elapsed(); });
    fake.interfaces.clock.sleep(150ms);
    EXPECT_EQ(ranAt, 100ms);
    EXPECT_EQ(fake.elapsed(), 150ms);
}

TEST(FakePlatform, EveryCallIsRecordedInOrder) {
    FakePlatform fake;
    fake.interfaces.processes.run({.program = "/bin/tool", .arguments = {"a", "b"}});
    fake.interfaces.clock.sleep(300ms);
    fake.interfaces.processes.start({.program = "/bin/other", .arguments = {}});
    fake.interfaces.queues.postBackground(platform::Priority::utility, [] {});
    EXPECT_THAT(fake.record,
                ElementsAre("run tool a b", "sleep 300000", "start other", "post background"));
    EXPECT_EQ(fake.children[0].at, 0us);
    EXPECT_EQ(fake.children[1].at, 300000us);
}

} // namespace
} // namespace varnhold::testing
