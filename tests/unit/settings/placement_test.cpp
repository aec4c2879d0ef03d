#include <optional>
#include <string>
#include <vector>

#include "settings/placement_checks.h"

#include "editing.h"

namespace varnhold::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* cerebrasAlert =
    "Cerebras models are thinking/reasoning only — they cannot execute tool calls or process "
    "media. Place them in the Architect or Governor chain only.";

AIModelItem of(std::optional<std::string> providerKey, const std::string& id = "m") {
    return model(id, {.provider_key = std::move(providerKey)});
}

struct Placing : Editing {
    // Nobody is signed in anywhere, whichever way.
    [[nodiscard]] bool passes(const AIModelItem& item) const { return view->checkAuthFor(item); }

    // What a fresh drop of the model leads to: the alert, or nothing if it was let in.
    std::string refusal(const AIModelItem& item, TargetList list) {
        view->showAlert = false;
        view->alertMsg.clear();
        view->directModels = {item};
        const auto before = view->chainArray(list).size();
        drop(item.uid(), list);
        EXPECT_EQ(view->showAlert, !view->alertMsg.empty());
        EXPECT_EQ(newSaves(), view->showAlert ? 0 : 1);
        EXPECT_EQ(view->chainArray(list).size(), before + (view->showAlert ? 0 : 1));
        view->chainBinding(list).clear();
        return view->alertMsg;
    }
};

TEST(ProviderOf, AModelThatNamesNoneIsWhatItsTypeSays) {
    const auto ofType = [](const char* type) {
        return model("m", {.type = type, .provider_key = std::nullopt});
    };
    EXPECT_EQ(providerOf(ofType("local")), "local");
    EXPECT_EQ(providerOf(ofType("openrouter")), "openrouter");
    EXPECT_EQ(providerOf(ofType("cli")), "unknown");
    EXPECT_EQ(providerOf(of("qwen")), "qwen");
}

struct Provider {
    const char* key;
    std::vector<const char*> words;
    AuthMethod SettingsFields::*method;
    std::string SettingsFields::*apiKey;
};

const std::vector<Provider>& providers() {
    static const std::vector<Provider> all{
        {"claude",
         {"anthropic", "claude"},
         &SettingsFields::anthropicMethod,
         &SettingsFields::anthropicKey},
        {"gemini", {"google", "gemini"}, &SettingsFields::googleMethod, &SettingsFields::googleKey},
        {"openai", {"openai", "gpt"}, &SettingsFields::openaiMethod, &SettingsFields::openaiKey},
        {"mistral", {"mistral"}, &SettingsFields::mistralMethod, &SettingsFields::mistralKey},
        {"qwen", {"qwen"}, &SettingsFields::qwenMethod, &SettingsFields::qwenKey},
        {"deepseek", {"deepseek"}, &SettingsFields::deepseekMethod, &SettingsFields::deepseekKey}};
    return all;
}

void expectProviderRule(Placing& settings, const Provider& provider, const AIModelItem& item) {
    ModelSelectorView& view = *settings.view;
    view.*provider.method = AuthMethod::apiKey;
    view.oauthStatuses[provider.key] = true;
    EXPECT_FALSE(settings.passes(item)) << item.id << ": the sign-in isn't asked in key mode";
    view.*provider.apiKey = " ";
    view.oauthStatuses.clear();
    EXPECT_TRUE(settings.passes(item)) << item.id << ": a blank is a key";
    view.*provider.method = AuthMethod::oauth;
    EXPECT_FALSE(settings.passes(item)) << item.id << ": the key isn't asked in sign-in mode";
    view.oauthStatuses[provider.key] = false;
    EXPECT_FALSE(settings.passes(item)) << item.id;
    view.oauthStatuses[provider.key] = true;
    EXPECT_TRUE(settings.passes(item)) << item.id;
    view.oauthStatuses.clear();
    (view.*provider.apiKey).clear();
}

TEST(CheckAuth, FollowsTheProvidersOwnMethodByProviderKey) {
    Placing settings;
    for (const Provider& provider : providers()) {
        expectProviderRule(settings, provider, of(provider.key));
    }
}

TEST(CheckAuth, FollowsTheMakerNamedInAnIdWithATildeWhateverTheProviderKey) {
    Placing settings;
    for (const Provider& provider : providers()) {
        for (const char* word : provider.words) {
            for (const char* key : {"openrouter", "ollama", "unheard"}) {
                expectProviderRule(settings, provider, of(key, std::string("~x-") + word + "-9"));
            }
        }
    }
}

