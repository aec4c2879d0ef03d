#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

#include "status/bars.h"
#include "support/temporary_home.h"

namespace varnhold::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

constexpr std::size_t tail = 6144;

// A log in a home of its own, for the counting.
struct LogFile {
    TemporaryHome home;
    std::string path = home.at("bot.log");

    [[nodiscard]] int countIn(const std::string& content) const {
        home.write(path, content);
        return countActivityMarkers(path);
    }
};

// A log where the sampler looks for it; the role is unique to the process.
struct RoleLog {
    TemporaryHome home;
    std::string role = "activity-test-" + std::to_string(::getpid());
    std::string path = "/tmp/vh-" + role + ".log";
    std::string label = "com.ostrelleai." + role + ".telegramd";

    RoleLog() = default;
    ~RoleLog() { std::filesystem::remove(path); }
    RoleLog(const RoleLog&) = delete;
    RoleLog& operator=(const RoleLog&) = delete;
};

TEST(Marks, OfALogOfExactlyTheTailAreAllCounted) {
    EXPECT_EQ(LogFile().countIn("[MSG]" + std::string(tail - 5, '.')), 1);
}

TEST(Marks, OfALogOneByteLongerThanTheTailMissTheFirstByte) {
    EXPECT_EQ(LogFile().countIn(".[MSG]" + std::string(tail - 5, '.')), 1);
    EXPECT_EQ(LogFile().countIn("[MSG]" + std::string(tail - 4, '.')), 0);
}

TEST(Marks, CutByTheStartOfTheTailAreNotCounted) {
    EXPECT_EQ(LogFile().countIn("[CHAIN][MSG]" + std::string(tail - 6, '.')), 1);
}

TEST(Marks, StandingNextToEachOtherAreTwo) {
    EXPECT_EQ(countMarkers("[MSG][MSG]"), 2);
}

TEST(Marks, InLowerCaseAreNone) {
    EXPECT_EQ(countMarkers("[msg] [process] [Chain] [notify]"), 0);
}

TEST(Marks, OfAllFourKindsWeighTheSame) {
    EXPECT_EQ(countMarkers("[PROCESS] [CHAIN] [NOTIFY] [MSG] MSG [ MSG]"), 4);
}

TEST(Marks, OfAMissingLogAreNone) {
    EXPECT_EQ(countActivityMarkers("/nonexistent/vh-nobody.log"), 0);
}

TEST(Marks, OfALogThatIsAFolderAreNone) {
    EXPECT_EQ(countActivityMarkers(TemporaryHome().path()), 0);
}

TEST(Marks, AreNoneWhileInvalidTextStandsAnywhereInTheTail) {
    const LogFile log;
    EXPECT_EQ(log.countIn("\xFF[MSG]" + std::string(tail - 6, '.')), 0);
    EXPECT_EQ(log.countIn("\xFF[MSG]" + std::string(tail - 5, '.')), 1); // scrolled out
}

TEST(Marks, AreNoneWhenTheTailBeginsOrEndsInsideACharacter) {
    const LogFile log;
    EXPECT_EQ(log.countIn("é[MSG]" + std::string(tail - 6, '.')), 0);
    EXPECT_EQ(log.countIn("[MSG]\xC3"), 0);
    EXPECT_EQ(log.countIn("[MSG]é"), 1);
}

TEST(Sample, OfAStoppedBotIsFlatAndLeavesItsMarkAlone) {
    const RoleLog log;
    log.home.write(log.path, "[MSG]");
    const ActivitySample sample =
        sampleActivity({log.role}, {{log.label, DaemonStatus::stopped}}, {{log.role, 0}});
    EXPECT_THAT(sample.targets, ElementsAre(Pair(log.role, 0.0)));
    EXPECT_THAT(sample.marks, IsEmpty());

    BarState bars;
    setOrder(bars, {log.role});
    bars.lastActivityMarks[log.role] = 7;
    apply(bars, {log.role}, sample);
    EXPECT_EQ(bars.lastActivityMarks.at(log.role), 7);
}

TEST(Sample, OfACrashedOrUnknownBotIsFlat) {
    const RoleLog log;
    log.home.write(log.path, "[MSG]");
    EXPECT_EQ(sampleActivity({log.role}, {{log.label, DaemonStatus::crashed}}, {{log.role, 0}})
                  .targets.at(log.role),
              0.0);
    EXPECT_EQ(sampleActivity({log.role}, {}, {{log.role, 0}}).targets.at(log.role), 0.0);
}

