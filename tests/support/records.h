#pragma once

#include <concepts>
#include <optional>
#include <string>

#include "records/bots.h"
#include "records/models.h"

// Bots and models on paper: plain ones, of which a test names only what it is about.
//
//   bot("ops", {.isPaused = true})
//   model("llama", {.type = "ollama"})
namespace varnhold::testing {

inline std::string labelOf(const std::string& role) {
    return "com.ostrelleai." + role + ".telegramd";
}

// What may be other than with the plain bot.
struct BotTraits {
    std::string icon = "🤖";
    std::optional<std::string> title = std::nullopt; // else the role
    std::string token{};
    std::optional<std::string> label = std::nullopt; // else the role's
    BotService service = BotService::telegram;
    std::optional<std::string> prompt = std::nullopt;
    std::optional<bool> isPaused = std::nullopt;
    std::optional<bool> isSystem = std::nullopt;
};

inline BotConfig bot(const std::string& role, const BotTraits& traits = {}) {
    return {.icon = traits.icon,
            .title = traits.title.value_or(role),
            .token = traits.token,
            .role = role,
            .launchdLabel = traits.label.value_or(labelOf(role)),
            .service = traits.service,
            .prompt = traits.prompt,
            .isPaused = traits.isPaused,
            .isSystem = traits.isSystem};
}

// The one that comes with the program.
inline BotConfig governorBot() {
    return bot("governor", {.label = "com.ostrelleai.governor", .isSystem = true});
}

// What may be other than with the plain model.
struct ModelTraits {
    std::optional<std::string> uniqueId = std::nullopt;
    std::optional<std::string> name = std::nullopt; // else "Model ID"
    std::string family = "Family";
    std::string color = "blue";
    std::optional<std::string> type = "cli";
    std::optional<std::string> provider_key = std::nullopt;
};

inline AIModelItem model(const std::string& id, const ModelTraits& traits = {}) {
    return {.uniqueId = traits.uniqueId,
            .id = id,
            .name = traits.name.value_or("Model " + id),
            .family = traits.family,
            .color = traits.color,
            .type = traits.type,
            .provider_key = traits.provider_key};
}

// As it stands in a chain or a group, where one model can stand twice.
template <std::convertible_to<std::string> Text> // which no list of traits is
AIModelItem model(const std::string& id, const Text& uniqueId) {
    return model(id, ModelTraits{.uniqueId = uniqueId});
}

} // namespace varnhold::testing
