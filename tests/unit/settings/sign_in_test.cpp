#include <string>
#include <vector>

#include "base/json.h"
#include "settings_home.h"

namespace varnhold::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;

AuthConfig someConfig() {
    return {.anthropicMethod = "API Key",
            .anthropicKey = "a",
            .googleMethod = "API Key",
            .googleKey = "g",
            .openaiMethod = "Login (OAuth)",
            .openaiKey = "o",
            .mistralMethod = "Login (OAuth)",
            .mistralKey = "m",
            .qwenMethod = "Login (OAuth)",
            .qwenKey = "q",
            .deepseekMethod = "Login (OAuth)",
            .deepseekKey = "d",
            .openrouterKey = "r",
            .cerebrasKey = "c"};
}

// What the sign-in column shows, as text.
std::vector<std::string> shown(const ModelSelectorView& view) {
    const auto raw = [](AuthMethod method) { return std::string(rawValue(method)); };
    return {
        raw(view.anthropicMethod), view.anthropicKey, raw(view.googleMethod),   view.googleKey,
        raw(view.openaiMethod),    view.openaiKey,    raw(view.mistralMethod),  view.mistralKey,
        raw(view.qwenMethod),      view.qwenKey,      raw(view.deepseekMethod), view.deepseekKey,
        view.openrouterKey,        view.cerebrasKey};
}

std::vector<std::string> someTexts() {
    return {"API Key",
            "a",
            "API Key",
            "g",
            "Login (OAuth)",
            "o",
            "Login (OAuth)",
            "m",
            "Login (OAuth)",
            "q",
            "Login (OAuth)",
            "d",
            "r",
            "c"};
}

std::vector<std::string> legacyKeysInOrder() {
    return {"auth_method_anthropic", "api_key_anthropic",    "auth_method_google",
            "api_key_google",        "auth_method_openai",   "api_key_openai",
            "auth_method_mistral",   "api_key_mistral",      "auth_method_qwen",
            "api_key_qwen",          "auth_method_deepseek", "api_key_deepseek",
            "api_key_openrouter",    "api_key_cerebras"};
}

TEST(LoadSettings, TakesAllFourteenValuesFromTheFile) {
    SettingsHome settings;
    settings.write(settings.constants.authConfigFile, encodeAuthConfig(someConfig()));
    settings.platform.defaults.strings["api_key_openai"] = "legacy";
    ModelSelectorView& view = settings.open();
    view.loadSettings();
    EXPECT_EQ(shown(view), someTexts());
}

TEST(LoadSettings, GivesAnUnknownMethodTheProvidersOwnDefault) {
    SettingsHome settings;
    AuthConfig config = someConfig();
    config.anthropicMethod = config.googleMethod = config.openaiMethod = "api key";
    config.mistralMethod = config.qwenMethod = config.deepseekMethod = "";
    config.cerebrasKey.reset();
    settings.write(settings.constants.authConfigFile, encodeAuthConfig(config));
    ModelSelectorView& view = settings.open();
    view.loadSettings();
    EXPECT_THAT(shown(view), ElementsAre("Login (OAuth)", "a", "Login (OAuth)", "g", "API Key", "o",
                                         "API Key", "m", "API Key", "q", "API Key", "d", "r", ""));
}

TEST(LoadSettings, OverwritesWhatWasTypedAndNotSaved) {
    SettingsHome settings;
    settings.write(settings.constants.authConfigFile, encodeAuthConfig(someConfig()));
    ModelSelectorView& view = settings.open();
    view.loadSettings();
    view.openaiKey = "typed";
    view.anthropicMethod = AuthMethod::oauth;
    view.loadSettings();
    EXPECT_EQ(shown(view), someTexts());
}

TEST(LoadSettings, UsesTheUserDefaultsWhereTheFileLacksTheOpenRouterKey) {
    SettingsHome settings;
    json::Value document = *json::parse(encodeAuthConfig(someConfig()));
    document.erase("openrouterKey");
    settings.write(settings.constants.authConfigFile, json::compact(document));
    settings.platform.defaults.strings["api_key_openai"] = "legacy";
    ModelSelectorView& view = settings.open();
    view.loadSettings();
    EXPECT_EQ(view.openaiKey, "legacy");
    EXPECT_EQ(view.anthropicKey, "");
    EXPECT_EQ(view.anthropicMethod, AuthMethod::oauth);
}

TEST(LoadSettings, TakesUnknownMethodsOfTheUserDefaultsForTheProvidersOwn) {
    SettingsHome settings;
    settings.platform.defaults.strings["auth_method_google"] = "API Key";
    settings.platform.defaults.strings["auth_method_openai"] = "oauth";
    ModelSelectorView& view = settings.open();
    view.loadSettings();
    EXPECT_EQ(view.googleMethod, AuthMethod::apiKey);
    EXPECT_EQ(view.openaiMethod, AuthMethod::apiKey);
}

TEST(SaveSettings, StoresEachOfTheFourteenKeysInOrderEvenWhereAllAreEmpty) {
    SettingsHome settings;
    settings.open().save();
    EXPECT_EQ(settings.platform.defaults.written, legacyKeysInOrder());
    EXPECT_THAT(settings.platform.defaults.strings, SizeIs(14));
    EXPECT_EQ(settings.platform.defaults.strings.at("api_key_anthropic"), "");
    EXPECT_EQ(settings.platform.defaults.strings.at("auth_method_anthropic"), "Login (OAuth)");
    EXPECT_EQ(settings.platform.defaults.strings.at("auth_method_qwen"), "API Key");
}

TEST(SaveSettings, ComesBackFromTheLegacyKeysAfterTheFileWasDeleted) {
    SettingsHome settings;
    settings.write(settings.constants.authConfigFile, encodeAuthConfig(someConfig()));
    settings.open().loadSettings();
    settings.view->save();

    settings.write(settings.constants.authConfigFile, "");
    std::remove(settings.constants.authConfigFile.c_str());
    ModelSelectorView& restarted = settings.open();
    restarted.loadSettings();
    EXPECT_EQ(shown(restarted), someTexts());
    restarted.save();
    EXPECT_EQ(settings.read(settings.constants.authConfigFile), encodeAuthConfig(someConfig()));
}

TEST(SaveSettings, ReplacesARejectedFileByAGoodOneOfTheLegacyKeys) {
    SettingsHome settings;
    settings.write(settings.constants.authConfigFile, R"({"anthropicKey":"lost"})");
    settings.platform.defaults.strings["api_key_anthropic"] = "legacy";
    ModelSelectorView& view = settings.open();
    view.loadSettings();
    EXPECT_EQ(view.anthropicKey, "legacy");
    view.save();
    EXPECT_EQ(readAuthConfig(settings.constants.authConfigFile)->anthropicKey, "legacy");
}

TEST(SaveSettings, WritesTheCerebrasKeyEvenWhereItIsEmpty) {
    SettingsHome settings;
    settings.open().saveSettings();
    EXPECT_EQ(readAuthConfig(settings.constants.authConfigFile)->cerebrasKey, "");
}

TEST(SaveSettings, StoresTheKeysEvenWhereTheFileCannotBeWritten) {
    SettingsHome settings;
    settings.home.makeFolder(settings.constants.authConfigFile);
    ModelSelectorView& view = settings.open();
    view.qwenKey = "q";
    view.saveSettings();
    EXPECT_EQ(settings.platform.defaults.strings.at("api_key_qwen"), "q");
}

} // namespace
} // namespace varnhold::testing
