#include "records/auth.h"

#include <utility>

#include "base/files.h"
#include "base/json.h"
#include "records/providers.h"
#include "records/raw_values.h"

namespace varnhold {

namespace {

Result<AuthConfig> decodeConfig(const json::Value& value) {
    json::ObjectReader in(value);
    AuthConfig config;
    for (const StoredValue& each : storedValues()) {
        if (each.member != nullptr) {
            config.*each.member = in.string(each.name);
        } else {
            config.*each.optionalMember = in.optionalString(each.name);
        }
    }
    return in.finish(std::move(config));
}

} // namespace

std::string_view rawValue(AuthMethod method) {
    return method == AuthMethod::oauth ? "Login (OAuth)" : "API Key";
}

std::optional<AuthMethod> authMethodFromRawValue(std::string_view raw) {
    return caseOf(allAuthMethods, raw);
}

SignIn signInFrom(const AuthConfig& config) {
    SignIn signIn;
    for (const Provider& provider : providers()) {
        if (provider.hasMethod()) {
            AuthMethod& method = signIn.*provider.chosenMethod;
            const std::string raw = provider.method.of(config).value_or("");
            method = authMethodFromRawValue(raw).value_or(method);
        }
        signIn.*provider.typedKey = provider.apiKey.of(config).value_or("");
    }
    return signIn;
}

AuthConfig authConfigOf(const SignIn& signIn) {
    AuthConfig config;
    for (const Provider& provider : providers()) {
        if (provider.hasMethod()) {
            provider.method.set(config, std::string(rawValue(signIn.*provider.chosenMethod)));
        }
        provider.apiKey.set(config, signIn.*provider.typedKey);
    }
    return config;
}

Result<AuthConfig> decodeAuthConfig(std::string_view text) {
    return json::parse(text).and_then(decodeConfig);
}

std::string encodeAuthConfig(const AuthConfig& config) {
    json::Value out = json::Value::object();
    for (const StoredValue& each : storedValues()) {
        if (auto value = each.of(config)) {
            out[each.name] = *std::move(value);
        }
    }
    return json::compact(out);
}

Result<AuthConfig> readAuthConfig(const std::string& path) {
    return files::read(path).and_then(decodeAuthConfig);
}

std::vector<ProviderAuth> providerAuths(const std::map<std::string, bool>& oauthStatuses) {
    std::vector<ProviderAuth> rows;
    for (const Provider& provider : providers()) {
        if (provider.login.hasRow) {
            const std::string key(provider.key);
            const auto status = oauthStatuses.find(key);
            rows.push_back({.id = key,
                            .name = std::string(provider.name),
                            .oauthStatus = status != oauthStatuses.end() && status->second,
                            .scoutKey = key});
        }
    }
    return rows;
}

} // namespace varnhold
