#include "records/auth.h"

#include <algorithm>
#include <utility>

#include "base/json.h"

namespace varnhold {

namespace {

constexpr std::array<std::pair<const char*, const char*>, 5> providersShown{{
    {"claude", "Anthropic"},
    {"gemini", "Google"},
    {"openai", "OpenAI"},
    {"qwen", "Qwen"},
    {"deepseek", "DeepSeek"},
}};

Result<AuthConfig> decodeConfig(const json::Value& value) {
    json::ObjectReader in(value);
    AuthConfig config{.anthropicMethod = in.string("anthropicMethod"),
                      .anthropicKey = in.string("anthropicKey"),
                      .googleMethod = in.string("googleMethod"),
                      .googleKey = in.string("googleKey"),
                      .openaiMethod = in.string("openaiMethod"),
                      .openaiKey = in.string("openaiKey"),
                      .mistralMethod = in.string("mistralMethod"),
                      .mistralKey = in.string("mistralKey"),
                      .qwenMethod = in.string("qwenMethod"),
                      .qwenKey = in.string("qwenKey"),
                      .deepseekMethod = in.string("deepseekMethod"),
                      .deepseekKey = in.string("deepseekKey"),
                      .openrouterKey = in.string("openrouterKey"),
                      .cerebrasKey = in.optionalString("cerebrasKey")};
    return in.finish(std::move(config));
}

} // namespace

std::string_view rawValue(AuthMethod method) {
    return method == AuthMethod::oauth ? "Login (OAuth)" : "API Key";
}

std::optional<AuthMethod> authMethodFromRawValue(std::string_view raw) {
    const auto* const found = std::find_if(allAuthMethods.begin(), allAuthMethods.end(),
                                           [&](AuthMethod each) { return rawValue(each) == raw; });
    return found == allAuthMethods.end() ? std::nullopt : std::optional(*found);
}

Result<AuthConfig> decodeAuthConfig(std::string_view text) {
    return json::parse(text).and_then(decodeConfig);
}

std::string encodeAuthConfig(const AuthConfig& config) {
    json::Value out = json::Value::object();
    out["anthropicMethod"] = config.anthropicMethod;
    out["anthropicKey"] = config.anthropicKey;
    out["googleMethod"] = config.googleMethod;
    out["googleKey"] = config.googleKey;
    out["openaiMethod"] = config.openaiMethod;
    out["openaiKey"] = config.openaiKey;
    out["mistralMethod"] = config.mistralMethod;
    out["mistralKey"] = config.mistralKey;
    out["qwenMethod"] = config.qwenMethod;
    out["qwenKey"] = config.qwenKey;
    out["deepseekMethod"] = config.deepseekMethod;
    out["deepseekKey"] = config.deepseekKey;
    out["openrouterKey"] = config.openrouterKey;
    if (config.cerebrasKey) {
        out["cerebrasKey"] = *config.cerebrasKey;
    }
    return json::compact(out);
}

Result<AuthConfig> readAuthConfig(const std::string& path) {
    return json::parseFile(path).and_then(decodeConfig);
}

std::vector<ProviderAuth> providerAuths(const std::map<std::string, bool>& oauthStatuses) {
    std::vector<ProviderAuth> rows;
    for (const auto& [key, name] : providersShown) {
        const auto status = oauthStatuses.find(key);
        rows.push_back({.id = key,
                        .name = name,
                        .oauthStatus = status != oauthStatuses.end() && status->second,
                        .scoutKey = key});
    }
    return rows;
}

} // namespace varnhold
