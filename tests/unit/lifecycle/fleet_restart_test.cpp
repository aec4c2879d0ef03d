#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "fleet_fixture.h"
#include "lifecycle/fleet.h"
#include "shell/daemon_code.h"

namespace varnhold {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using platform::EnvironmentMap;
using platform::ProcessRequest;
using platform::ProcessResult;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::Field;

class RestartAll : public FleetFixture {
protected:
    void restart() {
        restartAll(context, activeBots(constants), [this] { fake.record.emplace_back("step"); });
    }

    // What stands between the last agent going down and the first coming up.
    [[nodiscard]] std::vector<std::string> middle() const {
        return {"step",
                "sleep 900000",
                "run pkill -9 -f provider_telegramd",
                "run sh -c sweep",
                "run " + interpreterName() + " -c " + chainResetScript(home.at("daemon")),
                "sleep 300000"};
    }
    [[nodiscard]] std::vector<std::string> down(const std::string& role) const {
        return {"run " + bootoutOf(role), "step", "sleep 150000"};
    }
    [[nodiscard]] std::vector<std::string> up(const std::string& role) const {
        return {"run " + bootstrapOf(role), "step", "sleep 150000"};
    }

    static std::vector<std::string> inOrder(const std::vector<std::vector<std::string>>& parts) {
        std::vector<std::string> all;
        for (const auto& part : parts) {
            all.insert(all.end(), part.begin(), part.end());
        }
        return all;
    }

