#include "settings/bot_sheets.h"

#include "base/unicode.h"
#include "settings/bot_editing.h"

namespace varnhold {

namespace {

std::string headingOf(const BotConfig& bot) {
    return bot.icon + " " + bot.title;
}

void close(ModelSelectorView& view, std::optional<BotConfig> SettingsFields::*sheet) {
    (view.*sheet).reset();
    view.changed();
}

} // namespace

bool BotTokenSheet::canSave() const {
    return !unicode::trimmedOfBlanks(bot.token).empty();
}

std::string BotTokenSheet::heading() const {
    return headingOf(bot);
}

std::string BotTokenSheet::tokenLabel() const {
    return std::string(rawValue(bot.service)) + " Token";
}

std::string BotTokenSheet::tokenPrompt() const {
    return bot.service == BotService::telegram ? "digits:letters-and-dashes"
                                               : "xoxb-… or an Incoming Webhook URL";
}

std::string BotTokenSheet::help() const {
    if (bot.service == BotService::telegram) {
        return "Get a token from @BotFather on Telegram. It is made of digits, a colon, then "
               "letters and dashes.";
    }
    return "Use a Slack Bot User OAuth token (starts with xoxb-) or Incoming Webhook URL.";
}

std::string BotPromptEditor::heading() const {
    return headingOf(bot);
}

std::optional<BotTokenSheet> tokenSheet(ModelSelectorView& view) {
    if (!view.tokenSheetBot) {
        return std::nullopt;
    }
    return BotTokenSheet{.bot = *view.tokenSheetBot,
                         .onSave =
                             [&view](const BotConfig& copy) {
                                 if (replaceBot(view, copy)) {
                                     view.save();
                                     view.save(); // a token is written twice
                                 }
                                 close(view, &SettingsFields::tokenSheetBot);
                             },
                         .onCancel = [&view] { close(view, &SettingsFields::tokenSheetBot); }};
}

std::optional<BotPromptEditor> promptEditor(ModelSelectorView& view) {
    if (!view.editingBot) {
        return std::nullopt;
    }
    return BotPromptEditor{.bot = *view.editingBot,
                           .onSave =
                               [&view](const BotConfig& copy) {
                                   if (replaceBot(view, copy)) {
                                       view.save();
                                   }
                                   close(view, &SettingsFields::editingBot);
                               },
                           .onCancel = [&view] { close(view, &SettingsFields::editingBot); }};
}

} // namespace varnhold
