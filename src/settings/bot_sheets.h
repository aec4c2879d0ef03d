#pragma once

#include <functional>
#include <optional>
#include <string>

#include "records/bots.h"
#include "settings/settings_state.h"

// The two sheets that edit one bot. Each works on a copy of the record, so that giving up loses
// nothing. Main thread; the settings record must outlive them.
namespace varnhold {

struct BotTokenSheet {
    BotConfig bot; // the working copy
    std::function<void(const BotConfig& bot)> onSave;
    std::function<void()> onCancel;

    // A token of blanks alone is none. What is saved is the text as typed.
    [[nodiscard]] bool canSave() const;
    [[nodiscard]] std::string heading() const;
    [[nodiscard]] std::string tokenLabel() const;
    // The pattern of a token, in the empty field.
    [[nodiscard]] std::string tokenPrompt() const;
    [[nodiscard]] std::string help() const;
};

struct BotPromptEditor {
    BotConfig bot; // the working copy
    std::function<void(const BotConfig& bot)> onSave;
    std::function<void()> onCancel;

    [[nodiscard]] std::string heading() const;
    [[nodiscard]] std::string text() const { return bot.prompt.value_or(""); }
    void setText(const std::string& text) { bot.prompt = text; }
};

// The sheet that stands over the window. None while there isn't one.
[[nodiscard]] std::optional<BotTokenSheet> tokenSheet(ModelSelectorView& view);
[[nodiscard]] std::optional<BotPromptEditor> promptEditor(ModelSelectorView& view);

} // namespace varnhold
