#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "shell/constants.h"

// The status item's menu as plain rows, made anew at every poll from the picture of that moment.
// Pure logic and small file reads; nothing here knows how a menu is shown.
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

// A provider whose sign-in has failed, and since which day; the day may be empty.
struct ReauthAlert {
    std::string provider;
    std::string since;

    bool operator==(const ReauthAlert&) const = default;
};

// Alerts of the daemons' file, sorted by the provider's key as plain text. Empty on any failure.
[[nodiscard]] std::vector<ReauthAlert> loadReauthAlerts(const Constants& constants);

// The name that people know a provider by; an unknown key comes out capitalised.
[[nodiscard]] std::string providerDisplayName(std::string_view provider);

// A custom group's name and its models' names, in failover order.
struct MenuGroup {
    std::string name;
    std::vector<std::string> models;
};

// Groups of the file in its order, with what their bots will use. Empty on any failure.
[[nodiscard]] std::vector<MenuGroup> loadMenuGroups(const Constants& constants);

struct FleetPicture;
[[nodiscard]] std::vector<MenuRow> statusMenuRows(const FleetPicture& picture);

} // namespace varnhold
