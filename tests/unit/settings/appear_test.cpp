#include <string>
#include <vector>

#include "base/files.h"
#include "settings_home.h"

namespace varnhold::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(Appear, ReadsSignInThenTheLibraryThenFetchesNamesAndLastStartsKeepalive) {
    SettingsHome settings;
    settings.platform.defaults.strings["api_key_openai"] = "key";
    settings.platform.defaults.booleans = {{"hasSeenWelcome_v7", true},
                                           {"hasSeenLibraryTip_v1", true}};
    settings.write(settings.constants.modelLibraryFile, encodeLibrary({{model("m")}}));
    BotConfig asked = bot("asked");
    asked.token = "1:a";
    settings.write(settings.constants.botsConfigFile, encodeBots({asked}));
    settings.open();
    std::vector<std::string> seen;
    settings.view->observe([&](Animation) {
        seen.push_back(settings.view->openaiKey + "/" +
                       std::to_string(settings.view->directModels.size()) + "/" +
                       std::to_string(settings.platform.http.urls.size()));
    });
    settings.view->appear();
    EXPECT_THAT(seen, ElementsAre("key/0/0", "key/1/0"));
    EXPECT_THAT(settings.platform.http.urls, ElementsAre("https://api.telegram.org/bot1:a/getMe"));
    EXPECT_THAT(settings.platform.record, ElementsAre("timer 60000"));
}

TEST(Appear, SavesWhenTheLastNameHasCome) {
    SettingsHome settings;
    BotConfig asked = bot("asked");
    asked.token = "1:a";
    settings.write(settings.constants.botsConfigFile, encodeBots({asked}));
    settings.open().appear();
    settings.platform.settle();
    EXPECT_EQ(settings.saves(), 0);
    settings.platform.http.answerAll(R"({"result":{"first_name":"Newly named"}})");
    settings.platform.settle();
    EXPECT_EQ(settings.saves(), 1);
    EXPECT_EQ(settings.botsOnDisk().back().title, "Newly named");
}

TEST(Appear, ShowsTheSheetsOfAFirstRunAfterFourTenthsOfASecond) {
    SettingsHome settings;
    settings.open();
    settings.view->appear();
    EXPECT_THAT(settings.platform.record, ElementsAre("post main", "post main after 400",
                                                      "post main after 400", "timer 60000"));
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
    SettingsHome settings;
    settings.platform.defaults.booleans["hasSeenWelcome_v7"] = true;
    settings.open();
    settings.view->appear();
    settings.platform.advance(1s);
    EXPECT_FALSE(settings.view->showWelcome);
    EXPECT_TRUE(settings.view->showLibraryTip);

    settings.platform.defaults.booleans["hasSeenLibraryTip_v1"] = true;
    settings.platform.record.clear();
    settings.open();
    settings.view->appear();
    EXPECT_THAT(settings.platform.record, ElementsAre("post main", "timer 60000"));
}

TEST(Appear, DoesNotReadChainsAgain) {
    SettingsHome settings;
    settings.open();
    settings.write(settings.constants.workerPrefsFile, encodeChain({model("w")}));
    settings.view->appear();
    EXPECT_THAT(settings.view->workerModels, IsEmpty());
}

TEST(FirstOpening, LeavesEmptyChainsTheGovernorAndNoGroups) {
    SettingsHome settings;
    settings.open().appear();
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
