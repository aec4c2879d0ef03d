#include "records/providers.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace varnhold {

namespace {

constexpr std::array<Provider, providerCount> table{{
    {.key = "claude",
     .name = "Anthropic",
     .menuName = "Claude (Anthropic)",
     .words = {"anthropic", "claude"},
     .tool = "claude",
     .login = {true, {"/.claude.json"}},
     .variable = "ANTHROPIC_API_KEY",
     .method = {"anthropicMethod", "auth_method_anthropic", &AuthConfig::anthropicMethod},
     .chosenMethod = &SignIn::anthropicMethod,
     .apiKey = {"anthropicKey", "api_key_anthropic", &AuthConfig::anthropicKey},
     .typedKey = &SignIn::anthropicKey},
    {.key = "gemini",
     .name = "Google",
     .menuName = "Gemini (Google)",
     .words = {"google", "gemini"},
     .tool = "gemini",
     .login = {true, {"/.gemini/oauth_creds.json"}},
     .variable = "GOOGLE_API_KEY",
     .method = {"googleMethod", "auth_method_google", &AuthConfig::googleMethod},
     .chosenMethod = &SignIn::googleMethod,
     .apiKey = {"googleKey", "api_key_google", &AuthConfig::googleKey},
     .typedKey = &SignIn::googleKey},
    {.key = "openai",
     .name = "OpenAI",
     .menuName = "Codex (OpenAI)",
     .words = {"openai", "gpt"},
     .tool = "codex",
     .login = {true, {"/.codex/auth.json"}},
     .variable = "OPENAI_API_KEY",
     .method = {"openaiMethod", "auth_method_openai", &AuthConfig::openaiMethod},
     .chosenMethod = &SignIn::openaiMethod,
     .apiKey = {"openaiKey", "api_key_openai", &AuthConfig::openaiKey},
     .typedKey = &SignIn::openaiKey},
    {.key = "mistral",
     .name = "Mistral",
     .words = {"mistral"},
     .login = {false, {"/.mistral.json"}},
     .variable = "MISTRAL_API_KEY",
     .method = {"mistralMethod", "auth_method_mistral", &AuthConfig::mistralMethod},
     .chosenMethod = &SignIn::mistralMethod,
     .apiKey = {"mistralKey", "api_key_mistral", &AuthConfig::mistralKey},
     .typedKey = &SignIn::mistralKey},
    {.key = "qwen",
     .name = "Qwen",
     .menuName = "Qwen",
     .words = {"qwen"},
     .tool = "qwen",
     .login = {true, {"/.qwen/auth.json", "/.qwen.json"}},
     .variable = "QWEN_API_KEY",
     .method = {"qwenMethod", "auth_method_qwen", &AuthConfig::qwenMethod},
     .chosenMethod = &SignIn::qwenMethod,
     .apiKey = {"qwenKey", "api_key_qwen", &AuthConfig::qwenKey},
     .typedKey = &SignIn::qwenKey},
    {.key = "deepseek",
     .name = "DeepSeek",
     .words = {"deepseek"},
     .login = {true, {}},
     .variable = "DEEPSEEK_API_KEY",
     .method = {"deepseekMethod", "auth_method_deepseek", &AuthConfig::deepseekMethod},
     .chosenMethod = &SignIn::deepseekMethod,
     .apiKey = {"deepseekKey", "api_key_deepseek", &AuthConfig::deepseekKey},
     .typedKey = &SignIn::deepseekKey},
    {.key = "openrouter",
     .name = "OpenRouter",
     .menuName = "OpenRouter",
     .tag = "(no tools)",
     .login = {false, {}},
     .variable = "OPENROUTER_API_KEY",
     .apiKey = {"openrouterKey", "api_key_openrouter", &AuthConfig::openrouterKey},
     .typedKey = &SignIn::openrouterKey},
    {.key = "cerebras",
     .name = "Cerebras",
     .menuName = "Cerebras",
     .tag = "(governor)",
     .login = {false, {}},
     .variable = "CEREBRAS_API_KEY",
     .apiKey = {"cerebrasKey", "api_key_cerebras", nullptr, &AuthConfig::cerebrasKey},
     .typedKey = &SignIn::cerebrasKey},
}};

constexpr std::array<StoredValue, storedValueCount> valuesOf(const auto& providers) {
    std::array<StoredValue, storedValueCount> values{};
    std::size_t count = 0;
    for (const Provider& provider : providers) {
        if (provider.hasMethod()) {
            values.at(count++) = provider.method;
        }
        values.at(count++) = provider.apiKey;
    }
    return values;
}

constexpr auto values = valuesOf(table);

// What a new provider needs is asked for here, where it would be missed.
constexpr bool isComplete(const StoredValue& value) {
    return !value.name.empty() && !value.legacyKey.empty() &&
           (value.member == nullptr) != (value.optionalMember == nullptr);
}

constexpr bool isWhole(const Provider& provider) {
    const bool hasWords = !provider.words.front().empty();
    return !provider.key.empty() && !provider.name.empty() && !provider.variable.empty() &&
           provider.typedKey != nullptr && isComplete(provider.apiKey) &&
           (provider.hasMethod() ? isComplete(provider.method) && hasWords
                                 : provider.method.name.empty() && !hasWords &&
                                       !provider.tag.empty() && !provider.login.hasRow);
}

template <class Rows, class Same>
constexpr bool allDiffer(const Rows& rows, Same same) {
    return std::all_of(rows.begin(), rows.end(), [&](const auto& row) {
        return std::count_if(rows.begin(), rows.end(),
                             [&](const auto& other) { return same(row, other); }) == 1;
    });
}

constexpr bool isSameValue(const StoredValue& left, const StoredValue& right) {
    return left.name == right.name || left.legacyKey == right.legacyKey ||
           (left.member == right.member && left.optionalMember == right.optionalMember);
}

constexpr bool isSameProvider(const Provider& left, const Provider& right) {
    return left.key == right.key || left.name == right.name || left.variable == right.variable ||
           left.typedKey == right.typedKey ||
           (left.hasMethod() && left.chosenMethod == right.chosenMethod);
}

constexpr std::size_t optionalCount() {
    return static_cast<std::size_t>(std::count_if(
        values.begin(), values.end(), [](const auto& each) { return each.member == nullptr; }));
}

constexpr std::size_t methodSize() {
    constexpr std::size_t step = alignof(std::string);
    return ((storedValueCount - providerCount) * sizeof(AuthMethod) + step - 1) / step * step;
}

static_assert(std::all_of(table.begin(), table.end(), isWhole), "a provider lacks something");
static_assert(std::all_of(values.begin(), values.end(), isComplete), "fewer values than counted");
static_assert(allDiffer(table, isSameProvider), "two providers share a value");
static_assert(allDiffer(values, isSameValue), "two values are kept in one place");
static_assert(sizeof(AuthConfig) == (storedValueCount - optionalCount()) * sizeof(std::string) +
                                        optionalCount() * sizeof(std::optional<std::string>),
              "a value of auth_config.json is of no provider");
static_assert(sizeof(SignIn) == methodSize() + providerCount * sizeof(std::string),
              "a value of the sign-in is of no provider");

} // namespace

std::optional<std::string> StoredValue::of(const AuthConfig& config) const {
    return member != nullptr ? config.*member : config.*optionalMember;
}

void StoredValue::set(AuthConfig& config, std::string value) const {
    if (member != nullptr) {
        config.*member = std::move(value);
    } else {
        config.*optionalMember = std::move(value);
    }
}

const std::array<Provider, providerCount>& providers() {
    return table;
}

const std::array<StoredValue, storedValueCount>& storedValues() {
    return values;
}

const Provider* findProvider(std::string_view key) {
    const auto* const found = std::find_if(table.begin(), table.end(),
                                           [key](const auto& each) { return each.key == key; });
    return found == table.end() ? nullptr : found;
}

const Provider* findMaker(std::string_view modelId) {
    const auto* const found =
        std::find_if(table.begin(), table.end(), [modelId](const Provider& provider) {
            return std::any_of(provider.words.begin(), provider.words.end(), [modelId](auto word) {
                return !word.empty() && modelId.find(word) != std::string_view::npos;
            });
        });
    return found == table.end() ? nullptr : found;
}

} // namespace varnhold
