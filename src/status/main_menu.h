#pragma once

#include <string>
#include <vector>

// The application's menu bar while the settings window is open, as plain rows.
namespace varnhold {

enum class MainMenuAction {
    none, // a separator
    orderFrontStandardAboutPanel,
    openModelSelector,
    hide,
    hideOtherApplications,
    unhideAllApplications,
    closePrefsWindow,
    terminate,
    openManageCustomGroups,
    performClose,
    undo,
    redo,
    cut,
    copy,
    paste,
    selectAll,
};

struct MainMenuRow {
    std::string title;
    std::string key; // one character, with the platform's command key; empty for none
    MainMenuAction action = MainMenuAction::none;
    bool shift = false;
    bool option = false;

    bool operator==(const MainMenuRow&) const = default;
};

struct MainMenu {
    std::string title;
    std::vector<MainMenuRow> rows;
};

// The plain quit key only puts the window away; ending the supervisor, which stops the agents,
// takes Shift as well.
[[nodiscard]] std::vector<MainMenu> mainMenus();

} // namespace varnhold
