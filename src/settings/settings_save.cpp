#include <string>

#include "base/dates.h"
#include "base/files.h"
#include "base/unicode.h"
#include "records/governor_choice.h"
#include "records/providers.h"
#include "records/tokens.h"
#include "settings/chain_sections.h"
#include "settings/settings_state.h"

namespace varnhold {

using namespace std::chrono_literals;

namespace {

constexpr auto toastDuration = 1000ms;

// A file that can't be written stays as it is; the others are still saved.
void store(const std::string& path, const std::string& content) {
    static_cast<void>(files::writeInPlace(path, content));
}

} // namespace

// Daemons watch these files, so the order stays as it is.
void ModelSelectorView::save() {
    for (const TargetList list : chainFileOrder) {
        const ChainSection& section = chainSection(list);
        store(constants_.*section.file, encodeChain(this->*section.models));
    }
    store(constants_.responseModeFile, encodeResponseMode(architectResponseMode));
    store(constants_.botsConfigFile, encodeBots(userBots));
    saveGroups();
    store(constants_.chainBotAssignmentsFile, encodeAssignments(chainBotAssignments));
    savePrompt();
    saveSettings();
    saveEfforts();
    saveBudgets();
    saveGovernorChoice();
    showToast();
}

// An empty list is never written: a view that failed to load must not wipe the groups on disk, so
// they come back into the view instead.
void ModelSelectorView::saveGroups() {
    const std::string& path = constants_.customGroupsFile;
    if (!customGroups.empty()) {
        if (const auto content = encodeGroups(customGroups)) {
            // Only the first state ever backed up is kept: the copy never replaces a backup.
            static_cast<void>(files::copyItem(path, path + ".bak"));
            store(path, *content);
        }
        return;
    }
    const auto onDisk = files::read(path);
    if (!onDisk || onDisk->size() <= emptyGroupsFileSize) {
        return;
    }
    auto groups = valueOrEmpty(decodeGroups(*onDisk));
    if (!groups.empty()) {
        later([this, groups = std::move(groups)] {
            customGroups = groups;
            changed();
        });
    }
}

void ModelSelectorView::savePrompt() const {
    if (!unicode::trimmed(masterPrompt).empty()) {
        static_cast<void>(files::writeAtomically(constants_.promptFile, masterPrompt));
    }
}

void ModelSelectorView::saveSettings() {
    const AuthConfig config = authConfigOf(*this);
    store(constants_.authConfigFile, encodeAuthConfig(config));
    for (const StoredValue& each : storedValues()) {
        platform_.defaults.setString(std::string(each.legacyKey), each.of(config).value_or(""));
    }
}

void ModelSelectorView::saveEfforts() const {
    EffortPrefs prefs;
    for (const ChainSection& section : chainSections()) {
        setEffort(prefs, chainKey(section.list), rawValue(this->*section.effort));
    }
    store(constants_.effortPrefsFile, encodeEffortPrefs(prefs));
}

void ModelSelectorView::saveBudgets() const {
    ContextPrefs prefs;
    for (const ChainSection& section : chainSections()) {
        setBudget(prefs, chainKey(section.list), roundedTokens(this->*section.contextTokens));
    }
    store(constants_.contextPrefsFile, encodeContextPrefs(prefs));
}

// The file is shared: this is one key of it, and the others pass through.
void ModelSelectorView::saveGovernorChoice() const {
    const std::string content =
        withGovernorChoice(files::read(constants_.governorPrefsFile), governorProvider,
                           governorModelId, dates::iso8601(platform_.clock.now()));
    static_cast<void>(files::createDirectories(constants_.appSupportDir));
    store(constants_.governorPrefsFile, content);
}

void ModelSelectorView::showToast() {
    showSaveToast = true;
    changed();
    laterAfter(toastDuration, [this] {
        showSaveToast = false;
        changed();
    });
}

} // namespace varnhold
