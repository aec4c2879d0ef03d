#include "settings/placement_checks.h"

#include "base/unicode.h"
#include "records/providers.h"
#include "settings/chain_sections.h"

namespace varnhold {

namespace {

constexpr const char* wrongChain =
    "Cerebras models are thinking/reasoning only — they cannot execute tool calls or process "
    "media. Place them in the Architect or Governor chain only.";

bool isConnected(const SettingsFields& settings, const Provider& provider) {
    if (!provider.hasMethod() || settings.*provider.chosenMethod == AuthMethod::apiKey) {
        return !(settings.*provider.typedKey).empty();
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
    // An id with a tilde names a model that is reached at its maker, whoever is given as provider.
    const Provider* maker = item.id.starts_with('~') ? findMaker(item.id) : nullptr;
    return maker == nullptr ? providerKeyOf(item) : std::string(maker->key);
}

bool checkAuthFor(const SettingsFields& settings, const AIModelItem& item) {
    const Provider* named = findProvider(providerOf(item));
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
