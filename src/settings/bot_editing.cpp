#include "settings/bot_editing.h"

#include <algorithm>
#include <utility>

#include "settings/telegram_names.h"

namespace varnhold {

namespace {

BotConfig* find(std::vector<BotConfig>& bots, const std::string& id) {
    const auto found = std::find_if(bots.begin(), bots.end(),
                                    [&](const BotConfig& bot) { return bot.id() == id; });
    return found == bots.end() ? nullptr : &*found;
}

KeepaliveSwitch makeSwitch(bool isOn, const char* helpWhenOn, const char* helpWhenOff) {
    return {.isOn = isOn,
            .symbol = isOn ? "bolt.fill" : "bolt.slash",
            .help = isOn ? helpWhenOn : helpWhenOff};
}

} // namespace

void ModelSelectorView::addBot() {
    if (newBotToken.empty() || newBotRole.empty()) {
        alertMsg = "Please fill in both the Role and the Token fields.";
        showAlert = true;
        changed();
        return;
    }
    // The service chosen in the form isn't looked at: every bot begins on Telegram.
    userBots.push_back({.icon = "🤖",
                        .title = "New Bot",
                        .token = std::exchange(newBotToken, {}),
                        .role = newBotRole,
                        .launchdLabel = labelOfRole(newBotRole),
                        .service = BotService::telegram,
                        .prompt = "",
                        .isPaused = false,
                        .isSystem = false});
    newBotRole.clear();
    save();
    fetchNames();
}

void ModelSelectorView::fetchNames() {
    fetchTelegramNames(platform_, userBots, alive_.whileAlive([this](std::vector<BotConfig> bots) {
        userBots = std::move(bots);
        save();
    }));
}

void ModelSelectorView::togglePauseBot(const BotConfig& bot) {
    if (BotConfig* const record = find(userBots, bot.id())) {
        record->isPaused = !record->paused();
        save();
    }
}

void ModelSelectorView::removeBot(const BotConfig& bot) {
    if (bot.isSystem.value_or(false)) {
        return;
    }
    // The bot handed in may be one of the list's own.
    std::erase_if(userBots, [label = bot.launchdLabel](const BotConfig& each) {
        return each.launchdLabel == label;
    });
    save();
}

void selectBot(ModelSelectorView& view, const BotConfig& bot) {
    // First the bot, then the text: otherwise the text would be stored with the bot before.
    view.selectedBot = bot;
    view.changed();
    setSelectedBotPrompt(view, view.selectedBot->prompt.value_or(""));
}

void setSelectedBotPrompt(ModelSelectorView& view, const std::string& text) {
    if (view.selectedBotPrompt == text) {
        return;
    }
    view.selectedBotPrompt = text;
    BotConfig* const record =
        view.selectedBot ? find(view.userBots, view.selectedBot->id()) : nullptr;
    if (record == nullptr) {
        view.changed();
        return;
    }
    record->prompt = text;
    view.save();
}

std::optional<std::string> promptPanelSubject(const SettingsFields& view) {
    if (!view.selectedBot) {
        return std::nullopt;
    }
    return "— " + view.selectedBot->icon + " " + view.selectedBot->title;
}

void switchService(ModelSelectorView& view, const BotConfig& bot, BotService service) {
    if (BotConfig* const record = find(view.userBots, bot.id())) {
        record->service = service;
        view.save();
    }
}

void toggleKeepalive(ModelSelectorView& view, const BotConfig& bot) {
    if (BotConfig* const record = find(view.userBots, bot.id())) {
        record->keepaliveEnabled = !record->keepaliveOn();
        view.save();
    }
}

bool allKeptAlive(const std::vector<BotConfig>& bots) {
    return !bots.empty() && std::all_of(bots.begin(), bots.end(),
                                        [](const BotConfig& bot) { return bot.keepaliveOn(); });
}

void toggleKeepaliveForAll(ModelSelectorView& view) {
    const bool wanted = !allKeptAlive(view.userBots);
    for (BotConfig& bot : view.userBots) {
        bot.keepaliveEnabled = wanted;
    }
    view.save();
}

KeepaliveSwitch keepaliveSwitch(const BotConfig& bot) {
    return makeSwitch(bot.keepaliveOn(),
                      "Keepalive ON — cache kept warm (uses tokens). Click to disable.",
                      "Keepalive OFF — saves tokens, cache may go cold. Click to enable.");
}

KeepaliveSwitch keepaliveSwitchForAll(const std::vector<BotConfig>& bots) {
    return makeSwitch(allKeptAlive(bots),
                      "Keepalive ON for all bots — click to disable for all (saves tokens).",
                      "Keepalive OFF for some/all bots — click to enable for all.");
}

bool replaceBot(ModelSelectorView& view, const BotConfig& copy) {
    BotConfig* const record = find(view.userBots, copy.id());
    if (record != nullptr) {
        *record = copy;
    }
    return record != nullptr;
}

} // namespace varnhold
