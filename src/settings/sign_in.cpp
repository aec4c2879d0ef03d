#include "settings/sign_in.h"

#include <array>

#include "shell/daemon_code.h"

namespace varnhold {

namespace {

struct SignInParts {
    const char* provider;
    AuthMethod SettingsFields::*method;
    std::string SettingsFields::*key;
};

constexpr std::array<SignInParts, 5> signInParts{{
    {"claude", &SettingsFields::anthropicMethod, &SettingsFields::anthropicKey},
    {"gemini", &SettingsFields::googleMethod, &SettingsFields::googleKey},
    {"openai", &SettingsFields::openaiMethod, &SettingsFields::openaiKey},
    {"qwen", &SettingsFields::qwenMethod, &SettingsFields::qwenKey},
    {"deepseek", &SettingsFields::deepseekMethod, &SettingsFields::deepseekKey},
}};

} // namespace

bool startSignIn(platform::Platform& platform, const std::string& provider) {
    const auto request = platform.system.terminalRequest(loginScript(platform.system), provider);
    if (request) {
        platform.processes.start(*request);
    }
    return request.has_value();
}

bool AuthRow::isAuthorized() const {
    return method == AuthMethod::oauth ? auth.oauthStatus : !apiKey.empty();
}

std::string_view AuthRow::tag() const {
    return auth.id == "openrouter" ? "(no tool support)" : "";
}

std::vector<AuthRow> authRows(ModelSelectorView& view) {
    std::vector<AuthRow> rows;
    for (const ProviderAuth& auth : providerAuths(view.oauthStatuses)) {
        for (const SignInParts& parts : signInParts) {
            if (auth.id == parts.provider) {
                rows.push_back({.auth = auth,
                                .method = view.*parts.method,
                                .apiKey = view.*parts.key,
                                .onScout = [&view](const auto& key) { view.runScout(key); }});
            }
        }
    }
    return rows;
}

std::vector<KeyRow> keyRows(ModelSelectorView& view) {
    return {{.name = "OpenRouter", .tag = "(no tools)", .apiKey = view.openrouterKey},
            {.name = "Cerebras", .tag = "(governor)", .apiKey = view.cerebrasKey}};
}

void ModelSelectorView::runScout(const std::optional<std::string>& key) {
    if (key && !startSignIn(platform_, *key)) {
        alertMsg = noTerminalAlert;
        showAlert = true;
        changed();
    }
}

} // namespace varnhold
