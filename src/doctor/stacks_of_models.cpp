#include "doctor/stacks_of_models.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/unicode.h"
#include "records/providers.h"
#include "settings/chain_sections.h"
#include "settings/placement_checks.h"

namespace varnhold::doctor {

namespace {

// Those that need no sign-in.
constexpr std::array<std::pair<std::string_view, std::string_view>, 2> freeProviders{
    {{"ollama", "Ollama"}, {"local", "this machine"}}};

bool isNamed(const Provider& provider, std::string_view name) {
    const auto& words = provider.words;
    return !name.empty() && (provider.key == name || provider.tool == name ||
                             std::find(words.begin(), words.end(), name) != words.end());
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
    const Provider* known = findProvider(provider);
    if (known == nullptr || !known->hasMethod() ||
        fields.*known->chosenMethod == AuthMethod::apiKey) {
        return "its key is empty";
    }
    const std::string file(known->login.files.front());
    return file.empty() ? "a login doesn't count for it; choose \"API Key\""
                        : "it is to be used by login, and ~" + file + " isn't there";
}

std::string providerNamed(std::string_view name) {
    const std::string low = unicode::toLower(name);
    for (const Provider& each : providers()) {
        if (isNamed(each, low)) {
            return std::string(each.key);
        }
    }
    const bool isFree = std::any_of(freeProviders.begin(), freeProviders.end(),
                                    [&low](const auto& each) { return each.first == low; });
    return isFree ? low : std::string(name);
}

std::string nameOfProvider(const std::string& provider) {
    if (const Provider* known = findProvider(provider)) {
        return std::string(known->name);
    }
    const auto* const found =
        std::find_if(freeProviders.begin(), freeProviders.end(),
                     [&provider](const auto& each) { return each.first == provider; });
    return found == freeProviders.end() ? provider : std::string(found->second);
}

} // namespace varnhold::doctor
