#include <string>
#include <vector>

#include "supervisor.h"

#include "base/files.h"
#include "settings/sign_in.h"

namespace varnhold::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(StartAllAgents, BlocksUntilTheLastIsLoadedAndThenPolls) {
    Supervisor supervisor;
    supervisor.launch();
    supervisor.writeBots({bot("one")});
    supervisor.presentation.events.onMenuChosen(MenuAction::startAllAgents, "");
    EXPECT_THAT(supervisor.platform.record,
                ElementsAre("run launchctl bootstrap gui/501 " + supervisor.plist("one"),
                            "post background"));
    supervisor.platform.settle();
    EXPECT_EQ(supervisor.polls(), 1);
}

TEST(StartAllAgents, WithAnEmptyFleetOnlyPolls) {
    Supervisor supervisor;
    supervisor.launch();
    supervisor.delegate->startAllAgents();
    supervisor.platform.settle();
    EXPECT_THAT(supervisor.platform.commandLines(), ElementsAre("launchctl list"));
}

TEST(RestartAllAgents, ReturnsAtOnceAndPollsOnTheMainThreadAfterEachStep) {
    Supervisor supervisor;
    supervisor.writeBots({bot("one")});
    supervisor.launch();
    supervisor.presentation.events.onMenuChosen(MenuAction::restartAllAgents, "");
    EXPECT_THAT(supervisor.platform.record, ElementsAre("post background"));

    EXPECT_THAT(supervisor.platform.priorities.back(), platform::Priority::userInitiated);

    supervisor.forget();
    supervisor.platform.runBackground();
    const std::vector<std::string> commands = supervisor.fleetCommands();
    ASSERT_EQ(commands.size(), 5U);
    EXPECT_EQ(commands[0], "launchctl bootout gui/501/" + labelOf("one"));
    EXPECT_EQ(commands[1], "pkill -9 -f provider_telegramd");
    EXPECT_EQ(commands[4], "launchctl bootstrap gui/501 " + supervisor.plist("one"));
}

// The steps of a restart and of what it posts, without its commands.
std::vector<std::string> postsAndPauses(const FakePlatform& platform) {
    std::vector<std::string> steps = platform.record;
    std::erase_if(steps, [](const std::string& each) { return each.starts_with("run "); });
    return steps;
}

TEST(RestartAllAgents, AsksForTheStateOnTheMainThreadAfterEachStep) {
    Supervisor supervisor;
    supervisor.writeBots({bot("one")});
    supervisor.launch();
    supervisor.delegate->restartAllAgents();
    supervisor.forget();
    supervisor.platform.runBackground();
    // After the bootout, after all bootouts, after the bootstrap, and at the end. The main thread
    // has its turn in the pauses: it is then that it asks. What comes last is the answer.
    EXPECT_THAT(postsAndPauses(supervisor.platform),
                ElementsAre("post main", "sleep 150000", "post background", "post main",
                            "sleep 900000", "sleep 300000", "post main", "sleep 150000",
                            "post main", "post main"));
}

TEST(RestartAllAgents, EndsInAPictureOfTheFleetThatIsUp) {
    Supervisor supervisor;
    supervisor.writeBots({bot("one")});
    supervisor.launch();
    supervisor.delegate->restartAllAgents();
    supervisor.list("10", "0", labelOf("one"));
    supervisor.platform.settle();
    EXPECT_EQ(supervisor.presentation.title, " 1/1");
    EXPECT_GE(supervisor.polls(), 2);
}

TEST(RestartAllAgents, IsNotTouchedByABotAddedAfterItBegan) {
    Supervisor supervisor;
    supervisor.writeBots({bot("one")});
    supervisor.launch();
    supervisor.delegate->restartAllAgents();
    supervisor.writeBots({bot("one"), bot("late")});
    supervisor.platform.settle();
    for (const std::string& command : supervisor.fleetCommands()) {
        EXPECT_EQ(command.find("late"), std::string::npos) << command;
    }
}

TEST(ToggleDaemon, UnloadsARunningAgentAndPolls) {
    Supervisor supervisor;
    supervisor.writeBots({bot("one")});
    supervisor.list("447", "0", labelOf("one"));
    supervisor.launch();
    supervisor.presentation.events.onMenuChosen(MenuAction::toggleDaemon, labelOf("one"));
    EXPECT_THAT(supervisor.platform.record,
                ElementsAre("run launchctl bootout gui/501/" + labelOf("one"), "post background"));
    supervisor.platform.settle();
    EXPECT_EQ(supervisor.polls(), 1);
}

