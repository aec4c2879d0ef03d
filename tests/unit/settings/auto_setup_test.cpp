#include <string>
#include <vector>

#include "settings_home.h"
#include "shell/daemon_code.h"

namespace varnhold::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

// Runs the set-up to its end, with a script that ends as told.
struct AutoSetup : SettingsHome {
    platform::ProcessResult result;

    AutoSetup() {
        result.started = true;
        platform.answer = [this](const platform::ProcessRequest&) { return result; };
    }

    ModelSelectorView& run() {
        if (!view) {
            open();
        }
        view->runAutoSetup();
        platform.settle();
        return *view;
    }
};

TEST(AutoSetup, RunsTheScriptWithItsOwnEnvironmentAndNothingInherited) {
    AutoSetup settings;
    settings.home.makeFolder(settings.home.at("bundle/Contents/Resources/daemon"));
    settings.run();
    const std::string resources = settings.home.at("bundle/Contents/Resources/daemon");
    ASSERT_THAT(settings.platform.children, SizeIs(1));
    EXPECT_TRUE(settings.platform.children[0].waited);
    EXPECT_EQ(settings.platform.children[0].request,
              (platform::ProcessRequest{
                  .program = findPython(settings.platform.interfaces.system),
                  .arguments = {resources + "/auto_setup_chains.py"},
                  .environment =
                      platform::EnvironmentMap{
                          {"DAEMON_DATA_DIR", settings.constants.appSupportDir},
                          {"DAEMON_RESOURCES", resources},
                          {"HOME", settings.home.path()},
                          {"PATH", "/opt/homebrew/bin:/usr/local/bin:/usr/bin:/bin"}},
                  .standardOutput = platform::Stream::captured,
                  .standardError = platform::Stream::captured}));
}

TEST(AutoSetup, RunsInTheBackgroundAndSaysSoMeanwhile) {
    AutoSetup settings;
    ModelSelectorView& view = settings.open();
    view.autoSetupMessage = "old";
    std::vector<bool> running;
    view.observe([&](Animation) { running.push_back(view.autoSetupRunning); });
    view.runAutoSetup();
    EXPECT_TRUE(view.autoSetupRunning);
    EXPECT_EQ(view.autoSetupMessage, "");
    EXPECT_THAT(settings.platform.children, IsEmpty());
    EXPECT_THAT(settings.platform.record, ElementsAre("post background"));
    EXPECT_THAT(settings.platform.priorities, ElementsAre(platform::Priority::userInitiated));

    settings.platform.runBackground();
    EXPECT_TRUE(view.autoSetupRunning); // until the main queue has its turn
    settings.platform.runMain();
    EXPECT_FALSE(view.autoSetupRunning);
    EXPECT_THAT(running, ElementsAre(true, false));
}

TEST(AutoSetup, SaysWhyAnExecutableThatIsNotThereCouldNotBeLaunched) {
    AutoSetup settings;
    settings.result.started = false;
    settings.result.startError = "no such file";
    ModelSelectorView& view = settings.run();
    EXPECT_EQ(view.autoSetupMessage, "✗ failed to launch: no such file");
    EXPECT_FALSE(view.autoSetupRunning);
}

TEST(AutoSetup, ShowsTheScriptsReportTrimmed) {
    AutoSetup settings;
    settings.result.standardOutput = "\n Chains filled: 6 \n\n";
    EXPECT_EQ(settings.run().autoSetupMessage, "✓ Chains filled: 6");
}

TEST(AutoSetup, GivesAMarkAloneForASilentSuccess) {
    AutoSetup settings;
    EXPECT_EQ(settings.run().autoSetupMessage, "✓ ");
}

TEST(AutoSetup, AsksForAnArchitectModelAtStatusTwo) {
    AutoSetup settings;
    settings.result.status = 2;
    EXPECT_EQ(settings.run().autoSetupMessage,
              "Please assign an Architect AI model first (drag at least one model into the "
              "Architect Chain).");
}

TEST(AutoSetup, AsksForACodingModelAtStatusThree) {
    AutoSetup settings;
    settings.result.status = 3;
    EXPECT_EQ(settings.run().autoSetupMessage,
              "Please assign a Coding AI model first (drag at least one model into the Coding "
              "Chain).");
}

