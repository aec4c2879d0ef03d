#pragma once

#include <optional>
#include <string>
#include <vector>

#include "records/bots.h"
#include "settings/settings_state.h"

// What the bot column does to the list of bots.
//
// Every edit changes the list and saves; none touches the service manager. A bot is found by its
// label, the first of several with one label; one that has gone from the list is passed over. Main
// thread.
//
// Adding, pausing and removing are methods of the record. addBot() starts no agent, and asks for
// names; togglePauseBot() changes the stored choice alone; removeBot() takes every record with the
// bot's label, unless the bot belongs to the system. fetchNames() replaces the list by a copy taken
// when it was called, whatever was edited meanwhile.
namespace varnhold {

// Shows the bot's prompt in the panel. Where that changes the panel's text, it counts as an edit of
// it, so a bot without a prompt then has an empty one, and everything is saved.
void selectBot(ModelSelectorView& view, const BotConfig& bot);

// The panel's text was edited: stored with the selected bot.
void setSelectedBotPrompt(ModelSelectorView& view, const std::string& text);

// What stands beside the panel's title. None without a selected bot; otherwise the bot as it was
// when it was selected.
[[nodiscard]] std::optional<std::string> promptPanelSubject(const SettingsFields& view);

void switchService(ModelSelectorView& view, const BotConfig& bot, BotService service);

void toggleKeepalive(ModelSelectorView& view, const BotConfig& bot);
// False for an empty list.
[[nodiscard]] bool allKeptAlive(const std::vector<BotConfig>& bots);
// All on, unless all are on already: then all off.
void toggleKeepaliveForAll(ModelSelectorView& view);

// The button of a bot's row, or the one over the column.
struct KeepaliveSwitch {
    bool isOn = false;
    std::string symbol;
    std::string help;
};
[[nodiscard]] KeepaliveSwitch keepaliveSwitch(const BotConfig& bot);
[[nodiscard]] KeepaliveSwitch keepaliveSwitchForAll(const std::vector<BotConfig>& bots);

// Puts a sheet's copy in the place of the record with its label. True if there is one.
bool replaceBot(ModelSelectorView& view, const BotConfig& copy);

} // namespace varnhold
