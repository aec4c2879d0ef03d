#include "doctor/stacks_of_models.h"

#include <algorithm>
#include <array>

#include "base/unicode.h"
#include "settings/chain_sections.h"
#include "settings/placement_checks.h"

namespace varnhold::doctor {

namespace {

struct KnownProvider {
    std::string_view key;
    std::string_view name;
    std::array<std::string_view, 3> otherNames;
    AuthMethod SettingsFields::*method; // null: by key alone, or by nothing
    std::string_view loginMark; // the file that a login leaves behind; empty: none ever does
};

constexpr std::array<KnownProvider, 10> providers{{
    {"claude", "Anthropic", {"anthropic"}, &SettingsFields::anthropicMethod, "~/.claude.json"},
    {"gemini", "Google", {"google"}, &SettingsFields::googleMethod, "~/.gemini/oauth_creds.json"},
    {"openai", "OpenAI", {"codex", "gpt"}, &SettingsFields::openaiMethod, "~/.codex/auth.json"},
    {"mistral", "Mistral", {}, &SettingsFields::mistralMethod, "~/.mistral.json"},
    {"qwen", "Qwen", {}, &SettingsFields::qwenMethod, "~/.qwen/auth.json"},
    {"deepseek", "DeepSeek", {}, &SettingsFields::deepseekMethod, ""},
    {"openrouter", "OpenRouter", {}, nullptr, ""},
    {"cerebras", "Cerebras", {}, nullptr, ""},
    {"ollama", "Ollama", {}, nullptr, ""},
    {"local", "this machine", {}, nullptr, ""},
}};

const KnownProvider* findKnown(std::string_view key) {
    const auto* const found = std::find_if(providers.begin(), providers.end(),
                                           [key](const auto& each) { return each.key == key; });
    return found == providers.end() ? nullptr : found;
}

} // namespace

std::vector<ModelStack> stacksOf(const SettingsFields& fields) {
    std::vector<ModelStack> stacks;
    for (const TargetList list : allTargetLists) {
        const ChainSection& section = chainSection(list);
        const auto assigned = fields.chainBotAssignments.find(std::string(chainKey(list)));
        stacks.push_back({.name = std::string(section.name) + " chain",
                          .key = std::string(chainKey(list)),
                          .chain = list,
                          .models = &(fields.*section.models),
                          .labels = assigned == fields.chainBotAssignments.end()
                                        ? std::vector<std::string>()
                                        : assigned->second,
                          .effort = fields.*section.effort,
                          .contextTokens = fields.*section.contextTokens});
    }
    for (const CustomBotGroup& group : fields.customGroups) {
        stacks.push_back({.name = "group " + group.name,
                          .key = group.name,
                          .chain = std::nullopt,
                          .models = &group.models,
                          .labels = group.assignedBotLabels,
                          .effort = group.effortLevel,
                          .contextTokens = group.contextTokens});
    }
    return stacks;
}

bool canAnswer(const SettingsFields& fields, const ModelStack& stack, const AIModelItem& model) {
    return stack.chain ? !placementRefusal(fields, model, *stack.chain)
                       : checkAuthFor(fields, model);
}

const AIModelItem* whoAnswers(const SettingsFields& fields, const ModelStack& stack,
                              std::string_view without) {
    const auto found =
        std::find_if(stack.models->begin(), stack.models->end(), [&](const AIModelItem& model) {
            return providerOf(model) != without && canAnswer(fields, stack, model);
        });
    return found == stack.models->end() ? nullptr : &*found;
}

std::string whyNotConnected(const SettingsFields& fields, const std::string& provider) {
    const KnownProvider* known = findKnown(provider);
    if (known == nullptr || known->method == nullptr ||
        fields.*known->method == AuthMethod::apiKey) {
        return "its key is empty";
    }
    return known->loginMark.empty()
               ? "a login doesn't count for it; choose \"API Key\""
               : "it is to be used by login, and " + std::string(known->loginMark) + " isn't there";
}

std::string providerNamed(std::string_view name) {
    const std::string low = unicode::toLower(name);
    for (const KnownProvider& each : providers) {
        const auto& others = each.otherNames;
        if (each.key == low || std::find(others.begin(), others.end(), low) != others.end()) {
            return std::string(each.key);
        }
    }
    return std::string(name);
}

std::string nameOfProvider(const std::string& provider) {
    const KnownProvider* known = findKnown(provider);
    return known == nullptr ? provider : std::string(known->name);
}

} // namespace varnhold::doctor
