#include "supervisor.h"

#include <sqlite3.h>
#include <string>

#include "lifecycle/service_control.h"

namespace varnhold::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;
using namespace std::chrono_literals;

void run(sqlite3* db, const char* sql) {
    ASSERT_EQ(sqlite3_exec(db, sql, nullptr, nullptr, nullptr), SQLITE_OK);
}

// The daemons' side of the event database.
struct Events {
    sqlite3* db = nullptr;
    explicit Events(const Supervisor& supervisor) {
        supervisor.home.makeFolder(supervisor.constants.appSupportDir);
        sqlite3_open(supervisor.constants.governorDBPath.c_str(), &db);
        run(db, "CREATE TABLE agent_events (id INTEGER PRIMARY KEY, dept TEXT, model TEXT)");
    }
    ~Events() { sqlite3_close(db); }
    Events(const Events&) = delete;
    Events& operator=(const Events&) = delete;
};

TEST(Poll, TakesOnlyTheOutputOfTheListing) {
    Supervisor supervisor;
    supervisor.launch();
    supervisor.refresh();
    const platform::ProcessRequest& request = supervisor.platform.children.at(0).request;
    EXPECT_EQ(request.program, "/bin/launchctl");
    EXPECT_EQ(request.standardOutput, platform::Stream::captured);
    EXPECT_EQ(request.standardError, platform::Stream::inherited);
    EXPECT_EQ(request.deadline, listingDeadline);
    EXPECT_TRUE(supervisor.platform.children.at(0).waited);
}

TEST(Poll, CountsBotsByTheirLabelsPausedOnesIncluded) {
    Supervisor supervisor;
    supervisor.writeBots({bot("a"), bot("b", {.isPaused = true}), bot("c"), bot("d")});
    supervisor.list("10", "1", labelOf("a"));
    supervisor.list("11", "0", labelOf("b"));
    supervisor.list("-", "-15", labelOf("c"));
    supervisor.list("12", "0", "com.example.other");
    supervisor.launch();
    EXPECT_EQ(supervisor.delegate->counts(), (FleetCounts{2, 4, 1}));
    EXPECT_EQ(supervisor.presentation.title, " 2/4 🔴1");
    EXPECT_EQ(supervisor.presentation.spoken, "Varnhold, 2 of 4 bots running, 1 crashed");
}

TEST(Poll, WithNoOutputCountsAllBotsAsStopped) {
    Supervisor supervisor;
    supervisor.writeBots({bot("a"), bot("b")});
    supervisor.listing = "";
    supervisor.launch();
    EXPECT_THAT(supervisor.delegate->globalStatusMap(), IsEmpty());
    EXPECT_EQ(supervisor.delegate->counts(), (FleetCounts{0, 2, 0}));
}

TEST(Poll, ThatFailsDoesNotKeepTheOldPicture) {
    Supervisor supervisor;
    supervisor.writeBots({bot("a")});
    supervisor.list("10", "0", labelOf("a"));
    supervisor.launch();
    ASSERT_EQ(supervisor.delegate->counts(), (FleetCounts{1, 1, 0}));
    supervisor.platform.answer = [](const auto&) { return platform::ProcessResult{}; };
    supervisor.refresh();
    EXPECT_EQ(supervisor.delegate->counts(), (FleetCounts{0, 1, 0}));
}

TEST(Poll, TakesOutputThatIsNotUtf8ForNone) {
    Supervisor supervisor;
    supervisor.writeBots({bot("a")});
    supervisor.list("10", "0", labelOf("a"));
    supervisor.listing += "11\t0\tcom.example.\xFF\n";
    supervisor.launch();
    EXPECT_THAT(supervisor.delegate->globalStatusMap(), IsEmpty());
}

TEST(Poll, ShowsTheModelOfTheNewestEventThatNamesOne) {
    Supervisor supervisor;
    supervisor.writeBots({bot("a")});
    const Events events(supervisor);
    run(events.db, "INSERT INTO agent_events (dept, model) VALUES ('a', 'older'), ('a', NULL), "
                   "('nobody', 'unseen'), ('null', NULL)");
    supervisor.launch();
    EXPECT_THAT(supervisor.delegate->agentModelMap(),
                ElementsAre(Pair("a", "older"), Pair("nobody", "unseen")));
    const auto titles = supervisor.presentation.rowTitles();
    EXPECT_EQ(titles.at(6), "⚪️ 🤖 a (older)");
    for (const std::string& title : titles) {
        EXPECT_EQ(title.find("unseen"), std::string::npos);
    }
}

TEST(Poll, ShowsIdleWhileTheDatabaseIsLocked) {
    Supervisor supervisor;
    supervisor.writeBots({bot("a")});
    const Events events(supervisor);
    run(events.db, "INSERT INTO agent_events (dept, model) VALUES ('a', 'm')");
    supervisor.launch();
    ASSERT_EQ(supervisor.presentation.rowTitles().at(6), "⚪️ 🤖 a (m)");

    run(events.db, "BEGIN EXCLUSIVE");
    supervisor.refresh();
    EXPECT_EQ(supervisor.presentation.rowTitles().at(6), "⚪️ 🤖 a (Idle)");
    run(events.db, "COMMIT");
    supervisor.refresh();
    EXPECT_EQ(supervisor.presentation.rowTitles().at(6), "⚪️ 🤖 a (m)");
}

