#include <filesystem>
#include <string>
#include <vector>

#include "base/files.h"
#include "base/json.h"
#include "settings_home.h"

namespace varnhold::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

// 2026-03-04T05:06:07Z as time since the epoch.
constexpr auto someMoment = 1772600767s;

TEST(Save, WritesEveryFileAsItIsReadBack) {
    SettingsHome settings;
    ModelSelectorView& view = settings.open();
    fill(view);
    view.save();

    SettingsHome other; // same folder, another state
    const ModelSelectorView again(other.platform.interfaces, settings.constants);
    EXPECT_EQ(again.workerModels, view.workerModels);
    EXPECT_EQ(again.architectModels, view.architectModels);
    EXPECT_EQ(again.photoModels, view.photoModels);
    EXPECT_EQ(again.videoModels, view.videoModels);
    EXPECT_EQ(again.voiceModels, view.voiceModels);
    EXPECT_EQ(again.governorModels, view.governorModels);
    EXPECT_EQ(again.architectResponseMode, ResponseMode::both);
    EXPECT_EQ(again.userBots, view.userBots);
    EXPECT_EQ(again.customGroups, view.customGroups);
    EXPECT_EQ(again.chainBotAssignments, view.chainBotAssignments);
    EXPECT_EQ(again.masterPrompt, "Be kind.\n");
    EXPECT_EQ(again.videoEffort, EffortLevel::high);
    EXPECT_EQ(again.voiceContextTokens, 8000);
}

TEST(Save, WritesAllSixEffortsAndBudgetsInOneLineEach) {
    SettingsHome settings;
    settings.open().save();
    EXPECT_EQ(settings.read(settings.constants.effortPrefsFile),
              R"({"architect":"medium","worker":"low","photo":"low","video":"low","voice":"low",)"
              R"("governor":"medium"})");
    EXPECT_EQ(settings.read(settings.constants.contextPrefsFile),
              R"({"architect":0,"worker":0,"photo":0,"video":0,"voice":0,"governor":0})");
    EXPECT_EQ(settings.read(settings.constants.chainBotAssignmentsFile), "{}");
    EXPECT_EQ(settings.read(settings.constants.responseModeFile), "\"text\"");
}

TEST(Save, RoundsABudgetToTheNearestWholeNumber) {
    SettingsHome settings;
    ModelSelectorView& view = settings.open();
    view.architectContextTokens = 31999.6;
    view.workerContextTokens = 0.5;
    view.save();
    const auto prefs = readContextPrefs(settings.constants.contextPrefsFile);
    EXPECT_EQ(prefs->architect, 32000);
    EXPECT_EQ(prefs->worker, 1);
}

TEST(Save, SurvivesTheLargestBudgetThatAFileCanHold) {
    SettingsHome settings;
    settings.write(settings.constants.contextPrefsFile, R"({"photo":9223372036854775807})");
    settings.open().save();
    EXPECT_EQ(readContextPrefs(settings.constants.contextPrefsFile)->photo, INT64_MAX);
}

TEST(Save, LeavesAnExistingPromptAloneWhereTheMasterPromptIsBlank) {
    SettingsHome settings;
    ModelSelectorView& view = settings.open();
    settings.write(settings.constants.promptFile, "Old.");
    view.masterPrompt = " \n\t\u3000";
    view.save();
    EXPECT_EQ(settings.read(settings.constants.promptFile), "Old.");
}

TEST(Save, WritesThePromptUntrimmed) {
    SettingsHome settings;
    ModelSelectorView& view = settings.open();
    view.masterPrompt = "\n Be kind.\n\n";
    view.save();
    EXPECT_EQ(settings.read(settings.constants.promptFile), "\n Be kind.\n\n");
}

TEST(Save, ReplacesAnUnreadableGovernorChoiceByAFileOfGovernorAlone) {
    SettingsHome settings;
    settings.write(settings.constants.governorPrefsFile, "{\"worker\":");
    settings.platform.advance(someMoment);
    settings.open().save();
    EXPECT_EQ(settings.read(settings.constants.governorPrefsFile), R"({
  "governor": {
    "provider": "cerebras",
    "model": "qwen-3-235b-a22b-instruct-2507",
    "set_at": "2026-03-04T05:06:07Z"
  }
})");
}

