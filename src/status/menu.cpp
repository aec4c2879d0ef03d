#include "status/menu.h"

#include <algorithm>

#include "base/text.h"
#include "base/unicode.h"
#include "records/providers.h"
#include "status/fleet_picture.h"

namespace varnhold {

namespace {

// Of names that come from files. To find out how much of a longer one has room takes longer than
// anybody waits for a menu.
constexpr std::size_t longestTitle = 1000; // bytes
constexpr std::size_t mostAlerts = 100;    // a person has far fewer accounts

MenuRow item(std::string_view title, std::string key, MenuAction action, std::string value = {}) {
    return {.kind = MenuRow::Kind::item,
            .title = text::beginning(title, longestTitle),
            .key = std::move(key),
            .action = action,
            .value = std::move(value)};
}

MenuRow header(std::string_view title) {
    return {.kind = MenuRow::Kind::header, .title = text::beginning(title, longestTitle)};
}

MenuRow alertRow(const ReauthAlert& alert) {
    std::string title = "⚠️ Re-login to " + providerDisplayName(alert.provider);
    if (!alert.since.empty()) {
        title += " — failing since " + alert.since;
    }
    MenuRow row = item(title, "", MenuAction::reloginProvider, alert.provider);
    row.red = true;
    return row;
}

MenuRow botRow(const BotConfig& bot, const FleetPicture& picture) {
    const auto model = picture.models.find(bot.role);
    std::string title(indicator(statusOf(picture.statuses, bot.launchdLabel)));
    title += " " + bot.icon + " " + bot.title + " (" +
             (model == picture.models.end() ? "Idle" : model->second) + ")";
    return item(title, "", MenuAction::toggleDaemon, bot.launchdLabel);
}

void appendBots(std::vector<MenuRow>& rows, const FleetPicture& picture) {
    if (!picture.bots.empty()) {
        rows.push_back(header("── Bots ──"));
    }
    for (const BotConfig& bot : picture.bots) {
        if (!bot.paused()) {
            rows.push_back(botRow(bot, picture));
        }
    }
}

void appendGroup(std::vector<MenuRow>& rows, const MenuGroup& group) {
    if (group.models.empty()) {
        return;
    }
    rows.push_back({});
    rows.push_back(header("── " + group.name + " ──"));
    for (const std::string& model : group.models) {
        rows.push_back(header("  " + model));
    }
}

void appendAlerts(std::vector<MenuRow>& rows, const std::vector<ReauthAlert>& alerts) {
    const std::size_t shown = std::min(alerts.size(), mostAlerts);
    for (std::size_t i = 0; i < shown; ++i) {
        rows.push_back(alertRow(alerts[i]));
    }
    if (shown < alerts.size()) {
        rows.push_back(header("… and " + std::to_string(alerts.size() - shown) + " more"));
    }
    if (!alerts.empty()) {
        rows.push_back({});
    }
}

} // namespace

std::string providerDisplayName(std::string_view provider) {
    const std::string low = unicode::toLower(provider);
    if (low == "mlx") {
        return "MLX (local)";
    }
    for (const Provider& each : providers()) {
        const bool isIt = each.key == low || unicode::toLower(each.name) == low ||
                          (!low.empty() && each.tool == low);
        if (isIt && !each.menuName.empty()) {
            return std::string(each.menuName);
        }
    }
    return unicode::capitalized(provider);
}

std::vector<MenuRow> statusMenuRows(const FleetPicture& picture) {
    std::vector<MenuRow> rows;
    rows.push_back(item("⚙️ Preferences...", ",", MenuAction::openModelSelector));
    rows.push_back({});
    appendAlerts(rows, picture.alerts);
    rows.push_back(item("🟢 Start All Agents", "s", MenuAction::startAllAgents));
    rows.push_back(item("🔄 Restart All Agents", "r", MenuAction::restartAllAgents));
    rows.push_back({});
    appendBots(rows, picture);
    for (const MenuGroup& group : picture.groups) {
        appendGroup(rows, group);
    }
    rows.push_back({});
    rows.push_back(item("Quit", "q", MenuAction::terminate));
    return rows;
}

} // namespace varnhold
