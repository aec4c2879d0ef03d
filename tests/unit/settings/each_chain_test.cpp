#include <string>
#include <vector>

#include "settings/chain_sections.h"
#include "settings_home.h"

// Of values that are alike, each goes to a place of its own: spelled out, since a table can be
// wrong in two columns at once.
namespace varnhold::testing {
namespace {

using ::testing::ElementsAre;

TEST(EachChain, HasAPlaceInTheOrders) {
    EXPECT_THAT(allTargetLists,
                ElementsAre(TargetList::architect, TargetList::worker, TargetList::photo,
                            TargetList::video, TargetList::voice, TargetList::governor));
    EXPECT_THAT(chainFileOrder,
                ElementsAre(TargetList::worker, TargetList::architect, TargetList::photo,
                            TargetList::video, TargetList::voice, TargetList::governor));
    std::vector<int> rows;
    for (const ChainSection& section : chainSections()) {
        rows.push_back(section.row);
    }
    EXPECT_THAT(rows, ElementsAre(0, 1, 1, 2, 2, 2));
}

TEST(EachChain, HasItsOwnEffortAndBudgetInTheFiles) {
    SettingsHome settings;
    ModelSelectorView& view = settings.open();
    view.architectEffort = EffortLevel::off;
    view.workerEffort = EffortLevel::low;
    view.photoEffort = EffortLevel::medium;
    view.videoEffort = EffortLevel::high;
    view.voiceEffort = EffortLevel::off;
    view.governorEffort = EffortLevel::low;
    view.architectContextTokens = 1;
    view.workerContextTokens = 2;
    view.photoContextTokens = 3;
    view.videoContextTokens = 4;
    view.voiceContextTokens = 5;
    view.governorContextTokens = 6;
    view.save();
    EXPECT_EQ(settings.read(settings.constants.effortPrefsFile),
              R"({"architect":"off","worker":"low","photo":"medium","video":"high","voice":"off",)"
              R"("governor":"low"})");
    EXPECT_EQ(settings.read(settings.constants.contextPrefsFile),
              R"({"architect":1,"worker":2,"photo":3,"video":4,"voice":5,"governor":6})");
    view.architectEffort = view.governorEffort = EffortLevel::high;
    view.save();
    EXPECT_EQ(settings.read(settings.constants.effortPrefsFile),
              R"({"architect":"high","worker":"low","photo":"medium","video":"high",)"
              R"("voice":"off","governor":"high"})");
}

TEST(EachChain, TakesItsOwnEffortAndBudgetFromTheFiles) {
    SettingsHome settings;
    settings.write(settings.constants.effortPrefsFile,
                   R"({"architect":"off","worker":"low","photo":"medium","video":"high",)"
                   R"("voice":"off","governor":"low"})");
    settings.write(settings.constants.contextPrefsFile,
                   R"({"architect":1,"worker":2,"photo":3,"video":4,"voice":5,"governor":6})");
    const ModelSelectorView& view = settings.open();
    EXPECT_EQ(view.architectEffort, EffortLevel::off);
    EXPECT_EQ(view.workerEffort, EffortLevel::low);
    EXPECT_EQ(view.photoEffort, EffortLevel::medium);
    EXPECT_EQ(view.videoEffort, EffortLevel::high);
    EXPECT_EQ(view.voiceEffort, EffortLevel::off);
    EXPECT_EQ(view.governorEffort, EffortLevel::low);
    EXPECT_THAT(
        (std::vector{view.architectContextTokens, view.workerContextTokens, view.photoContextTokens,
                     view.videoContextTokens, view.voiceContextTokens, view.governorContextTokens}),
        ElementsAre(1, 2, 3, 4, 5, 6));
}

TEST(EachChain, HasItsOwnFile) {
    SettingsHome settings;
    ModelSelectorView& view = settings.open();
    view.architectModels = {model("architect")};
    view.workerModels = {model("worker")};
    view.photoModels = {model("photo")};
    view.videoModels = {model("video")};
    view.voiceModels = {model("voice")};
    view.governorModels = {model("governor")};
    view.save();
    for (const std::string key : {"architect", "worker", "photo", "video", "voice", "governor"}) {
        EXPECT_EQ(settings.read(settings.constants.appSupportDir + "/" + key + "_preferences.json"),
                  encodeChain({model(key)}));
    }
}

struct SignInPlace {
    const char* name;
    AuthMethod SettingsFields::*method;
    std::string SettingsFields::*key;
    AuthMethod otherwise; // than it starts
    std::string AuthConfig::*storedMethod;
    std::string AuthConfig::*storedKey;
};

const std::vector<SignInPlace> signInPlaces{
    {"anthropic", &SettingsFields::anthropicMethod, &SettingsFields::anthropicKey,
     AuthMethod::apiKey, &AuthConfig::anthropicMethod, &AuthConfig::anthropicKey},
    {"google", &SettingsFields::googleMethod, &SettingsFields::googleKey, AuthMethod::apiKey,
     &AuthConfig::googleMethod, &AuthConfig::googleKey},
    {"openai", &SettingsFields::openaiMethod, &SettingsFields::openaiKey, AuthMethod::oauth,
     &AuthConfig::openaiMethod, &AuthConfig::openaiKey},
    {"mistral", &SettingsFields::mistralMethod, &SettingsFields::mistralKey, AuthMethod::oauth,
     &AuthConfig::mistralMethod, &AuthConfig::mistralKey},
    {"qwen", &SettingsFields::qwenMethod, &SettingsFields::qwenKey, AuthMethod::oauth,
     &AuthConfig::qwenMethod, &AuthConfig::qwenKey},
    {"deepseek", &SettingsFields::deepseekMethod, &SettingsFields::deepseekKey, AuthMethod::oauth,
     &AuthConfig::deepseekMethod, &AuthConfig::deepseekKey}};

TEST(EachProvider, HasItsOwnMethodAndKeyInFileAndUserDefaults) {
    for (const SignInPlace& place : signInPlaces) {
        SettingsHome settings;
        ModelSelectorView& view = settings.open();
        view.*place.method = place.otherwise;
        view.*place.key = "typed";
        view.save();
        const AuthConfig stored = readAuthConfig(settings.constants.authConfigFile).value();
        for (const SignInPlace& each : signInPlaces) {
            const bool isIt = each.key == place.key;
            const AuthMethod usual =
                each.otherwise == AuthMethod::oauth ? AuthMethod::apiKey : AuthMethod::oauth;
            const std::string method(rawValue(isIt ? each.otherwise : usual));
            const auto& defaults = settings.platform.defaults.strings;
            EXPECT_EQ(stored.*each.storedMethod, method) << each.name;
            EXPECT_EQ(stored.*each.storedKey, isIt ? "typed" : "") << each.name;
            EXPECT_EQ(defaults.at(std::string("auth_method_") + each.name), method);
            EXPECT_EQ(defaults.at(std::string("api_key_") + each.name), isIt ? "typed" : "");
        }
        ModelSelectorView& again = settings.open();
        again.loadSettings();
        for (const SignInPlace& each : signInPlaces) {
            EXPECT_EQ(again.*each.key, each.key == place.key ? "typed" : "") << each.name;
            EXPECT_EQ(again.*each.method == each.otherwise, each.key == place.key) << each.name;
        }
    }
}

TEST(EachProvider, WithoutACerebrasKeyInTheFileHasNoneWhateverWasTyped) {
    SettingsHome settings;
    AuthConfig config;
    config.openrouterKey = "r";
    settings.write(settings.constants.authConfigFile, encodeAuthConfig(config));
    ModelSelectorView& view = settings.open();
    view.cerebrasKey = "typed";
    view.loadSettings();
    EXPECT_EQ(view.cerebrasKey, "");
    EXPECT_EQ(view.openrouterKey, "r");
}

} // namespace
} // namespace varnhold::testing
