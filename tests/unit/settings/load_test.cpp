#include <optional>
#include <string>
#include <vector>

#include "settings_home.h"

namespace varnhold::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

std::string groupsNamed(const std::string& name) {
    return encodeGroups({CustomBotGroup{.name = name}}).value();
}

TEST(Load, TakesEachChainFromItsOwnFileAsItStands) {
    SettingsHome settings;
    const Constants& files = settings.constants;
    settings.write(files.workerPrefsFile, encodeChain({model("w"), model("w")}));
    settings.write(files.architectPrefsFile, encodeChain({model("a")}));
    settings.write(files.photoPrefsFile, encodeChain({model("p")}));
    settings.write(files.videoPrefsFile, encodeChain({model("v")}));
    settings.write(files.voicePrefsFile, encodeChain({model("s")}));
    settings.write(files.governorChainFile, encodeChain({model("g")}));
    const ModelSelectorView& view = settings.open();
    EXPECT_THAT(view.workerModels, ElementsAre(model("w"), model("w")));
    EXPECT_THAT(view.architectModels, ElementsAre(model("a")));
    EXPECT_THAT(view.photoModels, ElementsAre(model("p")));
    EXPECT_THAT(view.videoModels, ElementsAre(model("v")));
    EXPECT_THAT(view.voiceModels, ElementsAre(model("s")));
    EXPECT_THAT(view.governorModels, ElementsAre(model("g")));
}

TEST(Load, LeavesAChainEmptyForOneBadEntryAndTheOthersAlone) {
    SettingsHome settings;
    settings.write(settings.constants.photoPrefsFile,
                   R"([{"id":"i","name":"n","family":"f","color":"c"},{"id":"i"}])");
    settings.write(settings.constants.videoPrefsFile, encodeChain({model("v")}));
    const ModelSelectorView& view = settings.open();
    EXPECT_THAT(view.photoModels, IsEmpty());
    EXPECT_THAT(view.videoModels, SizeIs(1));
}

TEST(Load, PutsTheGovernorBeforeBotsThatLackOneAndSelectsIt) {
    SettingsHome settings;
    settings.write(settings.constants.botsConfigFile, encodeBots({bot("ops"), bot("cto")}));
    const ModelSelectorView& view = settings.open();
    EXPECT_THAT(view.userBots, ElementsAre(builtInGovernorBot(), bot("ops"), bot("cto")));
    EXPECT_EQ(view.selectedBot, builtInGovernorBot());
    EXPECT_EQ(settings.read(settings.constants.botsConfigFile),
              encodeBots({bot("ops"), bot("cto")}));
}

TEST(Load, KeepsAGovernorOfTheFileWhereItStandsAndSelectsIt) {
    SettingsHome settings;
    BotConfig governor = bot("governor");
    governor.prompt = "Mine.";
    settings.write(settings.constants.botsConfigFile, encodeBots({bot("ops"), governor}));
    const ModelSelectorView& view = settings.open();
    EXPECT_THAT(view.userBots, ElementsAre(bot("ops"), governor));
    EXPECT_EQ(view.selectedBot, governor);
    EXPECT_EQ(view.selectedBotPrompt, "Mine.");
}

TEST(Load, HasAnEmptyPromptForASelectedBotWithoutOne) {
    SettingsHome settings;
    settings.write(settings.constants.botsConfigFile, encodeBots({bot("governor")}));
    EXPECT_EQ(settings.open().selectedBotPrompt, "");
}

TEST(Load, ShowsOnlyTheGovernorForAnEmptyBotsFile) {
    SettingsHome settings;
    settings.write(settings.constants.botsConfigFile, "[]");
    EXPECT_THAT(settings.open().userBots, ElementsAre(builtInGovernorBot()));
}

TEST(Load, TakesTheBackupOfGroupsForAFileOfTwoBytes) {
    SettingsHome settings;
    settings.write(settings.constants.customGroupsFile, "[]");
    settings.write(settings.constants.customGroupsFile + ".bak", groupsNamed("backup"));
    EXPECT_EQ(settings.open().customGroups.at(0).name, "backup");
}

TEST(Load, TakesTheBackupOfGroupsForAMissingOrBrokenFile) {
    SettingsHome settings;
    settings.write(settings.constants.customGroupsFile + ".bak", groupsNamed("backup"));
    EXPECT_EQ(settings.open().customGroups.at(0).name, "backup");
    settings.write(settings.constants.customGroupsFile, "[{\"id\":");
    EXPECT_EQ(settings.open().customGroups.at(0).name, "backup");
}

TEST(Load, LetsTheFileOfGroupsStandBeforeItsBackup) {
    SettingsHome settings;
    settings.write(settings.constants.customGroupsFile, groupsNamed("file"));
    settings.write(settings.constants.customGroupsFile + ".bak", groupsNamed("backup"));
    EXPECT_EQ(settings.open().customGroups.at(0).name, "file");
}

TEST(Load, TakesAnEmptyListWithBlanksForAnAnswer) {
    SettingsHome settings;
    settings.write(settings.constants.customGroupsFile, " [] ");
    settings.write(settings.constants.customGroupsFile + ".bak", groupsNamed("backup"));
    EXPECT_THAT(settings.open().customGroups, IsEmpty());
}

