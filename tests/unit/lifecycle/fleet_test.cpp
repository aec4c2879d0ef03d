#include "lifecycle/fleet.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "fleet_fixture.h"
#include "lifecycle/launch_agent.h"

namespace varnhold {
namespace {

namespace fs = std::filesystem;
using platform::ProcessRequest;
using platform::ProcessResult;
using platform::Stream;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::IsEmpty;

const std::string killLine = "pkill -9 -f provider_telegramd";

TEST(ChainResetScript, NamesTheDaemonCodeAsTheFallback) {
    EXPECT_EQ(chainResetScript("/a b/daemon"),
              "import sys, os; sys.path.insert(0, os.environ.get('DAEMON_RESOURCES', "
              "'/a b/daemon')); from circular_failover import reset_all_chain_positions; "
              "reset_all_chain_positions()");
}

class StartAll : public FleetFixture {};

TEST_F(StartAll, LoadsEachStartableAgentInFileOrderFromAFreshFile) {
    writeBots({bot("zeta", {.token = "token-zeta"}), bot("cto", {.isPaused = true}), governorBot(),
               bot("alpha", {.token = "token-alpha"})});
    home.write(plistOf("alpha"), "old");
    startAll(context);
    EXPECT_THAT(fake.record,
                ElementsAre("run " + bootstrapOf("zeta"), "run " + bootstrapOf("alpha")));
    EXPECT_NE(home.read(plistOf("zeta")).find("token-zeta"), std::string::npos);
    EXPECT_NE(home.read(plistOf("alpha")).find("token-alpha"), std::string::npos);
    EXPECT_FALSE(fs::exists(plistOf("cto")));
    EXPECT_FALSE(fs::exists(plistPath("com.ostrelleai.governor")));
}

TEST_F(StartAll, ChildrenAreWaitedForWithTheProgramsOwnStreams) {
    writeBots({bot("cos")});
    startAll(context);
    ASSERT_EQ(fake.children.size(), 1U);
    EXPECT_TRUE(fake.children[0].waited);
    EXPECT_EQ(fake.children[0].request,
              (ProcessRequest{.program = "/bin/launchctl",
                              .arguments = {"bootstrap", "gui/501", plistOf("cos")},
                              .environment = std::nullopt,
                              .standardOutput = Stream::inherited,
                              .standardError = Stream::inherited}));
}

TEST_F(StartAll, MakesNoPausesAndKillsNothing) {
    writeBots({bot("a"), bot("b"), bot("c")});
    startAll(context);
    EXPECT_EQ(fake.elapsed().count(), 0);
    EXPECT_THAT(fake.commandLines(),
                ElementsAre(bootstrapOf("a"), bootstrapOf("b"), bootstrapOf("c")));
}

TEST_F(StartAll, AnEmptyMissingOrBrokenBotsFileStartsNothing) {
    startAll(context);
    writeBots({});
    startAll(context);
    home.write(constants.botsConfigFile, "broken");
    startAll(context);
    EXPECT_THAT(fake.record, IsEmpty());
}

TEST_F(StartAll, AgentsThatAreLoadedAlreadyStayAndTheirFilesAreNew) {
    writeBots({bot("a"), bot("b")});
    home.write(plistOf("a"), "old");
    home.write(plistOf("b"), "old");
    fake.answer = [](const ProcessRequest&) {
        ProcessResult loaded;
        loaded.started = true;
        loaded.status = 5;
        return loaded;
    };
    startAll(context);
    EXPECT_THAT(fake.commandLines(), ElementsAre(bootstrapOf("a"), bootstrapOf("b")));
    EXPECT_NE(home.read(plistOf("a")), "old");
    EXPECT_NE(home.read(plistOf("b")), "old");
}

TEST_F(StartAll, AToolThatCannotBeLaunchedDoesNotKeepTheNextAgentFromItsTurn) {
    writeBots({bot("a"), bot("b")});
    fake.answer = [](const ProcessRequest&) { return ProcessResult{}; };
    startAll(context);
    EXPECT_THAT(fake.commandLines(), ElementsAre(bootstrapOf("a"), bootstrapOf("b")));
}

TEST_F(StartAll, AnAgentWhoseFileCannotBeWrittenIsLoadedFromWhatIsOnDisk) {
    writeBots({bot("cos")});
    home.write(constants.launchAgentsDir, "a file where a folder should be");
    startAll(context);
    EXPECT_THAT(fake.commandLines(), ElementsAre(bootstrapOf("cos")));
}

TEST_F(StartAll, SlackAndSystemRecordsAreStartedLikeAnyOther) {
    writeBots({bot("slack", {.service = BotService::slack}), bot("system", {.isSystem = true})});
    startAll(context);
    EXPECT_THAT(fake.commandLines(), ElementsAre(bootstrapOf("slack"), bootstrapOf("system")));
}

class ShutDownAll : public FleetFixture {};

TEST_F(ShutDownAll, UnloadsEveryRecordInOrderAndThenKillsWhatIsLeft) {
    writeBots({bot("zeta"), bot("cto", {.isPaused = true}), governorBot(), bot("alpha")});
    shutDownAll(context);
    EXPECT_THAT(fake.record, ElementsAre("run " + bootoutOf("zeta"), "run " + bootoutOf("cto"),
                                         "run launchctl bootout gui/501/com.ostrelleai.governor",
                                         "run " + bootoutOf("alpha"), "run " + killLine));
    EXPECT_EQ(fake.elapsed().count(), 0);
    EXPECT_FALSE(fs::exists(constants.launchAgentsDir));
}

TEST_F(ShutDownAll, ChildrenAreWaitedForWithTheProgramsOwnStreams) {
    writeBots({bot("cos")});
    shutDownAll(context);
    EXPECT_THAT(fake.children, Each(Field(&testing::FakePlatform::Child::waited, true)));
    ASSERT_EQ(fake.children.size(), 2U);
    EXPECT_EQ(fake.children[0].request,
              (ProcessRequest{.program = "/bin/launchctl",
                              .arguments = {"bootout", "gui/501/com.ostrelleai.cos.telegramd"}}));
    EXPECT_EQ(fake.children[1].request,
              (ProcessRequest{.program = "/usr/bin/pkill",
                              .arguments = {"-9", "-f", "provider_telegramd"}}));
}

TEST_F(ShutDownAll, WithAnEmptyFleetOnlyTheKillIsLeft) {
    shutDownAll(context);
    EXPECT_THAT(fake.commandLines(), ElementsAre(killLine));
}

TEST_F(ShutDownAll, ALeftoverPropertyListStaysInPlace) {
    writeBots({bot("cos")});
    generatePlist(context, bot("cos"));
    shutDownAll(context);
    EXPECT_TRUE(fs::exists(plistOf("cos")));
}

TEST_F(ShutDownAll, AToolThatCannotBeLaunchedDoesNotEndTheShutDown) {
    writeBots({bot("a"), bot("b")});
    fake.answer = [](const ProcessRequest&) { return ProcessResult{}; };
    shutDownAll(context);
    EXPECT_THAT(fake.commandLines(), ElementsAre(bootoutOf("a"), bootoutOf("b"), killLine));
}

class ActiveBots : public FleetFixture {};

TEST_F(ActiveBots, AreThoseThatAreNotPausedInFileOrder) {
    BotConfig unpaused = bot("b");
    unpaused.isPaused = false;
    writeBots({bot("z"), bot("p", {.isPaused = true}), unpaused, governorBot()});
    EXPECT_THAT(activeBots(constants), ElementsAre(bot("z"), unpaused, governorBot()));
}

TEST_F(ActiveBots, AFleetThatIsWhollyPausedHasNone) {
    writeBots({bot("a", {.isPaused = true}), bot("b", {.isPaused = true})});
    EXPECT_THAT(activeBots(constants), IsEmpty());
}

} // namespace
} // namespace varnhold
