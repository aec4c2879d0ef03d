#pragma once

#include <string>
#include <string_view>
#include <vector>

// The status item's menu as plain rows, made anew at every poll from the picture of that moment.
// Pure logic; nothing here knows how a menu is shown.
namespace varnhold {

enum class MenuAction {
    none,
    openModelSelector,
    startAllAgents,
    restartAllAgents,
    toggleDaemon,    // carries the label
    reloginProvider, // carries the provider's key
    terminate,
};

struct MenuRow {
    enum class Kind { separator, header, item };

    Kind kind = Kind::separator;
    std::string title;
    std::string key; // shown beside the title; with the platform's command key
    MenuAction action = MenuAction::none;
    std::string value; // what the action is about
    bool red = false;

    bool operator==(const MenuRow&) const = default;
};

// The name that people know a provider by; an unknown key comes out capitalised.
[[nodiscard]] std::string providerDisplayName(std::string_view provider);

struct FleetPicture;

[[nodiscard]] std::vector<MenuRow> statusMenuRows(const FleetPicture& picture);

} // namespace varnhold
