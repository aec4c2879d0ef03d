#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/files.h"
#include "base/unicode.h"
#include "records/governor_choice.h"
#include "records/providers.h"
#include "settings/chain_sections.h"
#include "settings/settings_state.h"

namespace varnhold {

namespace {

EffortLevel levelOr(const std::optional<std::string>& raw, EffortLevel otherwise) {
    return raw ? effortLevelFromRawValue(*raw).value_or(otherwise) : otherwise;
}

double tokensOf(const std::optional<std::int64_t>& budget) {
    return static_cast<double>(budget.value_or(0));
}

template <class Bots>
auto findGovernor(Bots& bots) {
    return std::find_if(bots.begin(), bots.end(),
                        [](const BotConfig& bot) { return bot.role == "governor"; });
}

} // namespace

// Who watches the files sees them read in this order.
ModelSelectorView::ModelSelectorView(platform::Platform& platform, const Constants& constants)
    : platform_(platform), constants_(constants) {
    for (const TargetList list : chainFileOrder) {
        loadChain(list);
    }
    if (const auto mode = readResponseMode(constants_.responseModeFile)) {
        architectResponseMode = *mode;
    }
    loadBots();
    loadGroups();
    if (auto assignments = readAssignments(constants_.chainBotAssignmentsFile)) {
        chainBotAssignments = *std::move(assignments);
    }
    loadPrompt();
    loadGovernorChoice();
    loadEfforts();
    loadBudgets();
}

void ModelSelectorView::loadChain(TargetList list) {
    const ChainSection& section = chainSection(list);
    if (auto models = readChain(constants_.*section.file)) {
        this->*section.models = *std::move(models);
    }
}

void ModelSelectorView::loadBots() {
    auto bots = readBots(constants_.botsConfigFile);
    userBots = bots ? *std::move(bots) : std::vector<BotConfig>{};
    if (findGovernor(userBots) == userBots.end()) {
        userBots.insert(userBots.begin(), builtInGovernorBot());
    }
    selectedBot = *findGovernor(userBots);
    selectedBotPrompt = selectedBot->prompt.value_or("");
}

void ModelSelectorView::loadGroups() {
    auto groups = loadCustomGroups(constants_.customGroupsFile);
    if (!groups) {
        groups = loadCustomGroups(constants_.customGroupsFile + ".bak");
    }
    if (groups) {
        customGroups = *std::move(groups);
    }
}

std::optional<std::vector<CustomBotGroup>>
ModelSelectorView::loadCustomGroups(const std::string& path) {
    const auto content = files::read(path);
    if (!content || content->size() <= emptyGroupsFileSize) {
        return std::nullopt;
    }
    auto groups = decodeGroups(*content);
    return groups ? std::optional(*std::move(groups)) : std::nullopt;
}

void ModelSelectorView::loadPrompt() {
    auto text = files::read(constants_.promptFile);
    if (text && unicode::isValidUtf8(*text)) {
        masterPrompt = *std::move(text);
    }
}

void ModelSelectorView::loadGovernorChoice() {
    const GovernorChoice choice = valueOrEmpty(readGovernorChoice(constants_.governorPrefsFile));
    governorProvider = choice.provider.value_or(governorProvider);
    governorModelId = choice.model.value_or(governorModelId);
}

// The fields still hold their starting values here, which stand in for what is absent or unknown.
void ModelSelectorView::loadEfforts() {
    const auto prefs = readEffortPrefs(constants_.effortPrefsFile);
    if (!prefs) {
        return;
    }
    for (const ChainSection& section : chainSections()) {
        EffortLevel& effort = this->*section.effort;
        effort = levelOr(effortOf(*prefs, chainKey(section.list)), effort);
    }
}

void ModelSelectorView::loadBudgets() {
    const auto prefs = readContextPrefs(constants_.contextPrefsFile);
    if (!prefs) {
        return;
    }
    for (const ChainSection& section : chainSections()) {
        this->*section.contextTokens = tokensOf(budgetOf(*prefs, chainKey(section.list)));
    }
}

void ModelSelectorView::loadSettings() {
    const auto config = readAuthConfig(constants_.authConfigFile);
    static_cast<SignIn&>(*this) = signInFrom(config ? *config : signInFromDefaults());
    changed();
}

AuthConfig ModelSelectorView::signInFromDefaults() const {
    AuthConfig config;
    for (const StoredValue& each : storedValues()) {
        each.set(config, platform_.defaults.string(std::string(each.legacyKey)));
    }
    return config;
}

} // namespace varnhold
