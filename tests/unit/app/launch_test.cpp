#include <chrono>
#include <string>

#include "supervisor.h"

#include "base/files.h"

namespace varnhold::testing {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using namespace std::chrono_literals;

TEST(Construction, OpensTheEventDatabaseBeforeTheFoldersAreMade) {
    Supervisor supervisor;
    supervisor.make();
    EXPECT_FALSE(files::exists(supervisor.constants.appSupportDir));
    EXPECT_THAT(supervisor.platform.record, IsEmpty());
    EXPECT_EQ(supervisor.delegate->counts(), FleetCounts{});
}

TEST(Construction, MakesTheEventDatabaseWhereTheFolderIsThere) {
    Supervisor supervisor;
    supervisor.home.makeFolder(supervisor.constants.appSupportDir);
    supervisor.make();
    EXPECT_TRUE(files::exists(supervisor.constants.governorDBPath));
}

TEST(Launch, ShowsTheItemThenPollsThenSchedulesThenStartsTheFleet) {
    Supervisor supervisor;
    supervisor.writeBots({bot("one")});
    supervisor.make().applicationDidFinishLaunching();

    EXPECT_THAT(supervisor.presentation.record, ElementsAre("main menu", "status item"));
    EXPECT_THAT(supervisor.platform.record,
                ElementsAre("post background", "post main after 1000", "timer 10000", "timer 2000",
                            "timer 60", "timer 8000", "post background"));
    EXPECT_THAT(supervisor.platform.priorities, Each(platform::Priority::userInitiated));
    EXPECT_TRUE(files::isDirectory(supervisor.constants.appSupportDir + "/data"));
    EXPECT_TRUE(files::isDirectory(supervisor.constants.appSupportDir + "/locks"));
}

TEST(Launch, ShowsWhatTheFirstPollHasFound) {
    Supervisor supervisor;
    supervisor.writeBots({bot("one")});
    supervisor.make().applicationDidFinishLaunching();
    supervisor.presentation.record.clear();
    supervisor.platform.runBackground();
    EXPECT_THAT(supervisor.presentation.record, IsEmpty()); // not on the other thread
    supervisor.platform.runMain();
    EXPECT_THAT(supervisor.presentation.record, ElementsAre("image", "title  0/1", "menu 9"));
}

TEST(Launch, ShowsWhatTheFilesSayWhereTheFirstPollTakesLong) {
    Supervisor supervisor;
    supervisor.writeBots({bot("one")});
    supervisor.list("10", "0", labelOf("one"));
    supervisor.make().applicationDidFinishLaunching();
    supervisor.presentation.record.clear();
    supervisor.platform.advance(999ms);
    EXPECT_EQ(supervisor.presentation.rows.size(), 0U);
    supervisor.platform.advance(1ms);
    EXPECT_EQ(supervisor.presentation.rows.size(), 9U);
    EXPECT_EQ(supervisor.presentation.title, " 0/1");
    supervisor.platform.settle();
    EXPECT_EQ(supervisor.presentation.title, " 1/1");
}

TEST(Launch, ShowsNothingElseOnceTheFirstPollHasCome) {
    Supervisor supervisor;
    supervisor.launch();
    supervisor.platform.advance(1s);
    EXPECT_THAT(supervisor.presentation.record, IsEmpty());
}

TEST(Launch, LooksForNoticesBetweenTheAnimationAndTheNoticeTimer) {
    Supervisor supervisor;
    supervisor.home.write(supervisor.constants.appSupportDir + "/pending_model_notices.json",
                          R"([{"message":"m"}])");
    supervisor.make().applicationDidFinishLaunching();
    EXPECT_THAT(supervisor.platform.record,
                ElementsAre("post background", "post main after 1000", "timer 10000", "timer 2000",
                            "timer 60", "post main after 14000", "timer 8000", "post background"));
}

TEST(Launch, TakesOverOldSettingsBeforeTheFirstPoll) {
    Supervisor supervisor;
    supervisor.home.write(
        supervisor.home.at("Library/Application Support/OstrelleAI/shared/bots.json"),
        encodeBots({bot("one"), bot("two")}));
    supervisor.launch();
    EXPECT_EQ(supervisor.presentation.title, " 0/2");
}

TEST(Launch, StartsTheFleetInTheBackgroundAndPollsOnTheMainThread) {
    Supervisor supervisor;
    supervisor.writeBots({bot("one"), bot("two")});
    supervisor.make().applicationDidFinishLaunching();
    supervisor.forget();

    // The fleet as it was is looked at first.
    supervisor.platform.runBackground();
    EXPECT_THAT(supervisor.platform.record,
                ElementsAre("run launchctl list", "post main",
                            "run launchctl bootstrap gui/501 " + supervisor.plist("one"),
                            "run launchctl bootstrap gui/501 " + supervisor.plist("two"),
                            "post main"));
    EXPECT_THAT(supervisor.presentation.record, IsEmpty());
    supervisor.platform.settle();
    EXPECT_EQ(supervisor.polls(), 2);
    EXPECT_THAT(supervisor.presentation.record,
                ElementsAre("image", "title  0/2", "menu 10", "image", "title  0/2", "menu 10"));
}

TEST(Launch, DoesNotStartAPausedAgent) {
    Supervisor supervisor;
    supervisor.writeBots({bot("one", {.isPaused = true}), bot("two")});
    supervisor.make().applicationDidFinishLaunching();
    supervisor.platform.settle();
    EXPECT_THAT(supervisor.fleetCommands(),
                ElementsAre("launchctl bootstrap gui/501 " + supervisor.plist("two")));
}

TEST(Launch, WithAnEmptyBotsFileRunsItsTimersAndOnlyPolls) {
    Supervisor supervisor;
    supervisor.writeBots({});
    supervisor.make().applicationDidFinishLaunching();
    supervisor.platform.settle();
    EXPECT_THAT(supervisor.platform.commandLines(),
                ElementsAre("launchctl list", "launchctl list"));
    EXPECT_THAT(supervisor.platform.record,
                ::testing::IsSupersetOf({"timer 10000", "timer 2000", "timer 60", "timer 8000"}));
    supervisor.forget();
    supervisor.home.write(supervisor.constants.appSupportDir + "/pending_model_notices.json",
                          R"([{"message":"m"}])");
    supervisor.platform.advance(7999ms);
    EXPECT_THAT(supervisor.presentation.panels, IsEmpty());
    supervisor.platform.advance(1ms);
    EXPECT_EQ(supervisor.presentation.panels.size(), 1U);
    supervisor.platform.advance(2s);
    supervisor.platform.settle();
    EXPECT_EQ(supervisor.polls(), 1);
}

TEST(Launch, WithoutAnyIconKeepsTheOneItHas) {
    Supervisor supervisor;
    supervisor.presentation.applicationIcon = "its own";
    supervisor.launch();
    EXPECT_EQ(supervisor.presentation.applicationIcon, "its own");
}

TEST(Launch, PassesOverAnIconThatDoesNotLoad) {
    Supervisor supervisor;
    const std::string ofBundle = supervisor.platform.bundle + "/Contents/Resources/AppIcon.icns";
    supervisor.home.write(ofBundle, "broken");
    supervisor.home.write(supervisor.constants.appIconFile, "good");
    supervisor.presentation.images = {supervisor.constants.appIconFile};
    supervisor.launch();
    EXPECT_EQ(supervisor.presentation.applicationIcon, supervisor.constants.appIconFile);
}

TEST(Launch, PrefersTheIconOfTheBundle) {
    Supervisor supervisor;
    const std::string ofBundle = supervisor.platform.bundle + "/Contents/Resources/AppIcon.icns";
    supervisor.home.write(ofBundle, "good");
    supervisor.home.write(supervisor.constants.appIconFile, "good");
    supervisor.presentation.images = {ofBundle, supervisor.constants.appIconFile};
    supervisor.make().applicationDidFinishLaunching();
    EXPECT_THAT(supervisor.presentation.record,
                ElementsAre("main menu", "status item", "icon " + ofBundle));
}

TEST(Launch, KnowsNoneOfTheRosterWithAnEmptyBotsFile) {
    Supervisor supervisor;
    supervisor.launch();
    EXPECT_THAT(supervisor.presentation.rowTitles(),
                ElementsAre("⚙️ Preferences...", "-", "🟢 Start All Agents",
                            "🔄 Restart All Agents", "-", "-", "Quit"));
    EXPECT_EQ(supervisor.presentation.title, " 0/0");
}

TEST(Timers, FireFirstAfterOneIntervalAndThenAgain) {
    Supervisor supervisor;
    supervisor.launch();
    const auto pass = [&](std::chrono::milliseconds time) {
        supervisor.platform.advance(time);
        supervisor.platform.settle();
    };
    pass(9999ms);
    EXPECT_EQ(supervisor.polls(), 0);
    pass(1ms);
    EXPECT_EQ(supervisor.polls(), 1);
    pass(10s);
    pass(10s);
    EXPECT_EQ(supervisor.polls(), 3);
}

TEST(Quit, UnloadsEveryAgentOfTheFileInOrderAndThenKillsWhatIsLeft) {
    Supervisor supervisor;
    supervisor.launch();
    supervisor.writeBots({governorBot(), bot("one", {.isPaused = true}), bot("two")});
    supervisor.delegate->applicationWillTerminate();
    EXPECT_THAT(supervisor.platform.record,
                ElementsAre("run launchctl bootout gui/501/com.ostrelleai.governor",
                            "run launchctl bootout gui/501/" + labelOf("one"),
                            "run launchctl bootout gui/501/" + labelOf("two"),
                            "run pkill -9 -f provider_telegramd"));
}

TEST(Quit, WithAnUnreadableBotsFileStillKillsTheDaemons) {
    Supervisor supervisor;
    supervisor.launch();
    supervisor.home.write(supervisor.constants.botsConfigFile, "[{");
    supervisor.delegate->applicationWillTerminate();
    EXPECT_THAT(supervisor.platform.record, ElementsAre("run pkill -9 -f provider_telegramd"));
}

TEST(Quit, EndsWhatWorksOnTheFleetInTheBackground) {
    Supervisor supervisor;
    supervisor.writeBots({bot("one")});
    supervisor.launch();
    supervisor.delegate->restartAllAgents();
    supervisor.delegate->applicationWillTerminate();
    supervisor.forget();
    supervisor.platform.settle();
    EXPECT_THAT(supervisor.fleetCommands(), IsEmpty());
}

TEST(Quit, DuringTheLaunchLeavesTheFleetDown) {
    Supervisor supervisor;
    supervisor.writeBots({bot("one")});
    supervisor.make().applicationDidFinishLaunching();
    supervisor.delegate->applicationWillTerminate();
    supervisor.forget();
    supervisor.platform.settle();
    EXPECT_THAT(supervisor.fleetCommands(), IsEmpty());
}

TEST(Quit, GoesOnWhenTheServiceManagerCannotBeLaunched) {
    Supervisor supervisor;
    supervisor.writeBots({bot("one"), bot("two")});
    supervisor.launch();
    supervisor.platform.answer = [](const auto&) { return platform::ProcessResult{}; };
    supervisor.delegate->applicationWillTerminate();
    EXPECT_EQ(supervisor.platform.children.size(), 3U);
}

TEST(StatusItem, EndsTheProgramWhenItIsRemoved) {
    Supervisor supervisor;
    supervisor.launch();
    supervisor.presentation.events.onStatusItemRemoved();
    EXPECT_TRUE(supervisor.presentation.terminated);
}

} // namespace
} // namespace varnhold::testing
