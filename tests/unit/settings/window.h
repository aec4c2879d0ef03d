#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "settings/bot_editing.h"
#include "settings/bot_row.h"
#include "unit/settings/settings_home.h"

namespace varnhold::testing {

// Of the bot that most tests are about.
inline constexpr const char* opsLabel = "com.ostrelleai.ops.telegramd";

// An open settings window with a fleet: the built-in governor and whoever a test adds.
struct Window : SettingsHome {
    Window() { open(); }

    BotConfig& add(const BotConfig& record) { return view->userBots.emplace_back(record); }

    // The row of the bot with this label.
    [[nodiscard]] BotRow row(const std::string& label) {
        std::vector<BotRow> rows = botRows(*view);
        const auto found = std::find_if(rows.begin(), rows.end(), [&](const BotRow& each) {
            return each.bot.launchdLabel == label;
        });
        return found == rows.end() ? BotRow{} : *found;
    }

    [[nodiscard]] FleetContext context() { return {platform.interfaces, constants}; }
};

} // namespace varnhold::testing
