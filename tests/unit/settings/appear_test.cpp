#include "base/files.h"
#include "settings_home.h"

namespace varnhold::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct Appearing : SettingsHome {
    std::vector<std::string> steps;

    void appear() {
        view->appear({.fetchTelegramNames = [this] { steps.emplace_back("names"); },
                      .startKeepaliveTimer = [this] { steps.emplace_back("keepalive"); }});
    }
};

TEST(Appear, ReadsSignInThenTheLibraryThenFetchesNamesAndLastStartsKeepalive) {
    Appearing settings;
    settings.platform.defaults.strings["api_key_openai"] = "key";
    settings.write(settings.constants.modelLibraryFile, encodeLibrary({{model("m")}}));
    settings.open();
    std::vector<std::string> seen;
    settings.view->observe([&](Animation) {
        seen.push_back(settings.view->openaiKey + "/" +
                       std::to_string(settings.view->directModels.size()));
    });
    settings.view->appear({.fetchTelegramNames = [&] { seen.emplace_back("names"); },
                           .startKeepaliveTimer = [&] { seen.emplace_back("keepalive"); }});
    EXPECT_THAT(seen, ElementsAre("key/0", "key/1", "names", "keepalive"));
}

TEST(Appear, ShowsTheSheetsOfAFirstRunAfterFourTenthsOfASecond) {
    Appearing settings;
    settings.open();
    settings.appear();
    EXPECT_THAT(settings.platform.record,
                ElementsAre("post main after 400", "post main after 400"));
    settings.platform.advance(399ms);
    EXPECT_FALSE(settings.view->showWelcome);
    EXPECT_FALSE(settings.view->showLibraryTip);
    int changes = 0;
    settings.view->observe([&](Animation) { ++changes; });
    settings.platform.advance(1ms);
    EXPECT_TRUE(settings.view->showWelcome);
    EXPECT_TRUE(settings.view->showLibraryTip);
    EXPECT_EQ(changes, 2);
}

TEST(Appear, ShowsNoSheetThatWasSeen) {
    Appearing settings;
    settings.platform.defaults.booleans["hasSeenWelcome_v7"] = true;
    settings.open();
    settings.appear();
    settings.platform.advance(1s);
    EXPECT_FALSE(settings.view->showWelcome);
    EXPECT_TRUE(settings.view->showLibraryTip);

    settings.platform.defaults.booleans["hasSeenLibraryTip_v1"] = true;
    settings.platform.record.clear();
    settings.open();
    settings.appear();
    EXPECT_THAT(settings.platform.record, IsEmpty());
    EXPECT_THAT(settings.steps, ElementsAre("names", "keepalive", "names", "keepalive"));
}

TEST(Appear, DoesNotReadChainsAgain) {
    Appearing settings;
    settings.open();
    settings.write(settings.constants.workerPrefsFile, encodeChain({model("w")}));
    settings.appear();
    EXPECT_THAT(settings.view->workerModels, IsEmpty());
}

TEST(FirstOpening, LeavesEmptyChainsTheGovernorAndNoGroups) {
    Appearing settings;
    settings.open().appear(
        {.fetchTelegramNames = [&] { settings.view->save(); }, .startKeepaliveTimer = [] {}});
    settings.platform.settle();
    const Constants& files = settings.constants;
    for (const std::string& path :
         {files.workerPrefsFile, files.architectPrefsFile, files.photoPrefsFile,
          files.videoPrefsFile, files.voicePrefsFile, files.governorChainFile}) {
        EXPECT_EQ(settings.read(path), "[]") << path;
    }
    EXPECT_EQ(settings.read(files.botsConfigFile), encodeBots({builtInGovernorBot()}));
    EXPECT_FALSE(varnhold::files::exists(files.customGroupsFile));
    EXPECT_FALSE(varnhold::files::exists(files.customGroupsFile + ".bak"));
    EXPECT_FALSE(varnhold::files::exists(files.promptFile));
}

} // namespace
} // namespace varnhold::testing