    // Calls back when a child with this command line is run.
    void onChild(const std::string& line, const std::function<void()>& act) {
        fake.answer = [line, act](const ProcessRequest& request) {
            if (testing::commandLine(request) == line) {
                act();
            }
            ProcessResult result;
            result.started = true;
            return result;
        };
    }

private:
    [[nodiscard]] std::string interpreterName() const {
        return fs::path(findPython(context.platform.system)).filename();
    }
};

TEST_F(RestartAll, GoesThroughItsPhasesInThisOrder) {
    writeBots({bot("zeta"), bot("alpha")});
    restart();
    EXPECT_THAT(fake.record,
                ElementsAreArray(inOrder(
                    {down("zeta"), down("alpha"), middle(), up("zeta"), up("alpha"), {"step"}})));
}

TEST_F(RestartAll, TakesTheseMicrosecondsOfPauses) {
    writeBots({bot("a"), bot("b")});
    restart();
    std::vector<std::chrono::microseconds> times;
    for (const auto& child : fake.children) {
        times.push_back(child.at);
    }
    EXPECT_THAT(times,
                ElementsAre(0us, 150000us, 1200000us, 1200000us, 1200000us, 1500000us, 1650000us));
    EXPECT_EQ(fake.elapsed(), 1800000us);
}

TEST_F(RestartAll, AFleetOfTwentyTakesSixSecondsOfPausesMore) {
    std::vector<BotConfig> bots;
    for (int i = 0; i < 20; ++i) {
        bots.push_back(bot("bot" + std::to_string(i)));
    }
    writeBots(bots);
    restart();
    EXPECT_EQ(fake.elapsed(), 7200000us);
}

TEST_F(RestartAll, EveryChildIsWaitedFor) {
    writeBots({bot("a")});
    restart();
    EXPECT_EQ(fake.children.size(), 5U);
    EXPECT_THAT(fake.children, Each(Field(&testing::FakePlatform::Child::waited, true)));
}

TEST_F(RestartAll, ChildrenHaveTheseProgramsEnvironmentsAndStreams) {
    writeBots({bot("a")});
    restart();
    ASSERT_EQ(fake.children.size(), 5U);
    EXPECT_EQ(fake.children[0].request,
              (ProcessRequest{.program = "/bin/launchctl",
                              .arguments = {"bootout", "gui/501/com.ostrelleai.a.telegramd"}}));
    EXPECT_EQ(fake.children[1].request,
              (ProcessRequest{.program = "/usr/bin/pkill",
                              .arguments = {"-9", "-f", "provider_telegramd"}}));
    EXPECT_EQ(fake.children[2].request,
              (ProcessRequest{.program = "/bin/sh", .arguments = {"-c", "sweep"}}));
    EXPECT_EQ(
        fake.children[3].request,
        (ProcessRequest{.program = findPython(context.platform.system),
                        .arguments = {"-c", chainResetScript(home.at("daemon"))},
                        .environment = EnvironmentMap{
                            {"DAEMON_DATA_DIR", home.at("Library/Application Support/Varnhold")},
                            {"DAEMON_RESOURCES", home.at("daemon")},
                            {"HOME", home.path()}}}));
    EXPECT_EQ(fake.children[4].request,
              (ProcessRequest{.program = "/bin/launchctl",
                              .arguments = {"bootstrap", "gui/501", plistOf("a")}}));
}

TEST_F(RestartAll, TheResetUsesDaemonCodeInsideTheBundleWhereThatExists) {
    const std::string inside = fake.bundle + "/Contents/Resources/daemon";
    home.makeFolder(inside);
    restart();
    ASSERT_EQ(fake.children.size(), 3U);
    EXPECT_EQ(fake.children[2].request.arguments.at(1), chainResetScript(inside));
    EXPECT_EQ(fake.children[2].request.environment->at("DAEMON_RESOURCES"), inside);
}

TEST_F(RestartAll, TheResetLooksForItsInterpreterWhenItsTurnHasCome) {
    writeBots({bot("a")});
    fake.isThere = [](const std::string&) { return false; };
    onChild("pkill -9 -f provider_telegramd",
            [this] { fake.isThere = [](const std::string&) { return true; }; });
    restart();
    ASSERT_EQ(fake.children.size(), 5U);
    EXPECT_EQ(fake.children[3].request.program, "/opt/homebrew/bin/python3.14");
    EXPECT_EQ(fake.children[3].request.environment->at("DAEMON_RESOURCES"),
              fake.bundle + "/Contents/Resources/daemon");
}

TEST_F(RestartAll, WithAllBotsPausedOnlyTheLoopsAreSkipped) {
    writeBots({bot("a", {.isPaused = true}), bot("b", {.isPaused = true})});
    restart();
    EXPECT_THAT(fake.record, ElementsAreArray(inOrder({middle(), {"step"}})));
    EXPECT_EQ(fake.elapsed(), 1200000us);
}

TEST_F(RestartAll, WithAnEmptyOrBrokenBotsFileOnlyTheLoopsAreSkipped) {
    restart();
    EXPECT_THAT(fake.record, ElementsAreArray(inOrder({middle(), {"step"}})));
    fake.record.clear();
    home.write(constants.botsConfigFile, "broken");
    restart();
    EXPECT_THAT(fake.record, ElementsAreArray(inOrder({middle(), {"step"}})));
}

TEST_F(RestartAll, APausedAgentIsNeitherUnloadedNorLoaded) {
    writeBots({bot("a"), bot("p", {.isPaused = true})});
    restart();
    EXPECT_THAT(fake.record, ElementsAreArray(inOrder({down("a"), middle(), up("a"), {"step"}})));
    EXPECT_FALSE(fs::exists(plistOf("p")));
}

TEST_F(RestartAll, ALabelWithoutTheEndingIsUnloadedButNeitherLoadedNorPausedFor) {
    writeBots({governorBot(), bot("a")});
    restart();
    const std::vector<std::string> governorDown{
        "run launchctl bootout gui/501/com.ostrelleai.governor", "step", "sleep 150000"};
    EXPECT_THAT(fake.record,
                ElementsAreArray(inOrder({governorDown, down("a"), middle(), up("a"), {"step"}})));
}

TEST_F(RestartAll, AnAgentAddedAfterItBeganIsNotTouched) {
    writeBots({bot("a")});
    onChild(bootoutOf("a"), [this] { writeBots({bot("a"), bot("late")}); });
    restart();
    EXPECT_THAT(fake.record, ElementsAreArray(inOrder({down("a"), middle(), up("a"), {"step"}})));
    EXPECT_FALSE(fs::exists(plistOf("late")));
    EXPECT_EQ(loadBots(constants).size(), 2U);
}

TEST_F(RestartAll, AnAgentRemovedOrPausedAfterItBeganComesUpAllTheSame) {
    writeBots({bot("a"), bot("b")});
    onChild(bootoutOf("a"), [this] { writeBots({bot("a", {.isPaused = true})}); });
    restart();
    EXPECT_THAT(fake.record, ElementsAreArray(inOrder(
                                 {down("a"), down("b"), middle(), up("a"), up("b"), {"step"}})));
}

TEST_F(RestartAll, AgentsComeUpWithTheKeysOfThatMoment) {
    writeSignIn(R"({"openaiKey":"before"})");
    writeBots({bot("a")});
    onChild(bootoutOf("a"), [this] { writeSignIn(R"({"openaiKey":"after"})"); });
    restart();
    EXPECT_NE(home.read(plistOf("a")).find("<string>after</string>"), std::string::npos);
}

TEST_F(RestartAll, AKeySavedDuringTheRaisingReachesOnlyAgentsNotYetRaised) {
    writeSignIn(R"({"openaiKey":"before"})");
    writeBots({bot("first"), bot("second")});
    onChild(bootstrapOf("first"), [this] { writeSignIn(R"({"openaiKey":"after"})"); });
    restart();
    EXPECT_NE(home.read(plistOf("first")).find("<string>before</string>"), std::string::npos);
    EXPECT_NE(home.read(plistOf("second")).find("<string>after</string>"), std::string::npos);
}

TEST_F(RestartAll, NoPropertyListIsWrittenBeforeTheSweepIsOver) {
    writeBots({bot("a")});
    bool seen = true;
    onChild("sh -c sweep", [&] { seen = fs::exists(plistOf("a")); });
    restart();
    EXPECT_FALSE(seen);
    EXPECT_TRUE(fs::exists(plistOf("a")));
}

TEST_F(RestartAll, ChildrenThatCannotBeLaunchedOrFailDoNotEndIt) {
    writeBots({bot("a")});
    const auto expected = inOrder({down("a"), middle(), up("a"), {"step"}});
    fake.answer = [](const ProcessRequest&) { return ProcessResult{}; };
    restart();
    EXPECT_THAT(fake.record, ElementsAreArray(expected));
    fake.record.clear();
    fake.answer = [](const ProcessRequest&) {
        ProcessResult failed;
        failed.started = true;
        failed.status = 1;
        return failed;
    };
    restart();
    EXPECT_THAT(fake.record, ElementsAreArray(expected));
}

TEST_F(RestartAll, StepsAreShownByTheMainThreadWhileThePausesLast) {
    writeBots({bot("a")});
    std::vector<std::chrono::microseconds> shown;
    restartAll(context, activeBots(constants),
               [&] { fake.interfaces.queues.postMain([&] { shown.push_back(fake.elapsed()); }); });
    fake.settle();
    EXPECT_THAT(shown, ElementsAre(0us, 150000us, 1350000us, 1500000us));
}

} // namespace
} // namespace varnhold
