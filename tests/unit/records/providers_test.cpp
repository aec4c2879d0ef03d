#include "records/providers.h"

#include <gmock/gmock.h>
#include <string_view>
#include <vector>

#include "records/auth.h"

namespace varnhold {
namespace {

using ::testing::ElementsAre;

TEST(Providers, StandInTheOrderOfTheFile) {
    std::vector<std::string_view> keys;
    for (const Provider& provider : providers()) {
        keys.push_back(provider.key);
    }
    EXPECT_THAT(keys, ElementsAre("claude", "gemini", "openai", "mistral", "qwen", "deepseek",
                                  "openrouter", "cerebras"));
}

TEST(Providers, HaveTheVariablesThatAgentsKnow) {
    std::vector<std::string_view> variables;
    for (const Provider& provider : providers()) {
        variables.push_back(provider.variable);
    }
    EXPECT_THAT(variables, ElementsAre("ANTHROPIC_API_KEY", "GOOGLE_API_KEY", "OPENAI_API_KEY",
                                       "MISTRAL_API_KEY", "QWEN_API_KEY", "DEEPSEEK_API_KEY",
                                       "OPENROUTER_API_KEY", "CEREBRAS_API_KEY"));
}

TEST(Providers, KeepTheirFourteenValuesMethodBeforeKey) {
    std::vector<std::string_view> names;
    std::vector<std::string_view> legacyKeys;
    for (const StoredValue& value : storedValues()) {
        names.push_back(value.name);
        legacyKeys.push_back(value.legacyKey);
    }
    EXPECT_THAT(names, ElementsAre("anthropicMethod", "anthropicKey", "googleMethod", "googleKey",
                                   "openaiMethod", "openaiKey", "mistralMethod", "mistralKey",
                                   "qwenMethod", "qwenKey", "deepseekMethod", "deepseekKey",
                                   "openrouterKey", "cerebrasKey"));
    EXPECT_THAT(legacyKeys,
                ElementsAre("auth_method_anthropic", "api_key_anthropic", "auth_method_google",
                            "api_key_google", "auth_method_openai", "api_key_openai",
                            "auth_method_mistral", "api_key_mistral", "auth_method_qwen",
                            "api_key_qwen", "auth_method_deepseek", "api_key_deepseek",
                            "api_key_openrouter", "api_key_cerebras"));
}

TEST(Providers, AreFoundByTheirKeyToTheLetter) {
    EXPECT_EQ(findProvider("gemini")->name, "Google");
    EXPECT_EQ(findProvider("Gemini"), nullptr);
    EXPECT_EQ(findProvider("ollama"), nullptr);
    EXPECT_EQ(findProvider(""), nullptr);
}

TEST(Providers, MakeWhatIsNamedAfterThemTheFirstOfSeveral) {
    EXPECT_EQ(findMaker("~gpt-claude")->key, "claude");
    EXPECT_EQ(findMaker("~qwen-max")->key, "qwen");
    EXPECT_EQ(findMaker("~cerebras"), nullptr);
    EXPECT_EQ(findMaker(""), nullptr);
}

TEST(SignIn, TakesAnUnknownMethodForTheProvidersOwnAndAnAbsentKeyForTheEmptyOne) {
    AuthConfig config{.anthropicMethod = "pigeon", .openaiMethod = "pigeon", .openaiKey = "o"};
    const SignIn signIn = signInFrom(config);
    EXPECT_EQ(signIn.anthropicMethod, AuthMethod::oauth);
    EXPECT_EQ(signIn.openaiMethod, AuthMethod::apiKey);
    EXPECT_EQ(signIn.openaiKey, "o");
    EXPECT_EQ(signIn.cerebrasKey, "");
    EXPECT_EQ(authConfigOf(signIn).cerebrasKey, "");
    EXPECT_EQ(authConfigOf(signIn).anthropicMethod, "Login (OAuth)");
}

} // namespace
} // namespace varnhold
