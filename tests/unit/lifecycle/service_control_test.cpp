#include "lifecycle/service_control.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "fleet_fixture.h"
#include "status/job_list.h"

namespace varnhold {
namespace {

namespace fs = std::filesystem;
using platform::ProcessRequest;
using platform::ProcessResult;
using platform::Stream;
using ::testing::ElementsAre;

ProcessRequest launchctlWith(std::vector<std::string> arguments, Stream streams) {
    return {.program = "/bin/launchctl",
            .arguments = std::move(arguments),
            .standardOutput = streams,
            .standardError = streams};
}

class ServiceControl : public FleetFixture {
protected:
    // The one child that ran, or an empty request where it wasn't exactly one.
    [[nodiscard]] ProcessRequest onlyChild(bool waited) const {
        EXPECT_EQ(fake.children.size(), 1U);
        if (fake.children.size() != 1) {
            return {};
        }
        EXPECT_EQ(fake.children[0].waited, waited);
        return fake.children[0].request;
    }
    [[nodiscard]] ProcessRequest loading(const std::string& path) const {
        return launchctlWith({"bootstrap", "gui/501", path}, Stream::inherited);
    }
};

TEST_F(ServiceControl, TargetsAreMadeOfTheUserIdInDecimal) {
    EXPECT_EQ(domainTarget(context), "gui/501");
    EXPECT_EQ(serviceTarget(context, "com.x"), "gui/501/com.x");
}

TEST_F(ServiceControl, BootstrapLoadsThePathAndWaits) {
    bootstrap(context, "/a b/x.plist");
    EXPECT_EQ(onlyChild(true), loading("/a b/x.plist"));
}

TEST_F(ServiceControl, BootoutNamesTheJobAndWaits) {
    bootout(context, "com.x");
    EXPECT_EQ(onlyChild(true), launchctlWith({"bootout", "gui/501/com.x"}, Stream::inherited));
}

TEST_F(ServiceControl, RestartKicksTheServiceTargetWithoutWaiting) {
    restartDaemon(context, "com.x");
    EXPECT_EQ(onlyChild(false),
              launchctlWith({"kickstart", "-k", "gui/501/com.x"}, Stream::discarded));
    EXPECT_THAT(fake.record, ElementsAre("start launchctl kickstart -k gui/501/com.x"));
}

TEST_F(ServiceControl, RestartDoesNotWriteAPropertyList) {
    writeBots({bot("cos")});
    restartDaemon(context, "com.ostrelleai.cos.telegramd");
    EXPECT_FALSE(fs::exists(constants.launchAgentsDir));
}

TEST_F(ServiceControl, StopNamesTheBareLabelWithoutWaiting) {
    stopDaemon(context, "com.x");
    EXPECT_EQ(onlyChild(false), launchctlWith({"stop", "com.x"}, Stream::discarded));
    EXPECT_THAT(fake.record, ElementsAre("start launchctl stop com.x"));
}

TEST_F(ServiceControl, TogglingARunningAgentUnloadsItAndWritesNothing) {
    writeBots({bot("cos")});
    toggleDaemon(context, "com.ostrelleai.cos.telegramd", true);
    EXPECT_EQ(onlyChild(true), launchctlWith({"bootout", "gui/501/com.ostrelleai.cos.telegramd"},
                                             Stream::inherited));
    EXPECT_FALSE(fs::exists(constants.launchAgentsDir));
}

TEST_F(ServiceControl, TogglingAnAgentThatDoesNotRunLoadsItFromAFreshFile) {
    writeBots({bot("ea"), bot("cos", {.token = "token-cos"})});
    home.write(plistOf("cos"), "old");
    toggleDaemon(context, "com.ostrelleai.cos.telegramd", false);
    EXPECT_EQ(onlyChild(true), loading(plistOf("cos")));
    EXPECT_NE(home.read(plistOf("cos")).find("token-cos"), std::string::npos);
    EXPECT_FALSE(fs::exists(plistOf("ea")));
}

TEST_F(ServiceControl, TheFileIsWrittenBeforeItIsLoaded) {
    writeBots({bot("cos")});
    bool there = false;
    fake.answer = [&](const ProcessRequest&) {
        there = fs::exists(plistOf("cos"));
        return ProcessResult{};
    };
    toggleDaemon(context, "com.ostrelleai.cos.telegramd", false);
    EXPECT_TRUE(there);
}

TEST_F(ServiceControl, ACrashedAgentIsLoadedNotUnloaded) {
    writeBots({bot("cos")});
    const std::string label = "com.ostrelleai.cos.telegramd";
    const DaemonStatus status = statusOf(parseJobList("-\t78\t" + label + "\n"), label);
    ASSERT_EQ(status, DaemonStatus::crashed);
    toggleDaemon(context, label, status == DaemonStatus::running);
    EXPECT_THAT(fake.commandLines(), ElementsAre(bootstrapOf("cos")));
}

TEST_F(ServiceControl, ALabelThatLeftTheBotsFileIsLoadedFromThePathOfItsName) {
    writeBots({bot("ea")});
    toggleDaemon(context, "com.ostrelleai.gone.telegramd", false);
    EXPECT_EQ(onlyChild(true), loading(plistOf("gone")));
    EXPECT_FALSE(fs::exists(plistOf("gone")));
}

TEST_F(ServiceControl, ALabelOfTheLeftoverFileKeepsThatFileAsItIs) {
    home.write(plistOf("gone"), "old");
    toggleDaemon(context, "com.ostrelleai.gone.telegramd", false);
    EXPECT_EQ(onlyChild(true), loading(plistOf("gone")));
    EXPECT_EQ(home.read(plistOf("gone")), "old");
}

TEST_F(ServiceControl, ALabelWithoutTheEndingIsLoadedFromThePathOfItsName) {
    writeBots({governorBot()});
    toggleDaemon(context, "com.ostrelleai.governor", false);
    EXPECT_EQ(onlyChild(true), loading(plistPath("com.ostrelleai.governor")));
    EXPECT_FALSE(fs::exists(plistPath("com.ostrelleai.governor")));
}

TEST_F(ServiceControl, TheToggleDoesNotLookAtPauses) {
    writeBots({bot("cos", {.isPaused = true})});
    const std::string before = home.read(constants.botsConfigFile);
    toggleDaemon(context, "com.ostrelleai.cos.telegramd", false);
    EXPECT_EQ(onlyChild(true), loading(plistOf("cos")));
    EXPECT_TRUE(fs::exists(plistOf("cos")));
    EXPECT_EQ(home.read(constants.botsConfigFile), before);
}

TEST_F(ServiceControl, OfTwoRecordsWithOneLabelTheFirstCounts) {
    writeBots({bot("cos", {.token = "token-cos"}), bot("cos", {.token = "second-token"})});
    toggleDaemon(context, "com.ostrelleai.cos.telegramd", false);
    EXPECT_NE(home.read(plistOf("cos")).find("token-cos"), std::string::npos);
    EXPECT_EQ(home.read(plistOf("cos")).find("second-token"), std::string::npos);
}

TEST_F(ServiceControl, AnAgentThatDiedSinceThePollIsStillUnloaded) {
    fake.answer = [](const ProcessRequest&) {
        ProcessResult gone;
        gone.started = true;
        gone.status = 3;
        return gone;
    };
    toggleDaemon(context, "com.x", true);
    EXPECT_THAT(fake.commandLines(), ElementsAre("launchctl bootout gui/501/com.x"));
}

TEST_F(ServiceControl, AToolThatCannotBeLaunchedIsPassedOverInSilence) {
    fake.answer = [](const ProcessRequest&) { return ProcessResult{}; };
    bootstrap(context, "/x.plist");
    bootout(context, "a");
    restartDaemon(context, "a");
    stopDaemon(context, "a");
    toggleDaemon(context, "a", true);
    toggleDaemon(context, "a", false);
    EXPECT_EQ(fake.children.size(), 6U);
}

} // namespace
} // namespace varnhold
