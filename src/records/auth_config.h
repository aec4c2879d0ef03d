#pragma once

#include <array>
#include <optional>
#include <string>

// The values by which the user signs in to the AI providers, as the file has them and as the
// settings window does. Plain data; any thread.
namespace varnhold {

enum class AuthMethod { oauth, apiKey };

inline constexpr std::array allAuthMethods{AuthMethod::oauth, AuthMethod::apiKey};

// A method is the raw text as the file has it: an unknown one doesn't spoil the rest.
struct AuthConfig {
    std::string anthropicMethod;
    std::string anthropicKey;
    std::string googleMethod;
    std::string googleKey;
    std::string openaiMethod;
    std::string openaiKey;
    std::string mistralMethod;
    std::string mistralKey;
    std::string qwenMethod;
    std::string qwenKey;
    std::string deepseekMethod;
    std::string deepseekKey;
    std::string openrouterKey;
    std::optional<std::string> cerebrasKey = std::nullopt;

    bool operator==(const AuthConfig&) const = default;
};

// The same values as they are chosen and typed in the settings window, each with its starting
// value.
struct SignIn {
    AuthMethod anthropicMethod = AuthMethod::oauth, googleMethod = AuthMethod::oauth;
    AuthMethod openaiMethod = AuthMethod::apiKey, mistralMethod = AuthMethod::apiKey;
    AuthMethod qwenMethod = AuthMethod::apiKey, deepseekMethod = AuthMethod::apiKey;
    std::string anthropicKey, googleKey, openaiKey, mistralKey, qwenKey, deepseekKey, openrouterKey,
        cerebrasKey;
};

} // namespace varnhold
