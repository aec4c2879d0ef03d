#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "settings/settings_fields.h"
#include "settings/target_list.h"

// The lists of models that bots are served from, chains and groups alike, and who in them can
// answer. Pure reading of the state; any thread.
namespace varnhold::doctor {

struct ModelStack {
    std::string name;                // "Coding chain", "group Launch Crew"
    std::string key;                 // a chain's key in files; the name of a group
    std::optional<TargetList> chain; // none for a group
    const std::vector<AIModelItem>* models = nullptr;
    std::vector<std::string> labels; // of the bots, as the files have them
    EffortLevel effort = EffortLevel::off;
    double contextTokens = 0;
};

// The six chains in the order of the files, then the groups in theirs. Valid as long as the fields.
[[nodiscard]] std::vector<ModelStack> stacksOf(const SettingsFields& fields);

// Whether the model's provider is connected and the model can serve in this place, by the rules
// that guard what is dropped there.
[[nodiscard]] bool canAnswer(const SettingsFields& fields, const ModelStack& stack,
                             const AIModelItem& model);

// The first from the top that can; null if there is none. `without`: a provider that doesn't count.
[[nodiscard]] const AIModelItem* whoAnswers(const SettingsFields& fields, const ModelStack& stack,
                                            std::string_view without = {});

// Why a provider isn't connected: "its key is empty", "~/.claude.json isn't there".
[[nodiscard]] std::string whyNotConnected(const SettingsFields& fields,
                                          const std::string& provider);

// A provider by any name that people use: "anthropic" is "claude". As it is if nobody knows it.
[[nodiscard]] std::string providerNamed(std::string_view name);

// "Anthropic", "OpenRouter"; as it is if it isn't known.
[[nodiscard]] std::string nameOfProvider(const std::string& provider);

} // namespace varnhold::doctor