TEST(Save, KeepsOtherKeysOfTheGovernorChoice) {
    SettingsHome settings;
    settings.write(settings.constants.governorPrefsFile, R"({"worker":{"provider":"x"}})");
    settings.open().save();
    const auto document = json::parseFile(settings.constants.governorPrefsFile);
    ASSERT_TRUE(document) << document.error();
    EXPECT_EQ(document->at("worker"), *json::parse(R"({"provider":"x"})"));
    EXPECT_EQ(document->at("governor").at("provider"), "cerebras");
}

TEST(Save, KeepsTheLoadedChoiceAndMovesItsStamp) {
    SettingsHome settings;
    settings.write(settings.constants.governorPrefsFile,
                   R"({"governor":{"provider":"p","model":"m","set_at":"old","mood":"good"}})");
    settings.platform.advance(someMoment);
    settings.open().save();
    EXPECT_EQ(json::parseFile(settings.constants.governorPrefsFile)->at("governor"),
              *json::parse(R"({"provider":"p","model":"m","set_at":"2026-03-04T05:06:07Z"})"));
}

TEST(Save, MakesTheFolderForTheLastFileAndNoneBefore) {
    SettingsHome settings;
    ModelSelectorView& view = settings.open();
    std::filesystem::remove_all(settings.constants.appSupportDir);
    fill(view);
    view.save();
    EXPECT_FALSE(files::exists(settings.constants.contextPrefsFile));
    EXPECT_TRUE(files::exists(settings.constants.governorPrefsFile));
}

TEST(Save, ShowsTheToastForASecond) {
    SettingsHome settings;
    ModelSelectorView& view = settings.open();
    std::vector<bool> seen;
    view.observe([&](Animation) { seen.push_back(view.showSaveToast); });
    view.save();
    EXPECT_TRUE(view.showSaveToast);
    EXPECT_THAT(settings.platform.record, ElementsAre("post main after 1000"));
    settings.platform.advance(999ms);
    EXPECT_TRUE(view.showSaveToast);
    settings.platform.advance(1ms);
    EXPECT_FALSE(view.showSaveToast);
    EXPECT_THAT(seen, ElementsAre(true, false));
}

TEST(Save, LetsTheFirstOfTwoHideTheToastOfTheSecond) {
    SettingsHome settings;
    ModelSelectorView& view = settings.open();
    view.save();
    settings.platform.advance(600ms);
    view.save();
    settings.platform.advance(400ms);
    EXPECT_FALSE(view.showSaveToast);
    settings.platform.advance(600ms);
    EXPECT_FALSE(view.showSaveToast);
}

TEST(Save, StartsNoProcessAndLeavesNothingToOtherThreads) {
    SettingsHome settings;
    ModelSelectorView& view = settings.open();
    fill(view);
    view.save();
    EXPECT_THAT(settings.platform.children, IsEmpty());
    EXPECT_EQ(settings.platform.backgroundTasks(), 0U);
}

TEST(Save, DropsWhatIsLeftToDoOnceTheStateHasGone) {
    SettingsHome settings;
    settings.open().save();
    bool told = false;
    settings.view->observe([&](Animation) { told = true; });
    settings.view.reset();
    settings.platform.advance(2s);
    EXPECT_FALSE(told);
}

// What can't be written stays as it is; everything else is saved all the same.
class UnwritableFile : public ::testing::TestWithParam<std::size_t> {};

TEST_P(UnwritableFile, DoesNotKeepTheOthersFromBeingSaved) {
    SettingsHome settings;
    const std::string blocked = settings.savedFiles()[GetParam()];
    settings.home.makeFolder(blocked);
    ModelSelectorView& view = settings.open();
    fill(view);
    view.save();
    EXPECT_TRUE(view.showSaveToast);
    EXPECT_TRUE(files::isDirectory(blocked));
    for (const std::string& path : settings.savedFiles()) {
        if (path != blocked) {
            EXPECT_NE(settings.read(path), "") << path;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(EachFile, UnwritableFile, ::testing::Range<std::size_t>(0, 15));

TEST(Save, ReturnsWithTheToastWhereAFileStandsInTheFoldersPlace) {
    SettingsHome settings;
    std::filesystem::remove_all(settings.constants.appSupportDir);
    settings.write(settings.constants.appSupportDir, "a file");
    ModelSelectorView& view = settings.open();
    fill(view);
    view.save();
    EXPECT_TRUE(view.showSaveToast);
    EXPECT_EQ(settings.read(settings.constants.appSupportDir), "a file");
}

} // namespace
} // namespace varnhold::testing
