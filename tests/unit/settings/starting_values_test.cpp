#include <optional>
#include <string_view>
#include <vector>

#include "settings/chain_sections.h"
#include "settings_home.h"

namespace varnhold::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* governorPrompt =
    "You are the Governor AI, the overarching system monitor for Ostrelle LLC. Your mission is to "
    "facilitate communication between Architects (Brains) and Workers (Hands). Monitor "
    "conversation outputs; if you detect a code block (bash, python, cli), intercept it and "
    "forward it to the appropriate Worker Fallback Chain for local execution on Corvin's machine.";

TEST(StartingValues, WithoutAnyFileAreEmptyChainsAndPlainPreferences) {
    SettingsHome settings;
    const ModelSelectorView& view = settings.open();
    for (const TargetList list : allTargetLists) {
        EXPECT_THAT(view.*chainSection(list).models, IsEmpty()) << chainKey(list);
    }
    EXPECT_EQ(view.architectEffort, EffortLevel::medium);
    EXPECT_EQ(view.governorEffort, EffortLevel::medium);
    EXPECT_EQ(view.workerEffort, EffortLevel::low);
    EXPECT_EQ(view.photoEffort, EffortLevel::low);
    EXPECT_EQ(view.videoEffort, EffortLevel::low);
    EXPECT_EQ(view.voiceEffort, EffortLevel::low);
    EXPECT_THAT(
        (std::vector{view.architectContextTokens, view.workerContextTokens, view.photoContextTokens,
                     view.videoContextTokens, view.voiceContextTokens, view.governorContextTokens}),
        ElementsAre(0, 0, 0, 0, 0, 0));
    EXPECT_EQ(view.architectResponseMode, ResponseMode::text);
    EXPECT_EQ(view.governorModelId, "qwen-3-235b-a22b-instruct-2507");
    EXPECT_EQ(view.governorProvider, "cerebras");
}

TEST(StartingValues, WithoutAnyFileAreTheGovernorAloneAndNothingElse) {
    SettingsHome settings;
    const ModelSelectorView& view = settings.open();
    EXPECT_THAT(view.userBots, ElementsAre(builtInGovernorBot()));
    EXPECT_EQ(view.selectedBot, builtInGovernorBot());
    EXPECT_EQ(view.selectedBotPrompt, governorPrompt);
    EXPECT_THAT(view.customGroups, IsEmpty());
    EXPECT_THAT(view.chainBotAssignments, IsEmpty());
    EXPECT_EQ(view.masterPrompt, "");
    EXPECT_EQ(view.anthropicMethod, AuthMethod::oauth);
    EXPECT_EQ(view.googleMethod, AuthMethod::oauth);
    EXPECT_EQ(view.openaiMethod, AuthMethod::apiKey);
    EXPECT_EQ(view.mistralMethod, AuthMethod::apiKey);
    EXPECT_EQ(view.qwenMethod, AuthMethod::apiKey);
    EXPECT_EQ(view.deepseekMethod, AuthMethod::apiKey);
}

TEST(StartingValues, WithoutAnyFileStayAfterTheWindowHasAppeared) {
    SettingsHome settings;
    ModelSelectorView& view = settings.open();
    view.loadSettings();
    EXPECT_EQ(view.anthropicMethod, AuthMethod::oauth);
    EXPECT_EQ(view.googleMethod, AuthMethod::oauth);
    EXPECT_EQ(view.openaiMethod, AuthMethod::apiKey);
    EXPECT_EQ(view.mistralMethod, AuthMethod::apiKey);
    EXPECT_EQ(view.qwenMethod, AuthMethod::apiKey);
    EXPECT_EQ(view.deepseekMethod, AuthMethod::apiKey);
    EXPECT_EQ(view.cerebrasKey, "");
}

TEST(StartingValues, OfDragsSheetsAndTimersAreNothing) {
    SettingsHome settings;
    const ModelSelectorView& view = settings.open();
    for (const bool flag :
         {view.photoTopTargeted, view.videoTopTargeted, view.voiceTopTargeted,
          view.governorTopTargeted, view.architectTopTargeted, view.workerTopTargeted,
          view.isLibraryTargeted, view.showAlert, view.showSaveToast, view.showHints,
          view.showWelcome, view.showAddModelSheet, view.showLibraryTip, view.showManageGroupsSheet,
          view.autoSetupRunning}) {
        EXPECT_FALSE(flag);
    }
    EXPECT_EQ(view.keepaliveTimer, nullptr);
    EXPECT_EQ(view.draggingItem, std::nullopt);
    EXPECT_EQ(view.draggingBotLabel, std::nullopt);
    EXPECT_EQ(view.editingBot, std::nullopt);
    EXPECT_EQ(view.tokenSheetBot, std::nullopt);
    EXPECT_EQ(view.newBotService, BotService::telegram);
}

TEST(LocalTools, AreTwoFixedRows) {
    SettingsHome settings;
    EXPECT_THAT(settings.open().localToolModels,
                ElementsAre(AIModelItem{.uniqueId = "LOCAL-WHISPER-0000",
                                        .id = "local:whisper",
                                        .name = "Whisper (transcription, free/local)",
                                        .family = "Local",
                                        .color = "teal",
                                        .type = "local",
                                        .provider_key = "local"},
                            AIModelItem{.uniqueId = "LOCAL-SAY-00000000",
                                        .id = "local:say",
                                        .name = "say (voice reply, free/local)",
                                        .family = "Local",
                                        .color = "teal",
                                        .type = "local",
                                        .provider_key = "local"}));
}

TEST(GovernorBot, IsASystemBotWithoutATokenThatCannotBeStarted) {
    EXPECT_EQ(builtInGovernorBot(), (BotConfig{.icon = "⚖️",
                                               .title = "Governor AI",
                                               .token = "",
                                               .role = "governor",
                                               .launchdLabel = "com.ostrelleai.governor",
                                               .service = BotService::telegram,
                                               .prompt = governorPrompt,
                                               .isPaused = false,
                                               .isSystem = true}));
}

TEST(ChainKeys, StandInTheirOrder) {
    std::vector<std::string_view> keys;
    for (const TargetList list : allTargetLists) {
        keys.push_back(chainKey(list));
    }
    EXPECT_THAT(keys, ElementsAre("architect", "worker", "photo", "video", "voice", "governor"));
}

} // namespace
} // namespace varnhold::testing
