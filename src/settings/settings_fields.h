#pragma once

#include <chrono>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/platform.h"
#include "records/assignments.h"
#include "records/auth.h"
#include "records/bots.h"
#include "records/groups.h"
#include "records/models.h"
#include "records/preferences.h"

namespace varnhold {

// The two tools that run on this machine; in no file.
[[nodiscard]] std::vector<AIModelItem> builtInLocalTools();

// The bot that the settings window always has: never started, never removed.
[[nodiscard]] BotConfig builtInGovernorBot();

// What the settings window holds, each field with its starting value. Plain data; main thread.
struct SettingsFields : SignIn {
    // Chains, in failover order
    std::vector<AIModelItem> workerModels, architectModels, photoModels, videoModels, voiceModels,
        governorModels;

    // Drop highlights
    bool photoTopTargeted = false, videoTopTargeted = false, voiceTopTargeted = false;
    bool governorTopTargeted = false, architectTopTargeted = false, workerTopTargeted = false;
    bool isLibraryTargeted = false;

    // Effort
    EffortLevel architectEffort = EffortLevel::medium, governorEffort = EffortLevel::medium;
    EffortLevel workerEffort = EffortLevel::low, photoEffort = EffortLevel::low;
    EffortLevel videoEffort = EffortLevel::low, voiceEffort = EffortLevel::low;

    // Context budgets in tokens; 0 leaves the choice to the model
    double architectContextTokens = 0, workerContextTokens = 0, photoContextTokens = 0;
    double videoContextTokens = 0, voiceContextTokens = 0, governorContextTokens = 0;

    // Response
    ResponseMode architectResponseMode = ResponseMode::text;

    // Governor choice; nothing in the window changes it
    std::string governorModelId = "qwen-3-235b-a22b-instruct-2507";
    std::string governorProvider = "cerebras";

    // Library
    std::vector<AIModelItem> allLibraryModels, directModels, ollamaModels, openRouterModels,
        cerebrasModels;
    const std::vector<AIModelItem> localToolModels = builtInLocalTools();

    // Sign-in, by provider; methods and keys are those of SignIn
    std::map<std::string, bool> oauthStatuses;

    // Bots
    std::vector<BotConfig> userBots;
    std::optional<BotConfig> selectedBot, editingBot, tokenSheetBot;
    std::string selectedBotPrompt, newBotToken, newBotRole;
    BotService newBotService = BotService::telegram;

    // Prompt
    std::string masterPrompt;

    // Groups
    std::vector<CustomBotGroup> customGroups;
    std::string newGroupNameInput;

    // Assignments, by chain key
    ChainBotAssignments chainBotAssignments;
    std::map<std::string, bool> chainBotDropTargeted;

    // Keepalive, by chain key; never stored
    std::map<std::string, std::chrono::system_clock::time_point> lastPingTime;
    std::map<std::string, double> cacheWarmth;
    std::unique_ptr<platform::Timer> keepaliveTimer;

    // Automatic set-up
    bool autoSetupRunning = false;
    std::string autoSetupMessage;

    // Dragging
    std::optional<AIModelItem> draggingItem;
    std::optional<std::string> draggingBotLabel;
    std::set<std::string> downloadingModels;

    // Messages and sheets
    std::string alertMsg;
    bool showAlert = false, showSaveToast = false, showHints = false, showWelcome = false;
    bool showAddModelSheet = false, showLibraryTip = false, showManageGroupsSheet = false;
};

} // namespace varnhold