TEST(AutoSetup, ShowsStandardErrorOfAnyOtherStatusOrElseStandardOutput) {
    AutoSetup settings;
    settings.result.status = 1;
    settings.result.standardOutput = " out ";
    EXPECT_EQ(settings.run().autoSetupMessage, "✗ exit 1: out");
    settings.result.standardError = " err\n";
    EXPECT_EQ(settings.run().autoSetupMessage, "✗ exit 1: err");
}

TEST(AutoSetup, EndsAfterTheColonWhereStandardErrorIsBlankOnly) {
    AutoSetup settings;
    settings.result.status = 1;
    settings.result.standardOutput = "out";
    settings.result.standardError = " \n";
    EXPECT_EQ(settings.run().autoSetupMessage, "✗ exit 1: ");
}

TEST(AutoSetup, TakesOutputThatIsNoTextForNone) {
    AutoSetup settings;
    settings.result.standardOutput = "done \xFF";
    EXPECT_EQ(settings.run().autoSetupMessage, "✓ ");
    settings.result.status = 9;
    settings.result.standardOutput = "out";
    settings.result.standardError = "\xC3";
    EXPECT_EQ(settings.run().autoSetupMessage, "✗ exit 9: out");
}

TEST(AutoSetup, TakesASignalForAFailureWhateverItsNumber) {
    AutoSetup settings;
    settings.result.signalled = true;
    for (const int signal : {2, 3, 9}) {
        settings.result.status = signal;
        EXPECT_EQ(settings.run().autoSetupMessage, "✗ exit " + std::to_string(signal) + ": ");
    }
}

TEST(AutoSetup, ReadsTheChainsAgainAfterASuccessAndSavesNothing) {
    AutoSetup settings;
    ModelSelectorView& view = settings.open();
    view.photoModels = {model("unsaved")};
    settings.write(settings.constants.workerPrefsFile, encodeChain({model("w")}));
    settings.write(settings.constants.governorChainFile, encodeChain({model("g")}));
    settings.run();
    EXPECT_THAT(view.workerModels, ElementsAre(model("w")));
    EXPECT_THAT(view.governorModels, ElementsAre(model("g")));
    EXPECT_THAT(view.photoModels, ElementsAre(model("unsaved"))); // its file isn't there
    EXPECT_EQ(settings.read(settings.constants.photoPrefsFile), "");
    EXPECT_FALSE(view.showSaveToast);
}

TEST(AutoSetup, KeepsTheOldChainWhereTheScriptLeftABrokenFile) {
    AutoSetup settings;
    ModelSelectorView& view = settings.open();
    view.architectModels = {model("old")};
    settings.write(settings.constants.architectPrefsFile, "[{\"id\":");
    settings.run();
    EXPECT_THAT(view.architectModels, ElementsAre(model("old")));
}

TEST(AutoSetup, ReadsNothingAgainAfterAFailure) {
    for (const int status : {1, 2, 3}) {
        AutoSetup settings;
        ModelSelectorView& view = settings.open();
        settings.write(settings.constants.workerPrefsFile, encodeChain({model("w")}));
        settings.result.status = status;
        settings.run();
        EXPECT_THAT(view.workerModels, IsEmpty()) << status;
    }
}

TEST(AutoSetup, LetsTheLaterOfTwoRunsHaveTheLastWord) {
    AutoSetup settings;
    ModelSelectorView& view = settings.open();
    int runs = 0;
    settings.platform.answer = [&](const platform::ProcessRequest&) {
        platform::ProcessResult each;
        each.started = true;
        each.standardOutput = std::to_string(++runs);
        return each;
    };
    view.runAutoSetup();
    view.runAutoSetup();
    settings.platform.settle();
    EXPECT_EQ(view.autoSetupMessage, "✓ 2");
}

TEST(AutoSetup, IsForgottenOnceTheStateHasGone) {
    AutoSetup settings;
    bool told = false;
    settings.open().runAutoSetup();
    settings.view->observe([&](Animation) { told = true; });
    settings.view.reset();
    settings.platform.settle();
    EXPECT_FALSE(told);
    EXPECT_THAT(settings.platform.children, SizeIs(1));
}

} // namespace
} // namespace varnhold::testing
