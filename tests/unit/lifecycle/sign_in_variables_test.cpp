#include <gtest/gtest.h>

#include <map>
#include <string>

#include "base/json.h"
#include "lifecycle/launch_agent.h"

namespace varnhold {
namespace {

using Variables = std::map<std::string, std::string>;

Variables variablesOf(const char* document) {
    return signInVariables(json::parse(document).value());
}

TEST(SignInVariables, EightProviderKeysHaveTheirVariables) {
    EXPECT_EQ(variablesOf(R"({"anthropicKey":"a","openaiKey":"b","googleKey":"c",
                              "cerebrasKey":"d","openrouterKey":"e","mistralKey":"f",
                              "qwenKey":"g","deepseekKey":"h","ollamaKey":"i","geminiKey":"j"})"),
              (Variables{{"ANTHROPIC_API_KEY", "a"},
                         {"OPENAI_API_KEY", "b"},
                         {"GOOGLE_API_KEY", "c"},
                         {"CEREBRAS_API_KEY", "d"},
                         {"OPENROUTER_API_KEY", "e"},
                         {"MISTRAL_API_KEY", "f"},
                         {"QWEN_API_KEY", "g"},
                         {"DEEPSEEK_API_KEY", "h"}}));
}

TEST(SignInVariables, AnEmptyKeyIsLeftOut) {
    EXPECT_EQ(variablesOf(R"({"anthropicKey":"","openaiKey":"b"})"),
              (Variables{{"OPENAI_API_KEY", "b"}}));
}

TEST(SignInVariables, AKeyThatIsNotTextIsLeftOut) {
    EXPECT_EQ(variablesOf(R"({"anthropicKey":5,"googleKey":null,"qwenKey":true,
                              "mistralKey":["x"],"openaiKey":"b"})"),
              (Variables{{"OPENAI_API_KEY", "b"}}));
}

TEST(SignInVariables, AKeyIsTakenAsItStands) {
    EXPECT_EQ(variablesOf(R"({"openaiKey":" b\n"})"), (Variables{{"OPENAI_API_KEY", " b\n"}}));
}

TEST(SignInVariables, ATokensVariableIsItsKeyInCapitals) {
    EXPECT_EQ(variablesOf(R"({"oauthTokens":{"claude":"t","x-y":"u","straße":"v","":"w"}})"),
              (Variables{{"CLAUDE_OAUTH_TOKEN", "t"},
                         {"X-Y_OAUTH_TOKEN", "u"},
                         {"STRASSE_OAUTH_TOKEN", "v"},
                         {"_OAUTH_TOKEN", "w"}}));
}

TEST(SignInVariables, AnEmptyTokenIsLeftOutAndTheOthersStay) {
    EXPECT_EQ(variablesOf(R"({"oauthTokens":{"claude":"","gemini":"t"}})"),
              (Variables{{"GEMINI_OAUTH_TOKEN", "t"}}));
}

TEST(SignInVariables, OneTokenThatIsNotTextLeavesAllTokensOutButNoKey) {
    for (const char* bad : {"5", "null", "true", "[]", "{}"}) {
        const std::string document =
            std::string(R"({"openaiKey":"b","oauthTokens":{"claude":"t","gemini":)") + bad + "}}";
        EXPECT_EQ(variablesOf(document.c_str()), (Variables{{"OPENAI_API_KEY", "b"}})) << bad;
    }
}

TEST(SignInVariables, TokensThatAreNoMapAddNothing) {
    for (const char* bad : {"\"t\"", "[]", "[\"t\"]", "null", "1", "{}"}) {
        const std::string document = std::string(R"({"openaiKey":"b","oauthTokens":)") + bad + "}";
        EXPECT_EQ(variablesOf(document.c_str()), (Variables{{"OPENAI_API_KEY", "b"}})) << bad;
    }
}

TEST(SignInVariables, OnlyAnObjectHoldsAny) {
    for (const char* document : {"[]", "\"openaiKey\"", "null", "[{\"openaiKey\":\"b\"}]"}) {
        EXPECT_TRUE(variablesOf(document).empty()) << document;
    }
}

} // namespace
} // namespace varnhold
