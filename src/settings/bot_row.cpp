#include "settings/bot_row.h"

#include <algorithm>

#include "lifecycle/service_control.h"
#include "settings/bot_editing.h"
#include "status/bars.h"

namespace varnhold {

namespace {

using Kind = BotMenuItem::Kind;

BotRow rowOf(ModelSelectorView& view, const BotConfig& bot) {
    return {.bot = bot,
            .isSelected = view.selectedBot && view.selectedBot->id() == bot.id(),
            .onSelect = [&view, bot] { selectBot(view, bot); },
            .onPause = [&view](const BotConfig& each) { view.togglePauseBot(each); },
            .onEdit =
                [&view](const BotConfig& each) {
                    view.editingBot = each;
                    view.changed();
                },
            .onRemove = [&view](const BotConfig& each) { view.removeBot(each); },
            .onConnect =
                [&view](const BotConfig& each) {
                    view.tokenSheetBot = each;
                    view.changed();
                },
            .onSwitchService = [&view](const BotConfig& each,
                                       BotService service) { switchService(view, each, service); },
            .onToggleKeepalive = [&view](const BotConfig& each) { toggleKeepalive(view, each); }};
}

void appendActions(std::vector<BotMenuItem>& menu, const BotRow& row, const FleetContext& context) {
    const BotConfig& bot = row.bot;
    menu.push_back({.title = bot.paused() ? "Resume" : "Pause",
                    .symbol = bot.paused() ? "play.fill" : "pause.fill",
                    .perform = [bot, act = row.onPause] { act(bot); }});
    menu.push_back({.title = "Restart", .symbol = "arrow.clockwise", .perform = [bot, context] {
                        restartDaemon(context, bot.launchdLabel);
                    }});
    menu.push_back({.title = "Stop", .symbol = "stop.fill", .perform = [bot, context] {
                        stopDaemon(context, bot.launchdLabel);
                    }});
    menu.push_back({.title = offersConnection(bot) ? "Set Token…" : "Update Token…",
                    .symbol = "key.fill",
                    .perform = [bot, act = row.onConnect] { act(bot); }});
}

void appendServices(std::vector<BotMenuItem>& menu, const BotRow& row) {
    const BotConfig& bot = row.bot;
    menu.push_back({.kind = Kind::section, .title = "Connection Service"});
    for (const BotService service : allBotServices) {
        menu.push_back(
            {.title = std::string(rawValue(service)),
             .symbol = service == bot.service ? "checkmark" : "",
             .perform = [bot, service, act = row.onSwitchService] { act(bot, service); }});
    }
}

double hueAmong(const std::vector<std::string>& roles, const std::string& role, double rainbowEnd) {
    const auto found = std::find(roles.begin(), roles.end(), role);
    const std::size_t index =
        found == roles.end() ? 0 : static_cast<std::size_t>(found - roles.begin());
    return botHueForIndex(index, std::max<std::size_t>(roles.size(), 1), rainbowEnd);
}

} // namespace

std::vector<BotRow> botRows(ModelSelectorView& view) {
    std::vector<BotRow> rows;
    for (const BotConfig& bot : view.userBots) {
        rows.push_back(rowOf(view, bot));
    }
    return rows;
}

BotPresence presenceOf(const BotConfig& bot, bool isOnline) {
    if (bot.paused()) {
        return BotPresence::paused;
    }
    return isOnline ? BotPresence::online : BotPresence::offline;
}

std::string_view label(BotPresence presence) {
    switch (presence) {
    case BotPresence::paused:
        return "Paused";
    case BotPresence::online:
        return "Online";
    case BotPresence::offline:
        break;
    }
    return "Offline";
}

bool offersConnection(const BotConfig& bot) {
    return bot.token.empty();
}

std::vector<BotMenuItem> botMenu(const BotRow& row, const FleetContext& context) {
    std::vector<BotMenuItem> menu;
    appendActions(menu, row, context);
    menu.push_back({.kind = Kind::divider});
    appendServices(menu, row);
    if (!row.bot.isSystem.value_or(false)) {
        menu.push_back({.kind = Kind::divider});
        menu.push_back({.title = "Delete",
                        .symbol = "trash",
                        .destructive = true,
                        .perform = [bot = row.bot, act = row.onRemove] { act(bot); }});
    }
    return menu;
}

double botColorHue(const Constants& constants, const std::string& role) {
    return hueAmong(botRolesInOrder(constants), role, constants.RAINBOW_END);
}

std::vector<double> botColorHues(const Constants& constants, const std::vector<BotConfig>& bots) {
    const std::vector<std::string> roles = botRolesInOrder(constants);
    std::vector<double> hues;
    hues.reserve(bots.size());
    for (const BotConfig& bot : bots) {
        hues.push_back(hueAmong(roles, bot.role, constants.RAINBOW_END));
    }
    return hues;
}

BotColor botDisplayColor(const Constants& constants, const std::string& role) {
    return botDisplayColor(botColorHue(constants, role));
}

BotColor botDisplayColor(double hue) {
    return {.hue = hue, .saturation = barSaturation, .brightness = barBrightness};
}

} // namespace varnhold