TEST(LoadCustomGroups, TellsNothingFromAnEmptyList) {
    SettingsHome settings;
    const std::string& path = settings.constants.customGroupsFile;
    EXPECT_EQ(ModelSelectorView::loadCustomGroups(path), std::nullopt);
    settings.write(path, "[]");
    EXPECT_EQ(ModelSelectorView::loadCustomGroups(path), std::nullopt);
    settings.write(path, "[ ]");
    EXPECT_EQ(ModelSelectorView::loadCustomGroups(path), std::vector<CustomBotGroup>{});
    settings.write(path, "[1]");
    EXPECT_EQ(ModelSelectorView::loadCustomGroups(path), std::nullopt);
}

TEST(Load, TakesAssignmentsAndTheMasterPrompt) {
    SettingsHome settings;
    settings.write(settings.constants.chainBotAssignmentsFile, R"({"photo":["a"]})");
    settings.write(settings.constants.promptFile, "Be kind. é\n");
    const ModelSelectorView& view = settings.open();
    EXPECT_EQ(view.chainBotAssignments, (ChainBotAssignments{{"photo", {"a"}}}));
    EXPECT_EQ(view.masterPrompt, "Be kind. é\n");
}

TEST(Load, LeavesThePromptEmptyForAFileThatIsNoUtf8) {
    SettingsHome settings;
    settings.write(settings.constants.promptFile, "Be kind. \xE9\n");
    EXPECT_EQ(settings.open().masterPrompt, "");
}

TEST(Load, ChangesTheGovernorsModelAndKeepsItsProviderWhereOnlyTheModelStands) {
    SettingsHome settings;
    settings.write(settings.constants.governorPrefsFile, R"({"governor":{"model":"m"}})");
    const ModelSelectorView& view = settings.open();
    EXPECT_EQ(view.governorModelId, "m");
    EXPECT_EQ(view.governorProvider, "cerebras");
}

TEST(Load, ChangesTheGovernorsProviderAlone) {
    SettingsHome settings;
    settings.write(settings.constants.governorPrefsFile,
                   R"({"governor":{"provider":"p","model":1}})");
    const ModelSelectorView& view = settings.open();
    EXPECT_EQ(view.governorModelId, "qwen-3-235b-a22b-instruct-2507");
    EXPECT_EQ(view.governorProvider, "p");
}

TEST(Load, IgnoresAGovernorChoiceThatIsAString) {
    SettingsHome settings;
    settings.write(settings.constants.governorPrefsFile, R"({"governor":"p"})");
    const ModelSelectorView& view = settings.open();
    EXPECT_EQ(view.governorModelId, "qwen-3-235b-a22b-instruct-2507");
    EXPECT_EQ(view.governorProvider, "cerebras");
}

TEST(Load, TakesEachEffortAndFallsBackPerChain) {
    SettingsHome settings;
    settings.write(settings.constants.effortPrefsFile,
                   R"({"architect":"extreme","worker":"off","photo":"high","video":"High",)"
                   R"("voice":null})");
    const ModelSelectorView& view = settings.open();
    EXPECT_EQ(view.architectEffort, EffortLevel::medium);
    EXPECT_EQ(view.workerEffort, EffortLevel::off);
    EXPECT_EQ(view.photoEffort, EffortLevel::high);
    EXPECT_EQ(view.videoEffort, EffortLevel::low);
    EXPECT_EQ(view.voiceEffort, EffortLevel::low);
    EXPECT_EQ(view.governorEffort, EffortLevel::medium);
}

TEST(Load, IgnoresEffortsWithoutArchitectAndWorker) {
    SettingsHome settings;
    settings.write(settings.constants.effortPrefsFile, R"({"photo":"high"})");
    EXPECT_EQ(settings.open().photoEffort, EffortLevel::low);
}

TEST(Load, TakesBudgetsAsTheyAreAndZeroWhereNoneStands) {
    SettingsHome settings;
    settings.write(settings.constants.contextPrefsFile,
                   R"({"architect":50000,"worker":3000000,"photo":-1})");
    const ModelSelectorView& view = settings.open();
    EXPECT_EQ(view.architectContextTokens, 50000);
    EXPECT_EQ(view.workerContextTokens, 3000000);
    EXPECT_EQ(view.photoContextTokens, -1);
    EXPECT_EQ(view.governorContextTokens, 0);
}

TEST(Load, AcceptsBudgetsOfAnEmptyObjectAsAllZero) {
    SettingsHome settings;
    settings.write(settings.constants.contextPrefsFile, "{}");
    const ModelSelectorView& view = settings.open();
    EXPECT_THAT(
        (std::vector{view.architectContextTokens, view.workerContextTokens, view.photoContextTokens,
                     view.videoContextTokens, view.voiceContextTokens, view.governorContextTokens}),
        ElementsAre(0, 0, 0, 0, 0, 0));
}

TEST(Load, IgnoresAllBudgetsForOneFraction) {
    SettingsHome settings;
    settings.write(settings.constants.contextPrefsFile, R"({"architect":8000,"worker":0.5})");
    EXPECT_EQ(settings.open().architectContextTokens, 0);
}

TEST(Load, TakesTheResponseModeAndKeepsTextForAnythingElse) {
    SettingsHome settings;
    settings.write(settings.constants.responseModeFile, "\"voice\"");
    EXPECT_EQ(settings.open().architectResponseMode, ResponseMode::voice);
    settings.write(settings.constants.responseModeFile, R"({"mode":"voice"})");
    EXPECT_EQ(settings.open().architectResponseMode, ResponseMode::text);
}

TEST(Load, WritesNothing) {
    SettingsHome settings;
    settings.open();
    settings.platform.settle();
    EXPECT_THAT(settings.platform.record, IsEmpty());
    for (const std::string& path : settings.savedFiles()) {
        EXPECT_EQ(settings.read(path), "") << path;
    }
}

} // namespace
} // namespace varnhold::testing
