#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "lifecycle/fleet_context.h"
#include "records/bots.h"
#include "settings/settings_state.h"

// One row of the bot column: what it shows and what its controls do. Whether its agent is alive is
// watched by an OnlineCheck of the row's own. Main thread; the settings record must outlive rows.
namespace varnhold {

struct BotRow {
    BotConfig bot;
    bool isSelected = false;
    std::function<void()> onSelect;
    std::function<void(const BotConfig&)> onPause;
    std::function<void(const BotConfig&)> onEdit; // no control of the row leads here
    std::function<void(const BotConfig&)> onRemove;
    std::function<void(const BotConfig&)> onConnect;
    std::function<void(const BotConfig&, BotService)> onSwitchService;
    std::function<void(const BotConfig&)> onToggleKeepalive = [](const BotConfig&) {};
};

// A row for each bot, in order, with callbacks that act on the record.
[[nodiscard]] std::vector<BotRow> botRows(ModelSelectorView& view);

enum class BotPresence { paused, online, offline };

[[nodiscard]] BotPresence presenceOf(const BotConfig& bot, bool isOnline);
// Help text of the dot.
[[nodiscard]] std::string_view label(BotPresence presence);

// A bot without a token has a button where others show their service.
[[nodiscard]] bool offersConnection(const BotConfig& bot);

struct BotMenuItem {
    enum class Kind { action, divider, section };

    Kind kind = Kind::action;
    std::string title;
    std::string symbol;
    bool destructive = false;
    std::function<void()> perform;
};

// The row's menu, in order. Restart and Stop reach the service manager at once.
[[nodiscard]] std::vector<BotMenuItem> botMenu(const BotRow& row, const FleetContext& context);

// Hue of the bot with this role, as its bar has it. Reads the bots file on each call.
[[nodiscard]] double botColorHue(const Constants& constants, const std::string& role);
// The same of a whole fleet at once: hues of `bots`, in their order, after one reading of the file.
[[nodiscard]] std::vector<double> botColorHues(const Constants& constants,
                                               const std::vector<BotConfig>& bots);

// Each from 0 to 1.
struct BotColor {
    double hue = 0;
    double saturation = 0;
    double brightness = 0;

    bool operator==(const BotColor&) const = default;
};

[[nodiscard]] BotColor botDisplayColor(const Constants& constants, const std::string& role);
[[nodiscard]] BotColor botDisplayColor(double hue);

} // namespace varnhold
