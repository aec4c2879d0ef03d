#pragma once

#include <array>
#include <string_view>
#include <vector>

#include "records/groups.h"
#include "settings/settings_state.h"
#include "stacks/stack.h"

// The sections in which the window shows the six chains: what stands in their headers, and what the
// controls there do.
//
// Main thread. Nothing here fails; a step beyond the end of a ladder does nothing.
namespace varnhold {

// One section. The pointers name where its values are kept; it holds none itself.
struct ChainSection {
    std::string_view title;
    TargetList list = TargetList::governor;
    EffortLevel SettingsFields::*effort = nullptr;
    double SettingsFields::*contextTokens = nullptr;
    bool SettingsFields::*topTargeted = nullptr;
    bool showEffort = true;
    Color tint;
    ResponseMode SettingsFields::*responseMode = nullptr; // null: the chain has none
    std::string_view hint;
    std::string_view help = {}; // of the section as a whole
};

// In the order of the window.
[[nodiscard]] const std::array<ChainSection, 6>& chainSections();
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
