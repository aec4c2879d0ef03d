#include "settings/online_checks.h"

#include <optional>
#include <string>

#include "window.h"

namespace varnhold::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

struct Row {
    FakePlatform platform;
    Constants constants{"/home/somebody"};
    std::string listing;
    int answers = 0;
    std::optional<OnlineCheck> check;

    Row() {
        platform.answer = [this](const auto&) {
            platform::ProcessResult result;
            result.started = true;
            result.standardOutput = listing;
            return result;
        };
        check.emplace(FleetContext{platform.interfaces, constants}, "agent", [this] { ++answers; });
    }
};

TEST(OnlineCheck, AsksAwayFromTheMainThreadAndCarriesTheAnswerBack) {
    Row row;
    row.listing = "{\n\t\"PID\" = 12;\n};\n";
    row.check->checkOnline();
    EXPECT_THAT(row.platform.children, IsEmpty()); // not inside the call
    row.platform.runBackground();
    EXPECT_THAT(row.platform.record,
                ElementsAre("post background", "run launchctl list agent", "post main"));
    EXPECT_THAT(row.platform.priorities, ElementsAre(platform::Priority::utility));
    EXPECT_FALSE(row.check->isOnline()); // not on the other thread
    row.platform.runMain();
    EXPECT_TRUE(row.check->isOnline());
    EXPECT_EQ(row.answers, 1);
}

TEST(OnlineCheck, AsksAsSoonAsTheRowAppearsAndEveryFifteenSecondsAfter) {
    Row row;
    EXPECT_FALSE(row.check->isOnline());
    row.check->rowAppeared();
    EXPECT_THAT(row.platform.record, ElementsAre("post background", "timer 15000"));
    for (int minutes = 0; minutes < 4; ++minutes) {
        row.platform.settle();
        row.platform.advance(15s);
    }
    row.platform.settle();
    EXPECT_THAT(row.platform.children, SizeIs(5));
}

TEST(OnlineCheck, ShowsThatAnAgentCameAndWent) {
    Row row;
    row.check->rowAppeared();
    row.platform.settle();
    EXPECT_FALSE(row.check->isOnline());
    row.listing = "\"PID\" = 12;";
    row.platform.advance(15s);
    row.platform.settle();
    EXPECT_TRUE(row.check->isOnline());
    row.listing.clear();
    row.platform.advance(15s);
    row.platform.settle();
    EXPECT_FALSE(row.check->isOnline());
}

TEST(OnlineCheck, EndsItsTimerWithTheRow) {
    Row row;
    row.check->rowAppeared();
    row.platform.settle();
    row.check->rowDisappeared();
    row.platform.advance(10min);
    row.platform.settle();
    EXPECT_THAT(row.platform.children, SizeIs(1));
    row.check->rowAppeared();
    row.check.reset();
    row.platform.settle();
    row.platform.advance(10min);
    row.platform.settle();
    EXPECT_THAT(row.platform.children, SizeIs(2)); // the question that was under way
}

TEST(OnlineCheck, PutsOneQuestionAtATimeAndOneMoreAfterItsAnswer) {
    Row row;
    row.check->rowAppeared();
    row.platform.advance(60s); // four more ticks, while the answer doesn't come
    row.check->checkOnline();
    EXPECT_EQ(row.platform.backgroundTasks(), 1U);
    row.listing = "\"PID\" = 12;";
    row.platform.runBackground();
    row.platform.runMain();
    EXPECT_TRUE(row.check->isOnline());
    EXPECT_EQ(row.platform.backgroundTasks(), 1U);
    row.listing.clear();
    row.platform.settle();
    EXPECT_FALSE(row.check->isOnline());
    EXPECT_THAT(row.platform.children, SizeIs(2));
    EXPECT_EQ(row.answers, 2);
}

TEST(OnlineCheck, DropsAnAnswerThatComesAfterTheRowHasGone) {
    Row row;
    row.check->checkOnline();
    row.check.reset();
    row.platform.settle();
    EXPECT_THAT(row.platform.children, SizeIs(1));
    EXPECT_EQ(row.answers, 0);
}

TEST(OnlineCheck, HasOneTimerHoweverOftenItIsStarted) {
    Row row;
    row.check->startOnlineTimer();
    row.platform.advance(10s);
    row.check->startOnlineTimer();
    row.platform.advance(14s);
    EXPECT_EQ(row.platform.backgroundTasks(), 0U);
    row.platform.advance(1s);
    EXPECT_EQ(row.platform.backgroundTasks(), 1U);
}

} // namespace
} // namespace varnhold::testing
