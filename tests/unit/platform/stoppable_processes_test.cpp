#include "platform/stoppable_processes.h"

#include <chrono>
#include <future>
#include <gtest/gtest.h>

namespace varnhold::testing {
namespace {

using platform::ProcessRequest;
using platform::ProcessResult;
using platform::StoppableProcesses;
using namespace std::chrono_literals;

// Children that run until they are let go.
class Slow final : public platform::Processes {
public:
    std::promise<void> begun;
    std::promise<void> letGo;
    int ran = 0;

    ProcessResult run(const ProcessRequest&) override {
        ++ran;
        begun.set_value();
        letGo.get_future().wait();
        return {.started = true, .status = 7};
    }
    void start(const ProcessRequest&) override { ++ran; }
};

const ProcessRequest request{.program = "/bin/true", .arguments = {}};

TEST(StoppableProcesses, RunWhatTheyAreAskedTo) {
    Slow children;
    children.letGo.set_value();
    StoppableProcesses processes(children);
    EXPECT_EQ(processes.run(request).status, 7);
    processes.start(request);
    EXPECT_EQ(children.ran, 2);
}

TEST(StoppableProcesses, RunNothingMoreOnceStopped) {
    Slow children;
    StoppableProcesses processes(children);
    EXPECT_TRUE(processes.stop(0ms));
    EXPECT_FALSE(processes.run(request).started);
    processes.start(request);
    EXPECT_EQ(children.ran, 0);
}

TEST(StoppableProcesses, WaitForTheChildThatIsRunning) {
    Slow children;
    StoppableProcesses processes(children);
    auto work = std::async(std::launch::async, [&] { return processes.run(request); });
    children.begun.get_future().wait();
    auto stopped = std::async(std::launch::async, [&] { return processes.stop(1h); });
    EXPECT_EQ(stopped.wait_for(0ms), std::future_status::timeout);
    children.letGo.set_value();
    EXPECT_TRUE(stopped.get());
    EXPECT_EQ(work.get().status, 7);
}

TEST(StoppableProcesses, SayThatAChildRunsOnThatOutlastsTheWait) {
    Slow children;
    StoppableProcesses processes(children);
    auto work = std::async(std::launch::async, [&] { return processes.run(request); });
    children.begun.get_future().wait();
    EXPECT_FALSE(processes.stop(1ms));
    children.letGo.set_value();
    work.get();
    EXPECT_TRUE(processes.stop(0ms));
}

} // namespace
} // namespace varnhold::testing
