#include "settings/placement_checks.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "base/unicode.h"
#include "settings/chain_sections.h"

namespace varnhold {

namespace {

constexpr const char* wrongChain =
    "Cerebras models are thinking/reasoning only — they cannot execute tool calls or process "
    "media. Place them in the Architect or Governor chain only.";

// A provider to whom one can sign in either way.
struct Provider {
    std::string_view key; // in a model and among the sign-in statuses
    std::array<std::string_view, 2> words;
    AuthMethod SettingsFields::*method;
    std::string SettingsFields::*apiKey;
};

// In the order in which the words are looked for: the first provider named in an id has it.
constexpr std::array<Provider, 6> providers{{
    {"claude",
     {"anthropic", "claude"},
     &SettingsFields::anthropicMethod,
     &SettingsFields::anthropicKey},
    {"gemini", {"google", "gemini"}, &SettingsFields::googleMethod, &SettingsFields::googleKey},
    {"openai", {"openai", "gpt"}, &SettingsFields::openaiMethod, &SettingsFields::openaiKey},
    {"mistral",
     {"mistral", "mistral"},
     &SettingsFields::mistralMethod,
     &SettingsFields::mistralKey},
    {"qwen", {"qwen", "qwen"}, &SettingsFields::qwenMethod, &SettingsFields::qwenKey},
    {"deepseek",
     {"deepseek", "deepseek"},
     &SettingsFields::deepseekMethod,
     &SettingsFields::deepseekKey},
}};

template <class Matches>
const Provider* findProvider(Matches matches) {
    const auto* const found = std::find_if(providers.begin(), providers.end(), matches);
    return found == providers.end() ? nullptr : found;
}

// An id with a tilde names a model that is reached at its maker, whoever is given as provider.
const Provider* makerIn(std::string_view id) {
    if (!id.starts_with('~')) {
        return nullptr;
    }
    return findProvider([id](const Provider& provider) {
        return std::any_of(
            provider.words.begin(), provider.words.end(),
            [id](std::string_view word) { return id.find(word) != std::string_view::npos; });
    });
}

bool isConnected(const SettingsFields& settings, const Provider& provider) {
    if (settings.*provider.method == AuthMethod::apiKey) {
        return !(settings.*provider.apiKey).empty();
    }
    const auto status = settings.oauthStatuses.find(std::string(provider.key));
    return status != settings.oauthStatuses.end() && status->second;
}

std::string providerKeyOf(const AIModelItem& item) {
    return item.provider_key.value_or(item.type == "openrouter" ? "openrouter" : "unknown");
}

bool isCerebras(const AIModelItem& item) {
    return unicode::toLower(item.family) == "cerebras" ||
           (item.provider_key && unicode::toLower(*item.provider_key) == "cerebras");
}

} // namespace

std::string providerOf(const AIModelItem& item) {
    if (item.provider_key == "local" || item.type == "local") {
        return "local";
    }
    const Provider* maker = makerIn(item.id);
    return maker == nullptr ? providerKeyOf(item) : std::string(maker->key);
}

bool checkAuthFor(const SettingsFields& settings, const AIModelItem& item) {
    const std::string key = providerOf(item);
    if (key == "openrouter") {
        return !settings.openrouterKey.empty();
    }
    if (key == "cerebras") {
        return !settings.cerebrasKey.empty();
    }
    const Provider* named =
        findProvider([&key](const Provider& provider) { return provider.key == key; });
    return named == nullptr || isConnected(settings, *named);
}

std::optional<std::string> placementRefusal(const SettingsFields& settings, const AIModelItem& item,
                                            TargetList list) {
    if (!checkAuthFor(settings, item)) {
        return "Auth required for " + item.family + ".";
    }
    if (isCerebras(item) && !chainSection(list).takesCerebras) {
        return wrongChain;
    }
    return std::nullopt;
}

} // namespace varnhold