TEST(Sample, TakenForTheFirstTimeShowsNoActivity) {
    const RoleLog log;
    log.home.write(log.path, "[MSG][MSG]");
    const ActivitySample sample =
        sampleActivity({log.role}, {{log.label, DaemonStatus::running}}, {});
    EXPECT_EQ(sample.targets.at(log.role), 0.0);
    EXPECT_EQ(sample.marks.at(log.role), 2);
}

TEST(Sample, LiftsTheBarOnlyWhenTheTailHoldsMoreMarksThanBefore) {
    const RoleLog log;
    log.home.write(log.path, "[MSG][MSG]");
    const StatusMap running{{log.label, DaemonStatus::running}};
    const auto targetAfter = [&](int previous) {
        return sampleActivity({log.role}, running, {{log.role, previous}}).targets.at(log.role);
    };
    EXPECT_EQ(targetAfter(1), 1.0);
    EXPECT_EQ(targetAfter(2), 0.0);
    EXPECT_EQ(targetAfter(3), 0.0);
}

TEST(Sample, ComparesWithTheStaleMarkOnceAStoppedBotRunsAgain) {
    const RoleLog log;
    log.home.write(log.path, "[MSG][MSG][MSG]");
    const ActivitySample sample =
        sampleActivity({log.role}, {{log.label, DaemonStatus::running}}, {{log.role, 1}});
    EXPECT_EQ(sample.targets.at(log.role), 1.0);
}

// A stamp is given once the file has been left alone for a moment.
files::Stamp stampOnceSettled(const std::string& path) {
    while (true) {
        if (const auto stamp = files::stampOf(path)) {
            return *stamp;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
}

TEST(Sample, DoesNotReadALogAgainThatNobodyHasWrittenTo) {
    const RoleLog log;
    const StatusMap running{{log.label, DaemonStatus::running}};
    log.home.write(log.path, "[MSG]");
    const CountedLog counted{stampOnceSettled(log.path), 41};
    const ActivitySample sample =
        sampleActivity({log.role}, running, {{log.role, 40}}, {{log.role, counted}});
    EXPECT_EQ(sample.marks.at(log.role), 41);
    EXPECT_EQ(sample.targets.at(log.role), 1.0);
}

TEST(Sample, ReadsALogThatHasGrownOrHasBeenReplacedSince) {
    const RoleLog log;
    const StatusMap running{{log.label, DaemonStatus::running}};
    log.home.write(log.path, "[MSG]");
    const CountedLog counted{stampOnceSettled(log.path), 41};
    const auto marksNow = [&] {
        return sampleActivity({log.role}, running, {}, {{log.role, counted}}).marks.at(log.role);
    };
    std::ofstream(log.path, std::ios::app) << "[CHAIN]";
    EXPECT_EQ(marksNow(), 2);
    std::ofstream(log.path + ".new") << "[MSG]";
    std::filesystem::rename(log.path + ".new", log.path);
    EXPECT_EQ(marksNow(), 1);
    std::filesystem::remove(log.path);
    EXPECT_EQ(marksNow(), 0);
}

TEST(Sample, RemembersTheLogsThatItHasRead) {
    const RoleLog log;
    const StatusMap running{{log.label, DaemonStatus::running}};
    log.home.write(log.path, "[MSG]");
    const files::Stamp stamp = stampOnceSettled(log.path);
    BarState bars;
    setOrder(bars, {log.role});
    apply(bars, {log.role}, sampleActivity({log.role}, running, {}));
    EXPECT_EQ(bars.logs.at(log.role).stamp, stamp);
    EXPECT_EQ(bars.logs.at(log.role).marks, 1);
}

TEST(Sample, OfABotWhoseLabelHasAnotherFormStaysFlatThoughItRuns) {
    const RoleLog log;
    log.home.write(log.path, "[MSG]");
    const ActivitySample sample = sampleActivity(
        {log.role}, {{"com.ostrelleai." + log.role, DaemonStatus::running}}, {{log.role, 0}});
    EXPECT_EQ(sample.targets.at(log.role), 0.0);
}

} // namespace
} // namespace varnhold::testing