TEST(ToggleDaemon, LoadsACrashedAgentFromAFreshPropertyList) {
    Supervisor supervisor;
    supervisor.writeBots({bot("one")});
    supervisor.list("-", "1", labelOf("one"));
    supervisor.launch();
    ASSERT_EQ(::unlink(supervisor.plist("one").c_str()), 0);
    supervisor.delegate->toggleDaemon(labelOf("one"));
    EXPECT_THAT(supervisor.fleetCommands(),
                ElementsAre("launchctl bootstrap gui/501 " + supervisor.plist("one")));
    EXPECT_TRUE(files::exists(supervisor.plist("one")));
}

TEST(ToggleDaemon, LoadsALabelThatTheFileNoLongerHoldsFromThePathOfItsName) {
    Supervisor supervisor;
    supervisor.launch();
    supervisor.delegate->toggleDaemon("com.example.gone.telegramd");
    EXPECT_THAT(supervisor.fleetCommands(),
                ElementsAre("launchctl bootstrap gui/501 " + supervisor.constants.launchAgentsDir +
                            "/com.example.gone.telegramd.plist"));
    EXPECT_FALSE(files::exists(supervisor.constants.launchAgentsDir));
}

TEST(ToggleDaemon, LoadsALabelOfAnotherFormFromThePathOfItsName) {
    Supervisor supervisor;
    supervisor.writeBots({governorBot()});
    supervisor.launch();
    supervisor.delegate->toggleDaemon("com.ostrelleai.governor");
    EXPECT_THAT(supervisor.fleetCommands(),
                ElementsAre("launchctl bootstrap gui/501 " + supervisor.constants.launchAgentsDir +
                            "/com.ostrelleai.governor.plist"));
    EXPECT_FALSE(
        files::exists(supervisor.constants.launchAgentsDir + "/com.ostrelleai.governor.plist"));
}

TEST(ToggleDaemon, TrustsTheLastPollEvenIfTheAgentHasDiedSince) {
    Supervisor supervisor;
    supervisor.writeBots({bot("one")});
    supervisor.list("447", "0", labelOf("one"));
    supervisor.launch();
    supervisor.listing = "PID\tStatus\tLabel\n-\t-9\t" + labelOf("one") + "\n";
    supervisor.delegate->toggleDaemon(labelOf("one"));
    EXPECT_THAT(supervisor.fleetCommands(),
                ElementsAre("launchctl bootout gui/501/" + labelOf("one")));
    supervisor.platform.settle();
    EXPECT_EQ(supervisor.delegate->getStatus(labelOf("one")), DaemonStatus::crashed);
}

TEST(ToggleDaemon, StartsAPausedAgentOfAnOlderMenuAndLeavesItPausedInTheFile) {
    Supervisor supervisor;
    supervisor.launch();
    supervisor.writeBots({bot("one", {.isPaused = true})});
    supervisor.delegate->toggleDaemon(labelOf("one"));
    EXPECT_THAT(supervisor.fleetCommands(),
                ElementsAre("launchctl bootstrap gui/501 " + supervisor.plist("one")));
    EXPECT_TRUE(supervisor.delegate->loadBots().front().paused());
}

TEST(MenuChoice, OfQuitAsksTheApplicationToEnd) {
    Supervisor supervisor;
    supervisor.launch();
    supervisor.presentation.events.onMenuChosen(MenuAction::terminate, "");
    EXPECT_TRUE(supervisor.presentation.terminated);
    EXPECT_THAT(supervisor.platform.record, IsEmpty());
}

TEST(MenuChoice, OfAnAlertRunsTheSignInScriptInATerminalWithoutWaiting) {
    Supervisor supervisor;
    supervisor.launch();
    supervisor.presentation.events.onMenuChosen(MenuAction::reloginProvider, "gemini");
    EXPECT_THAT(
        supervisor.platform.record,
        ElementsAre("start terminal " + supervisor.home.at("daemon") + "/login_scout.sh gemini"));
}

TEST(MenuChoice, OfAnAlertSaysInTheWindowThatThereIsNoTerminal) {
    Supervisor supervisor;
    supervisor.launch();
    supervisor.platform.terminal = false;
    supervisor.presentation.events.onMenuChosen(MenuAction::reloginProvider, "gemini");
    EXPECT_TRUE(supervisor.presentation.windowShown);
    EXPECT_THAT(supervisor.presentation.alerts, ElementsAre(noTerminalAlert));
    EXPECT_THAT(supervisor.platform.children, IsEmpty());
}

} // namespace
} // namespace varnhold::testing
