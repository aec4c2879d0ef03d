#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "records/auth_config.h"

// How the user signs in to each AI provider, and auth_config.json, which keeps it for the daemons.
//
// Keys stand in the file in clear text, with the permissions that any file gets. Values only; any
// thread. A decoder refuses the whole file for one bad field.
namespace varnhold {

// "Login (OAuth)" or "API Key", to the letter, in both directions; also the text of the picker.
[[nodiscard]] std::string_view rawValue(AuthMethod method);
[[nodiscard]] std::optional<AuthMethod> authMethodFromRawValue(std::string_view raw);

// An unknown method becomes the provider's starting value, an absent key the empty one; and back,
// with every key present.
[[nodiscard]] SignIn signInFrom(const AuthConfig& config);
[[nodiscard]] AuthConfig authConfigOf(const SignIn& signIn);

[[nodiscard]] Result<AuthConfig> decodeAuthConfig(std::string_view text);
[[nodiscard]] std::string encodeAuthConfig(const AuthConfig& config);
[[nodiscard]] Result<AuthConfig> readAuthConfig(const std::string& path);

// One row of the sign-in column, made afresh each time it is drawn and never stored.
struct ProviderAuth {
    std::string id;
    std::string name;
    bool oauthStatus = false;
    std::optional<std::string> scoutKey = std::nullopt; // what the login script is told

    bool operator==(const ProviderAuth&) const = default;
};

// The five rows in their order. A provider without an entry in `oauthStatuses` isn't signed in.
[[nodiscard]] std::vector<ProviderAuth>
providerAuths(const std::map<std::string, bool>& oauthStatuses);

} // namespace varnhold