TEST(CheckAuth, GoesToTheFirstMakerOfTheFixedOrder) {
    Placing settings;
    settings.view->anthropicMethod = AuthMethod::apiKey;
    settings.view->openaiKey = settings.view->qwenKey = settings.view->deepseekKey = "key";
    EXPECT_FALSE(settings.passes(of("openai", "~gpt-claude")));
    settings.view->anthropicKey = "key";
    EXPECT_TRUE(settings.passes(of("openai", "~gpt-claude")));
    // Mistral before Qwen, Qwen before DeepSeek, Google before OpenAI.
    EXPECT_FALSE(settings.passes(of("qwen", "~qwen-mistral")));
    settings.view->qwenKey.clear();
    EXPECT_FALSE(settings.passes(of("deepseek", "~deepseek-qwen")));
    EXPECT_FALSE(settings.passes(of("openai", "~openai-google")));
}

TEST(CheckAuth, TakesNoMakerFromAnIdWithoutALeadingTilde) {
    Placing settings;
    EXPECT_TRUE(settings.passes(of(std::nullopt, "claude-sonnet")));
    EXPECT_TRUE(settings.passes(of(std::nullopt, "x~claude")));
    EXPECT_TRUE(settings.passes(of(std::nullopt, "~CLAUDE")));
}

TEST(CheckAuth, IgnoresTheAnthropicKeyInOauthMode) {
    Placing settings;
    settings.view->anthropicKey = "key";
    settings.view->refresh();
    EXPECT_EQ(settings.view->anthropicMethod, AuthMethod::oauth);
    EXPECT_FALSE(settings.passes(of("claude")));
    EXPECT_EQ(settings.refusal(of("claude"), TargetList::worker), "Auth required for Family.");
    settings.home.write(settings.home.at(".claude.json"), "{}");
    settings.view->refresh();
    EXPECT_TRUE(settings.passes(of("claude")));
}

TEST(CheckAuth, RefusesEveryDeepSeekModelInOauthMode) {
    Placing settings;
    settings.view->deepseekMethod = AuthMethod::oauth;
    settings.view->deepseekKey = "key";
    for (const char* file : {".claude.json", ".gemini/oauth_creds.json", ".codex/auth.json",
                             ".mistral.json", ".qwen/auth.json", ".deepseek.json"}) {
        settings.home.write(settings.home.at(file), "{}");
    }
    settings.view->refresh();
    EXPECT_FALSE(settings.passes(of("deepseek")));
    EXPECT_FALSE(settings.passes(of(std::nullopt, "~deepseek-r1")));
    EXPECT_FALSE(settings.passes(of("openrouter", "~deepseek-r1")));
}

TEST(CheckAuth, LetsLocalModelsPassWithoutCredentials) {
    Placing settings;
    AIModelItem local = of("claude", "~claude");
    local.type = "local";
    AIModelItem ollama = of(std::nullopt);
    ollama.type = "ollama";
    EXPECT_TRUE(settings.passes(of("ollama")));
    EXPECT_TRUE(settings.passes(of("local", "~claude")));
    EXPECT_TRUE(settings.passes(local));
    EXPECT_TRUE(settings.passes(ollama));
}

TEST(CheckAuth, LetsAProviderKeyInCapitalsPassAsUnknown) {
    Placing settings;
    for (const char* key : {"Claude", "OpenRouter", "CEREBRAS", "", "unknown", "anthropic"}) {
        EXPECT_TRUE(settings.passes(of(key))) << key;
    }
}

TEST(CheckAuth, NeedsQwensCredentialsForAQwenIdWithATildeBehindOpenRouter) {
    Placing settings;
    settings.view->openrouterKey = "key";
    EXPECT_FALSE(settings.passes(of("openrouter", "~qwen-max")));
    settings.view->openrouterKey.clear();
    settings.view->qwenKey = "key";
    EXPECT_TRUE(settings.passes(of("openrouter", "~qwen-max")));
}

TEST(CheckAuth, LetsAnUnknownIdWithATildePass) {
    Placing settings;
    AIModelItem item = of(std::nullopt, "~something-else");
    item.type = "api";
    EXPECT_TRUE(settings.passes(item));
    item.type = "openrouter";
    EXPECT_FALSE(settings.passes(item)) << "the rows below the tilde still count";
}

