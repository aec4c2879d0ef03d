#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/background.h"
#include "platform/payload.h"
#include "platform/platform.h"
#include "settings/settings_changes.h"
#include "settings/settings_fields.h"
#include "settings/target_list.h"
#include "shell/constants.h"
#include "stacks/stack.h"

namespace varnhold {

struct ModelRow;
class CustomGroupsColumn;
struct ManageCustomGroupsSheet;

// The settings window's one state: the working copy of all settings files, and what loads and saves
// it.
//
// Made when the window is first opened and kept for the life of the process. There is no staging:
// each edit ends in save(), which rewrites every file. Main thread only; work for other
// threads is handed out with copies, and what comes back after the record has gone is dropped.
// Nothing here reports a failure: a file that can't be read or decoded counts as missing, one that
// can't be written stays as it was.
class ModelSelectorView final : public SettingsFields {
public:
    // Reads all files but sign-in and library. Both must outlive the record.
    ModelSelectorView(platform::Platform& platform, const Constants& constants);
    ModelSelectorView(const ModelSelectorView&) = delete;
    ModelSelectorView& operator=(const ModelSelectorView&) = delete;
    ~ModelSelectorView() = default;

    // The one observer, called after every change that the record makes by itself. Whoever changes
    // a field from outside without saving calls changed().
    void observe(ChangeObserver observer);
    void changed(Animation animation = Animation::none) const;

    // Each time the window appears: sign-in and library afresh from disk, over whatever was typed
    // and not saved, then the bots' names, which saves everything, the sheets of a first run, and
    // keepalive from its start.
    void appear();

    // Sign-in from its file, or from the user defaults where that is missing or rejected.
    void loadSettings();

    // Groups of one file. None if it can't be read or decoded or holds no more than "[]".
    [[nodiscard]] static std::optional<std::vector<CustomBotGroup>>
    loadCustomGroups(const std::string& path);

    // Who is signed in, by the files that the providers' tools leave behind, and the library. A
    // library that can't be read leaves the lists as they are.
    void refresh();

    // Writes every settings file and shows the toast, whatever failed on the way.
    void save();

    // Stores sign-in twice: in its file, and in the user defaults as the fallback.
    void saveSettings();

    // Has a script of the daemon code fill the chains, in the background, and reads them again.
    void runAutoSetup();

    // Chain editing (chain_editing.h). What is dropped is handled later, when its text has arrived;
    // a chain's bots, steppers and rows are edited through chain().
    [[nodiscard]] const std::vector<AIModelItem>& chainArray(TargetList list) const;
    [[nodiscard]] std::vector<AIModelItem>& chainBinding(TargetList list);
    [[nodiscard]] Stack chain(TargetList list);
    [[nodiscard]] ModelRow modelRow(const AIModelItem& item);
    bool handleDrop(const platform::PayloadProviders& providers, TargetList list,
                    std::optional<std::size_t> insertAt = std::nullopt);
    bool handleLibraryDrop(const platform::PayloadProviders& providers);
    [[nodiscard]] bool isInAnyChain(const std::string& uid) const;
    void deleteLibraryModel(const AIModelItem& item);
    // Empties all chains but the voice chain, at once and for good, and saves.
    void reset();

    // The library's form and the sheets of a first run (add_model.h, first_run.h).
    void addLibraryModel(const AIModelItem& item);
    void dismissWelcome();
    void dismissLibraryTip();

    // Placement (placement_checks.h), keepalive (keepalive.h) and local models (ollama.h).
    [[nodiscard]] bool checkAuthFor(const AIModelItem& item) const;
    void startKeepaliveTimer();
    void tickKeepalive();
    void checkOllamaDownload(const AIModelItem& item);
    void downloadOllama(const AIModelItem& item);

    // Bots (bot_editing.h), provider logins (sign_in.h) and custom groups (groups_wiring.h).
    void addBot();
    void togglePauseBot(const BotConfig& bot);
    void removeBot(const BotConfig& bot);
    void fetchNames();
    void runScout(const std::optional<std::string>& key);
    [[nodiscard]] CustomGroupsColumn groupsColumn();
    [[nodiscard]] ManageCustomGroupsSheet groupsSheet();

private:
    void loadChain(TargetList list);
    void loadBots();
    void loadGroups();
    void loadPrompt();
    void loadGovernorChoice();
    void loadEfforts();
    void loadBudgets();
    [[nodiscard]] AuthConfig signInFromDefaults() const;

    void saveGroups();
    void savePrompt() const;
    void saveEfforts() const;
    void saveBudgets() const;
    void saveGovernorChoice() const;
    void showToast();

    void finishAutoSetup(const platform::ProcessResult& result);

    [[nodiscard]] StackPolicy chainPolicy();
    [[nodiscard]] std::optional<TargetList> otherWith(const std::string& uid,
                                                      TargetList list) const;
    [[nodiscard]] std::optional<AIModelItem> takeFromOthers(const std::string& uid,
                                                            TargetList list);
    [[nodiscard]] bool refuses(const AIModelItem& item, TargetList list);
    void endDrag();
    void removeModel(const std::string& payload);

    // Posts to the main thread; the task is dropped if the record has gone by then.
    void later(std::function<void()> task);
    void laterAfter(std::chrono::milliseconds delay, std::function<void()> task);

    platform::Platform& platform_;
    const Constants& constants_;
    ChangeObserver observer_;
    platform::Alive alive_;
    StackEditing chains_{chainPolicy()};
};

} // namespace varnhold
