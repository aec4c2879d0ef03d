#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "records/groups.h"
#include "records/model_rows.h"
#include "settings/settings_state.h"
#include "shell/constants.h"
#include "stacks/stack.h"

// The table of the six chains: for each, where its values are kept and how the window shows it.
// Loading, saving, keepalive and the window all go by it.
//
// Main thread. Nothing here fails; a step beyond the end of a ladder does nothing.
namespace varnhold {

// One chain. The pointers name where its values are kept; it holds none itself.
struct ChainSection {
    TargetList list = TargetList::governor;
    std::string_view name; // "Coding"
    std::string_view title;
    // Of those side by side in the window, from its top; the governor's row is 0.
    int row = 0;
    Color tint;
    std::string Constants::*file = nullptr;
    ModelRows SettingsFields::*models = nullptr;
    EffortLevel SettingsFields::*effort = nullptr;
    double SettingsFields::*contextTokens = nullptr;
    bool SettingsFields::*topTargeted = nullptr;
    ResponseMode SettingsFields::*responseMode = nullptr; // null: the chain has none
    bool showEffort = true;
    bool keptWarm = true; // its caches are kept from lapsing
    bool emptiedByReset = true;
    bool takesCerebras = false; // models that think only and use no tools
    std::string_view hint;
    std::string_view help = {}; // of the section as a whole
};

// In the order of the window.
[[nodiscard]] const std::array<ChainSection, chainCount>& chainSections();
// The governor's for a number that is no chain's.
[[nodiscard]] const ChainSection& chainSection(TargetList list);

// How models come into a chain, line by line, for the menu of a section's title.
inline constexpr std::array<std::string_view, 5> chainMenuLines{
    "How to add models:", "1. Find a model in the Library panel on the left.",
    "2. Drag it into this chain's drop area below.",
    "3. Drop onto ⤴︎ to insert at the top (highest priority).",
    "4. Models are tried in order — top first, failover down."};

inline constexpr std::string_view contextStepperHelp =
    "Max chat-history tokens fed to this chain. Auto = use the top model's max window.";

// A chain's stepper shows what every stack's does.
using ChainStepperRow = StepperRow;

// A budget as a chain shows it. `ladder`: the budgets that can be reached, rising, at least one.
[[nodiscard]] ChainStepperRow chainContextRow(double tokens, Ladder ladder);

// Saves what is new. Does nothing for a section without a mode.
void chooseResponse(ModelSelectorView& view, const ChainSection& section, ResponseMode mode);

// The chain's bots in the order of the bot column, whatever the order of dropping.
[[nodiscard]] std::vector<BotConfig> botsOf(const SettingsFields& settings, TargetList list);

} // namespace varnhold
