#include "agent_exec/ended.h"

#include <gtest/gtest.h>

#include <chrono>
#include <ctime>
#include <future>
#include <optional>
#include <string>

#include "jobs/unit_marks.h"
#include "support/temporary_home.h"

namespace varnhold::services {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr auto atOnce = 5s; // far below the throttle, far above what a busy machine needs

class Ended : public ::testing::Test {
protected:
    Ended() {
        keepAlive(true);
        EXPECT_TRUE(job.makeWakePipe());
    }

    void keepAlive(bool value) {
        const PropertyList list{
            .label = "com.example", .keepAlive = value, .programArguments = {"/bin/true"}};
        home.write(home.at("job/job.plist"), encodePropertyList(list).value());
    }

    void startedBefore(std::chrono::nanoseconds ago) {
        timespec now{};
        ::clock_gettime(CLOCK_BOOTTIME, &now);
        const auto start =
            std::chrono::seconds(now.tv_sec) + std::chrono::nanoseconds(now.tv_nsec) - ago;
        home.write(home.at("job/last-start"), std::to_string(start.count()));
    }

    testing::TemporaryHome home;
    JobFiles job{platform::PrivateFolder::make(home.at("job")).value()};
};

TEST_F(Ended, NotesHowTheAgentEnded) {
    EXPECT_EQ(job.lastEnd(), std::nullopt);
    EXPECT_EQ(agentEnded(job, 9), AfterEnd::startAgain);
    EXPECT_EQ(job.lastEnd(), 9);
    EXPECT_EQ(agentEnded(job, 3 << 8), AfterEnd::startAgain);
    EXPECT_EQ(job.lastEnd(), 3 << 8);
}

TEST_F(Ended, AnAgentThatRanLongComesBackAtOnce) {
    startedBefore(throttle + 1s);
    const auto begin = Clock::now();
    EXPECT_EQ(agentEnded(job, 0), AfterEnd::startAgain);
    EXPECT_LT(Clock::now() - begin, atOnce);
}

TEST_F(Ended, OneThatRanShortlyWaitsForTheRestOfTheTenSeconds) {
    startedBefore(throttle - 300ms);
    const auto begin = Clock::now();
    EXPECT_EQ(agentEnded(job, 0), AfterEnd::startAgain);
    EXPECT_GE(Clock::now() - begin, 250ms); // some of the 300 went by while the test set out
    EXPECT_LT(Clock::now() - begin, atOnce);
}

TEST_F(Ended, AStartWantedBeforeTheEndSkipsTheWaitAndIsForgotten) {
    startedBefore(0s);
    job.skipThrottle();
    const auto begin = Clock::now();
    EXPECT_EQ(agentEnded(job, 15), AfterEnd::startAgain);
    EXPECT_LT(Clock::now() - begin, atOnce);
    EXPECT_FALSE(job.waitUnlessSkipped(0s));
}

TEST_F(Ended, AStartWantedDuringTheWaitEndsIt) {
    startedBefore(0s);
    const auto begin = Clock::now();
    auto next = std::async(std::launch::async, [this] { return agentEnded(job, 15); });
    job.skipThrottle(); // seen as a file or through the pipe, whichever comes first
    EXPECT_EQ(next.get(), AfterEnd::startAgain);
    EXPECT_LT(Clock::now() - begin, atOnce);
}

TEST_F(Ended, AJobThatIsNotKeptAliveStaysDownAtOnce) {
    keepAlive(false);
    startedBefore(0s);
    const auto begin = Clock::now();
    EXPECT_EQ(agentEnded(job, 0), AfterEnd::stayDown);
    EXPECT_LT(Clock::now() - begin, atOnce);
}

TEST_F(Ended, AJobThatIsNotKeptAliveStartsAgainForSomebodyWhoWantsIt) {
    keepAlive(false);
    startedBefore(0s);
    job.skipThrottle();
    EXPECT_EQ(agentEnded(job, 0), AfterEnd::startAgain);
    EXPECT_EQ(agentEnded(job, 0), AfterEnd::stayDown);
}

TEST_F(Ended, AJobWithoutItsDefinitionStaysDown) {
    home.write(home.at("job/job.plist"), "broken");
    startedBefore(throttle + 1s);
    EXPECT_EQ(agentEnded(job, 0), AfterEnd::stayDown);
}

TEST_F(Ended, AJobWithoutItsDefinitionWaitsAllTheSame) {
    home.write(home.at("job/job.plist"), "broken");
    auto next = std::async(std::launch::async, [this] { return waitForTurn(job); });
    EXPECT_EQ(next.wait_for(500ms), std::future_status::timeout);
    job.skipThrottle();
    EXPECT_EQ(next.get(), AfterEnd::startAgain);
}

TEST_F(Ended, NotesThatCannotBeReadCountAsNone) {
    home.write(home.at("job/last-start"), "yesterday");
    home.write(home.at("job/last-end"), "badly");
    EXPECT_EQ(job.lastEnd(), std::nullopt);
    EXPECT_EQ(job.sinceStart(), std::chrono::nanoseconds::max());
}

TEST_F(Ended, ATurnIsWaitedForWithoutAnEndBeforeIt) {
    const auto begin = Clock::now();
    EXPECT_EQ(waitForTurn(job), AfterEnd::startAgain);
    EXPECT_LT(Clock::now() - begin, atOnce);
    EXPECT_EQ(job.lastEnd(), std::nullopt);
}

TEST_F(Ended, StartsAreCountedAndWhatPreventedOneIsKeptUntilTheNext) {
    EXPECT_EQ(job.starts(), 0);
    job.noteStart();
    job.noteStart();
    EXPECT_EQ(job.starts(), 2);
    EXPECT_EQ(job.spawnTrouble(), "");
    job.noteSpawnTrouble("/usr/bin/nothing: No such file or directory");
    EXPECT_EQ(job.spawnTrouble(), "/usr/bin/nothing: No such file or directory");
    job.noteSpawnTrouble("");
    EXPECT_EQ(job.spawnTrouble(), "");
    EXPECT_FALSE(job.folder()->has("spawn-trouble"));
}

TEST_F(Ended, RestAndLeavingAreKeptWithTheJob) {
    EXPECT_FALSE(isHeld(job));
    EXPECT_TRUE(hold(job));
    EXPECT_TRUE(isHeld(job));
    release(job);
    EXPECT_FALSE(isHeld(job));
    EXPECT_FALSE(job.isLeaving());
    job.markLeaving();
    EXPECT_TRUE(job.isLeaving());
}

TEST(WaitStatusOfUnit, IsThatOfTheProcess) {
    EXPECT_EQ(waitStatusOfUnit("exited", "0"), 0);
    EXPECT_EQ(waitStatusOfUnit("exited", "78"), 78 << 8);
    EXPECT_EQ(waitStatusOfUnit("killed", "TERM"), 15);
    EXPECT_EQ(waitStatusOfUnit("killed", "KILL"), 9);
    EXPECT_EQ(waitStatusOfUnit("dumped", "SEGV"), 11);
    EXPECT_EQ(waitStatusOfUnit("killed", "40"), 40);
}

TEST(WaitStatusOfUnit, IsNoneWhereNothingIsTold) {
    EXPECT_EQ(waitStatusOfUnit("", ""), std::nullopt);
    EXPECT_EQ(waitStatusOfUnit("exited", "x"), std::nullopt);
    EXPECT_EQ(waitStatusOfUnit("killed", "NOSUCH"), std::nullopt);
    EXPECT_EQ(waitStatusOfUnit("timeout", "9"), std::nullopt);
}

} // namespace
} // namespace varnhold::services
