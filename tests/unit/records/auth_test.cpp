#include "records/auth.h"

#include <gmock/gmock.h>
#include <optional>
#include <string>

#include "base/json.h"

namespace varnhold {
namespace {

using ::testing::ElementsAre;

constexpr const char* required =
    R"j({"anthropicMethod":"Login (OAuth)","anthropicKey":"","googleMethod":"API Key",)j"
    R"("googleKey":"k","openaiMethod":"API Key","openaiKey":"","mistralMethod":"API Key",)"
    R"("mistralKey":"","qwenMethod":"API Key","qwenKey":"","deepseekMethod":"API Key",)"
    R"("deepseekKey":"","openrouterKey":""})";

std::string without(const char* key) {
    json::Value document = *json::parse(required);
    document.erase(key);
    return json::compact(document);
}

TEST(AuthMethod, IsReadToTheLetter) {
    EXPECT_EQ(rawValue(AuthMethod::oauth), "Login (OAuth)");
    EXPECT_EQ(rawValue(AuthMethod::apiKey), "API Key");
    EXPECT_EQ(authMethodFromRawValue("Login (OAuth)"), AuthMethod::oauth);
    EXPECT_EQ(authMethodFromRawValue("API Key"), AuthMethod::apiKey);
    EXPECT_EQ(authMethodFromRawValue(""), std::nullopt);
}

TEST(AuthMethod, IsNoneInSmallLetters) {
    EXPECT_EQ(authMethodFromRawValue("login (oauth)"), std::nullopt);
    EXPECT_EQ(authMethodFromRawValue("api key"), std::nullopt);
}

TEST(AuthConfig, LoadsWithoutTheCerebrasKeyWhichIsThenAbsent) {
    const auto config = decodeAuthConfig(required);
    ASSERT_TRUE(config) << config.error();
    EXPECT_EQ(config->cerebrasKey, std::nullopt);
    EXPECT_EQ(config->googleKey, "k");
    EXPECT_EQ(encodeAuthConfig(*config), required);
}

TEST(AuthConfig, IsRefusedWithoutTheOpenRouterKey) {
    EXPECT_FALSE(decodeAuthConfig(without("openrouterKey")));
}

TEST(AuthConfig, IsRefusedWithoutAnyOneOfItsThirteenKeys) {
    const json::Value document = *json::parse(required);
    ASSERT_EQ(document.size(), 13U);
    for (const auto& [key, value] : document.items()) {
        EXPECT_FALSE(decodeAuthConfig(without(key.c_str()))) << key;
    }
}

TEST(AuthConfig, KeepsAnUnknownMethodAsText) {
    json::Value document = *json::parse(required);
    document["qwenMethod"] = "carrier pigeon";
    const auto config = decodeAuthConfig(json::compact(document));
    ASSERT_TRUE(config) << config.error();
    EXPECT_EQ(config->qwenMethod, "carrier pigeon");
}

TEST(AuthConfig, WritesAnEmptyCerebrasKey) {
    AuthConfig config = *decodeAuthConfig(required);
    config.cerebrasKey = "";
    EXPECT_EQ(decodeAuthConfig(encodeAuthConfig(config))->cerebrasKey, "");
}

TEST(ProviderAuths, AreFiveRowsInOrderWithoutMistral) {
    const auto row = [](const char* key, const char* name, bool status) {
        return ProviderAuth{.id = key, .name = name, .oauthStatus = status, .scoutKey = key};
    };
    EXPECT_THAT(
        providerAuths({{"claude", true}, {"gemini", false}, {"mistral", true}, {"qwen", true}}),
        ElementsAre(row("claude", "Anthropic", true), row("gemini", "Google", false),
                    row("openai", "OpenAI", false), row("qwen", "Qwen", true),
                    row("deepseek", "DeepSeek", false)));
}

} // namespace
} // namespace varnhold