TEST(CheckAuth, NeedsTheKeyOfAProviderThatHasNoMethod) {
    Placing settings;
    AIModelItem byType = of(std::nullopt);
    byType.type = "openrouter";
    AIModelItem keyFirst = of("ollama");
    keyFirst.type = "openrouter";
    EXPECT_FALSE(settings.passes(of("openrouter")));
    EXPECT_FALSE(settings.passes(byType));
    EXPECT_TRUE(settings.passes(keyFirst));
    EXPECT_FALSE(settings.passes(of("cerebras")));
    settings.view->openrouterKey = settings.view->cerebrasKey = " ";
    EXPECT_TRUE(settings.passes(of("openrouter")));
    EXPECT_TRUE(settings.passes(byType));
    EXPECT_TRUE(settings.passes(of("cerebras")));
}

TEST(CheckAuth, JudgesATypeOfCliByItsProviderKey) {
    Placing settings;
    EXPECT_EQ(of("claude").type, "cli");
    EXPECT_FALSE(settings.passes(of("claude")));
    EXPECT_TRUE(settings.passes(of(std::nullopt)));
}

TEST(CheckAuth, ChangesNothing) {
    Placing settings;
    static_cast<void>(settings.passes(of("claude")));
    EXPECT_FALSE(settings.view->showAlert);
    EXPECT_THAT(settings.view->oauthStatuses, IsEmpty());
    EXPECT_THAT(settings.animations, IsEmpty());
}

TEST(Placement, OfCerebrasWithoutAKeyAsksForSignInOnEveryChain) {
    Placing settings;
    AIModelItem item = of("cerebras");
    item.family = "Cerebras";
    for (const TargetList list : allTargetLists) {
        EXPECT_EQ(settings.refusal(item, list), "Auth required for Cerebras.");
    }
}

TEST(Placement, OfCerebrasWithAKeyIsForArchitectAndGovernorAlone) {
    Placing settings;
    settings.view->cerebrasKey = "key";
    EXPECT_EQ(settings.refusal(of("cerebras"), TargetList::architect), "");
    EXPECT_EQ(settings.refusal(of("cerebras"), TargetList::governor), "");
    for (const TargetList list :
         {TargetList::worker, TargetList::photo, TargetList::video, TargetList::voice}) {
        EXPECT_EQ(settings.refusal(of("cerebras"), list), cerebrasAlert);
    }
}

TEST(Placement, KnowsCerebrasByFamilyOrProviderKeyInAnyCase) {
    Placing settings;
    settings.view->oauthStatuses["claude"] = true;
    AIModelItem byFamily = of("claude");
    byFamily.family = "cEREBRAS";
    EXPECT_EQ(settings.refusal(byFamily, TargetList::photo), cerebrasAlert);
    EXPECT_EQ(settings.refusal(of("Cerebras"), TargetList::photo), cerebrasAlert);
    AIModelItem near = of(std::nullopt);
    near.family = "Cerebras Cloud";
    EXPECT_EQ(settings.refusal(near, TargetList::photo), "");
}

TEST(Placement, NamesTheFamilyAsStored) {
    Placing settings;
    AIModelItem item = of("openai");
    item.family = " Ünï & <b>cö</b>";
    EXPECT_EQ(settings.refusal(item, TargetList::worker), "Auth required for  Ünï & <b>cö</b>.");
}

TEST(Placement, RefusedLeavesAllChainsTheFilesAndTheDragOver) {
    Placing settings;
    settings.view->workerModels = {model("w")};
    settings.view->directModels = {of("openai")};
    settings.view->draggingItem = of("openai");
    settings.drop("m", TargetList::worker);
    EXPECT_TRUE(settings.view->showAlert);
    EXPECT_FALSE(settings.view->draggingItem);
    EXPECT_THAT(settings.ids(TargetList::worker), ElementsAre("w"));
    EXPECT_EQ(settings.fileOf(TargetList::worker), "");
    EXPECT_EQ(settings.animations.back(), Animation::none) << "the alert is announced";
}

TEST(Placement, SetsNoOtherRule) {
    Placing settings;
    for (const TargetList list : allTargetLists) {
        EXPECT_EQ(placementRefusal(*settings.view, of(std::nullopt), list), std::nullopt);
    }
}

} // namespace
} // namespace varnhold::testing
