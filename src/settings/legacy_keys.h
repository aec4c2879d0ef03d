#pragma once

#include <array>

#include "records/auth.h"

namespace varnhold {

// A sign-in value and the key under which the user defaults keep it.
struct LegacyKey {
    const char* key;
    std::string AuthConfig::*field;
};

// In the order of writing; after them comes the one optional value.
inline constexpr std::array<LegacyKey, 13> legacyKeys{{
    {"auth_method_anthropic", &AuthConfig::anthropicMethod},
    {"api_key_anthropic", &AuthConfig::anthropicKey},
    {"auth_method_google", &AuthConfig::googleMethod},
    {"api_key_google", &AuthConfig::googleKey},
    {"auth_method_openai", &AuthConfig::openaiMethod},
    {"api_key_openai", &AuthConfig::openaiKey},
    {"auth_method_mistral", &AuthConfig::mistralMethod},
    {"api_key_mistral", &AuthConfig::mistralKey},
    {"auth_method_qwen", &AuthConfig::qwenMethod},
    {"api_key_qwen", &AuthConfig::qwenKey},
    {"auth_method_deepseek", &AuthConfig::deepseekMethod},
    {"api_key_deepseek", &AuthConfig::deepseekKey},
    {"api_key_openrouter", &AuthConfig::openrouterKey},
}};

inline constexpr const char* legacyCerebrasKey = "api_key_cerebras";

} // namespace varnhold