TEST(Poll, LeavesOutABotThatIsGoneFromTheFileWhileItsJobStillRuns) {
    Supervisor supervisor;
    supervisor.writeBots({bot("a")});
    supervisor.list("10", "0", labelOf("a"));
    supervisor.launch();
    ASSERT_EQ(supervisor.presentation.title, " 1/1");
    ASSERT_EQ(supervisor.presentation.rowTitles().at(6), "🟢 🤖 a (Idle)");

    supervisor.writeBots({});
    supervisor.refresh();
    EXPECT_THAT(supervisor.delegate->bars().botOrder, IsEmpty());
    EXPECT_EQ(supervisor.presentation.title, " 0/0");
    EXPECT_THAT(supervisor.presentation.rowTitles(),
                ElementsAre("⚙️ Preferences...", "-", "🟢 Start All Agents",
                            "🔄 Restart All Agents", "-", "-", "Quit"));
}

TEST(Poll, OnAFreshHomeSeesNoEventBeforeTheNextStart) {
    Supervisor supervisor;
    supervisor.launch();
    const Events events(supervisor);
    run(events.db, "INSERT INTO agent_events (dept, model) VALUES ('a', 'm')");
    supervisor.refresh();
    EXPECT_THAT(supervisor.delegate->agentModelMap(), IsEmpty());
    supervisor.launch();
    EXPECT_THAT(supervisor.delegate->agentModelMap(), ElementsAre(Pair("a", "m")));
}

TEST(Poll, ReadsTheBotsFileAnewEachTime) {
    Supervisor supervisor;
    supervisor.writeBots({bot("a")});
    supervisor.launch();
    supervisor.home.write(supervisor.constants.botsConfigFile, "[{\"icon\":");
    supervisor.refresh();
    EXPECT_EQ(supervisor.presentation.title, " 0/0");
    supervisor.writeBots({bot("a"), bot("b")});
    supervisor.refresh();
    EXPECT_EQ(supervisor.presentation.title, " 0/2");
}

TEST(Poll, ByTheClockIsDroppedWhileAnotherIsUnderWay) {
    Supervisor supervisor;
    supervisor.launch();
    supervisor.platform.advance(30s);                           // three ticks, and no answer
    EXPECT_EQ(supervisor.platform.backgroundTasks(), 1U + 15U); // and the samples of activity
    supervisor.platform.settle();
    EXPECT_EQ(supervisor.polls(), 1);
}

TEST(Poll, AskedForByAnActionFollowsTheOneThatIsUnderWay) {
    Supervisor supervisor;
    supervisor.writeBots({bot("a")});
    supervisor.launch();
    supervisor.delegate->refreshStatus();
    supervisor.platform.runBackground(); // has been answered, but not shown yet
    supervisor.list("10", "0", labelOf("a"));
    supervisor.delegate->refreshStatus();
    supervisor.delegate->refreshStatus();
    EXPECT_EQ(supervisor.platform.backgroundTasks(), 0U);
    supervisor.platform.runMain();
    EXPECT_EQ(supervisor.presentation.title, " 0/1");
    EXPECT_EQ(supervisor.platform.backgroundTasks(), 1U);
    supervisor.platform.settle();
    EXPECT_EQ(supervisor.presentation.title, " 1/1");
    EXPECT_EQ(supervisor.polls(), 2);
}

TEST(Poll, WaitsAwayFromTheMainThreadAndShowsItsPictureInOneTurn) {
    Supervisor supervisor;
    supervisor.launch();
    supervisor.delegate->refreshStatus();
    EXPECT_THAT(supervisor.platform.record, ElementsAre("post background"));
    supervisor.platform.runBackground();
    EXPECT_THAT(supervisor.platform.record,
                ElementsAre("post background", "run launchctl list", "post main"));
    EXPECT_THAT(supervisor.presentation.record, IsEmpty());
    supervisor.platform.runMain();
    EXPECT_THAT(supervisor.presentation.record, ElementsAre("image", "title  0/0", "menu 7"));
}

TEST(Poll, IsNotWaitedForByQuit) {
    Supervisor supervisor;
    supervisor.writeBots({bot("a")});
    supervisor.launch();
    supervisor.delegate->refreshStatus();
    supervisor.forget();
    supervisor.delegate->applicationWillTerminate();
    EXPECT_EQ(supervisor.polls(), 0);
    EXPECT_EQ(supervisor.platform.backgroundTasks(), 1U);
}

TEST(GetStatus, OfAnUnknownLabelIsStopped) {
    Supervisor supervisor;
    EXPECT_EQ(supervisor.make().getStatus("com.example.unknown"), DaemonStatus::stopped);
}

} // namespace
} // namespace varnhold::testing
