#include "settings/sign_in.h"

#include "records/providers.h"
#include "shell/daemon_code.h"

namespace varnhold {

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
        if (const Provider* provider = findProvider(auth.id)) {
            rows.push_back({.auth = auth,
                            .method = view.*provider->chosenMethod,
                            .apiKey = view.*provider->typedKey,
                            .onScout = [&view](const auto& key) { view.runScout(key); }});
        }
    }
    return rows;
}

std::vector<KeyRow> keyRows(ModelSelectorView& view) {
    std::vector<KeyRow> rows;
    for (const Provider& provider : providers()) {
        if (!provider.hasMethod()) {
            rows.push_back({.name = std::string(provider.name),
                            .tag = std::string(provider.tag),
                            .apiKey = view.*provider.typedKey});
        }
    }
    return rows;
}

void ModelSelectorView::runScout(const std::optional<std::string>& key) {
    if (key && !startSignIn(platform_, *key)) {
        alertMsg = noTerminalAlert;
        showAlert = true;
        changed();
    }
}

} // namespace varnhold
