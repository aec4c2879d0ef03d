#include "doctor/chains_check.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "base/files.h"
#include "doctor/catalogue.h"
#include "doctor/property_list_check.h"
#include "doctor/stacks_of_models.h"
#include "records/tokens.h"
#include "settings/placement_checks.h"

namespace varnhold::doctor {

namespace {

class ChainsCheck {
public:
    ChainsCheck(const SettingsFields& fields, bool botsAreKnown)
        : fields_(fields), botsAreKnown_(botsAreKnown), stacks_(stacksOf(fields)) {}

    [[nodiscard]] Section section() && {
        section_.data["chains"] = json::Value::array();
        section_.data["groups"] = json::Value::array();
        std::size_t answering = 0;
        for (const ModelStack& stack : stacks_) {
            answering += look(stack) ? 1U : 0U;
        }
        checkProviders();
        checkAssignments();
        checkChoice();
        checkAttachments();
        section_.table.headings = {"Chain", "Answers first", "Models", "Bots", "Effort", "Budget"};
        section_.summary = std::to_string(answering) + " of " +
                           counted(stacks_.size(), "list", "lists") + " of models can answer";
        return std::move(section_);
    }

private:
    bool look(const ModelStack& stack) {
        const std::size_t before = section_.findings.size();
        const AIModelItem* first = whoAnswers(fields_, stack);
        if (first == nullptr) {
            cannotAnswer(stack);
        }
        checkModels(stack);
        checkHanging(stack);
        checkBots(stack);
        if (stack.contextTokens < 0) {
            add(ids::budgetNegative, Level::warning, stack, "The budget is below nothing.",
                "Daemons may take it for anything.", "Step it in the settings window.");
        }
        show(stack, first, before);
        return first != nullptr;
    }

    void show(const ModelStack& stack, const AIModelItem* first, std::size_t before) {
        std::optional<Level> level;
        for (std::size_t i = before; i < section_.findings.size(); ++i) {
            level = std::max(level, std::optional(section_.findings[i].level));
        }
        const std::string budget = formatTokens(roundedTokens(stack.contextTokens));
        section_.table.rows.push_back(
            {level == Level::note ? std::nullopt : level,
             first != nullptr,
             {stack.name, first == nullptr ? "nobody" : first->name,
              std::to_string(stack.models->size()), std::to_string(stack.labels.size()),
              std::string(rawValue(stack.effort)), budget}});
        json::Value row{{stack.chain ? "chain" : "group", stack.key}};
        row["models"] = json::Value::array();
        for (const AIModelItem& model : *stack.models) {
            row["models"].push_back({{"id", model.id},
                                     {"name", model.name},
                                     {"provider", providerOf(model)},
                                     {"connected", checkAuthFor(fields_, model)},
                                     {"canAnswer", canAnswer(fields_, stack, model)}});
        }
        row["bots"] = stack.labels;
        row["effort"] = rawValue(stack.effort);
        row["budget"] = roundedTokens(stack.contextTokens);
        section_.data[stack.chain ? "chains" : "groups"].push_back(std::move(row));
    }

    void cannotAnswer(const ModelStack& stack) {
        if (stack.models->empty() && stack.labels.empty()) {
            return; // not in use
        }
        const Level level = stack.labels.empty() ? Level::warning : Level::fault;
        const std::string bots = counted(stack.labels.size(), "bot", "bots");
        if (stack.models->empty()) {
            add(ids::chainEmpty, level, stack, "There is no model in it.",
                counted(stack.labels.size(), "bot that is assigned to it has",
                        "bots that are assigned to it have") +
                    " nobody to answer.",
                "Drag models into it.");
            return;
        }
        add(ids::chainCannotAnswer, level, stack, "None of its models can answer.",
            stack.labels.empty() ? "No bot is assigned to it."
                                 : bots + " assigned to it can't be answered for.",
            "Connect a provider, or add a model of a connected one.");
    }

    void checkModels(const ModelStack& stack) {
        std::vector<std::string> misplaced;
        std::vector<std::string> gone;
        std::map<std::string, std::size_t> times;
        for (const AIModelItem& model : *stack.models) {
            ++times[model.id];
            if (!checkAuthFor(fields_, model)) {
                unconnected_[providerOf(model)].push_back(model.name + " in the " + stack.name);
            } else if (!canAnswer(fields_, stack, model)) {
                misplaced.push_back(model.name);
            }
            if (!isKnown(model)) {
                gone.push_back(model.name);
            }
        }
        if (!misplaced.empty()) {
            add(ids::modelCannotServe, Level::warning, stack,
                enumerated(misplaced) + " can't serve here.",
                "Models by Cerebras can't use tools and see no media.",
                "Move them to the Architect or Governor chain.");
        }
        if (!gone.empty()) {
            add(ids::modelNotInLibrary, Level::note, stack,
                "Not in the library any more: " + enumerated(gone) + ".",
                "They go on as before, and can't be added again.", {});
        }
        checkTwice(stack, times);
    }

    // One finding for each provider, wherever its models stand.
    void checkProviders() {
        for (const auto& [provider, models] : unconnected_) {
            section_.findings.push_back(
                {.id = ids::modelNotConnected,
                 .level = Level::warning,
                 .subject = nameOfProvider(provider),
                 .sentence = "Isn't connected, since " + whyNotConnected(fields_, provider) + ".",
                 .consequence =
                     "Passed over, and not to be dropped there now: " + enumerated(models) + ".",
                 .remedy = "Sign in or enter the key in the Providers column."});
        }
    }

    void checkTwice(const ModelStack& stack, const std::map<std::string, std::size_t>& times) {
        std::vector<std::string> twice;
        for (const auto& [id, count] : times) {
            if (count > 1) {
                twice.push_back(id);
            }
        }
        if (!twice.empty()) {
            add(ids::modelTwice, Level::warning, stack,
                "More than once in it: " + enumerated(twice) + ".",
                "A model that has failed is tried again.", "Drag one of them out.");
        }
    }

    // The tools of this machine are in no library; of an empty one nothing can be said.
    [[nodiscard]] bool isKnown(const AIModelItem& model) const {
        const auto holds = [&model](const std::vector<AIModelItem>& models) {
            return std::any_of(models.begin(), models.end(),
                               [&](const AIModelItem& each) { return each.id == model.id; });
        };
        return fields_.allLibraryModels.empty() || holds(fields_.allLibraryModels) ||
               holds(fields_.localToolModels);
    }

    void checkHanging(const ModelStack& stack) {
        std::set<std::string> able;
        for (const AIModelItem& model : *stack.models) {
            if (canAnswer(fields_, stack, model)) {
                able.insert(providerOf(model));
            }
        }
        if (able.size() != 1 || able.contains("local") || stack.labels.empty()) {
            return;
        }
        add(ids::chainOneProvider, Level::warning, stack,
            "Everything hangs on " + nameOfProvider(*able.begin()) + ".",
            "While it fails, nobody answers for " + counted(stack.labels.size(), "bot", "bots") +
                ".",
            "Add a model of another provider that is connected.");
    }

    void checkBots(const ModelStack& stack) {
        std::vector<std::string> unknown;
        for (const std::string& label : stack.labels) {
            if (botsAreKnown_ && !isBot(label)) {
                unknown.push_back(label);
            }
        }
        if (!unknown.empty()) {
            add(ids::chainBotUnknown, Level::warning, stack,
                "Assigned to it and no bot: " + enumerated(unknown) + ".",
                "Nothing shows them, and nothing removes them.",
                "Take the label out of the file, or add the bot again.");
        }
    }

    [[nodiscard]] bool isBot(const std::string& label) const {
        return std::any_of(fields_.userBots.begin(), fields_.userBots.end(),
                           [&](const BotConfig& bot) { return bot.launchdLabel == label; });
    }

    void checkAssignments() {
        for (const auto& [chain, labels] : fields_.chainBotAssignments) {
            const std::string& key = chain;
            const bool isChain = std::any_of(stacks_.begin(), stacks_.end(), [&](const auto& each) {
                return each.chain && each.key == key;
            });
            if (!isChain) {
                section_.findings.push_back(
                    {.id = ids::chainUnknown,
                     .level = Level::note,
                     .subject = "chain_bot_assignments.json",
                     .sentence = "There is no chain \"" + key + "\".",
                     .consequence = "Its bots are kept and shown nowhere."});
            }
        }
        std::vector<std::string> idle;
        for (const BotConfig& bot : fields_.userBots) {
            const bool isServed =
                std::any_of(stacks_.begin(), stacks_.end(), [&](const auto& each) {
                    const auto& labels = each.labels;
                    return std::find(labels.begin(), labels.end(), bot.launchdLabel) !=
                           labels.end();
                });
            if (!isServed && bot.role != "governor") {
                idle.push_back(bot.title);
            }
        }
        if (!idle.empty()) {
            section_.findings.push_back(
                {.id = ids::botInNoChain,
                 .level = Level::note,
                 .subject = counted(idle.size(), "bot", "bots"),
                 .sentence = "In no chain and no group: " + enumerated(idle) + ".",
                 .consequence = "What answers for them is for their daemons to say."});
        }
    }

    // Apart from its chain the governor has one choice, which no control shows.
    void checkChoice() {
        const AIModelItem choice{.id = fields_.governorModelId,
                                 .provider_key = fields_.governorProvider};
        if (!checkAuthFor(fields_, choice)) {
            const std::string provider = providerOf(choice);
            section_.findings.push_back(
                {.id = ids::choiceNotConnected,
                 .level = Level::note,
                 .subject = ".preferred-provider.json",
                 .sentence = "The governor's choice is " + fields_.governorModelId + ", and " +
                             nameOfProvider(provider) + " isn't connected, since " +
                             whyNotConnected(fields_, provider) + "."});
        }
    }

    void checkAttachments() {
        for (const CustomBotGroup& group : fields_.customGroups) {
            std::vector<std::string> missing;
            for (const std::string& path : group.attachedPaths) {
                if (!files::exists(path)) {
                    missing.push_back(path);
                }
            }
            if (!missing.empty()) {
                section_.findings.push_back(
                    {.id = ids::groupPathMissing,
                     .level = Level::warning,
                     .subject = "group " + group.name,
                     .sentence = "Attached and not there: " + enumerated(missing) + ".",
                     .consequence = "Its bots are told of files that they can't read.",
                     .remedy = "Put them back, or take them off the group."});
            }
        }
    }

    void add(std::string_view id, Level level, const ModelStack& stack, std::string sentence,
             std::string consequence, std::string remedy) {
        section_.findings.push_back({.id = id,
                                     .level = level,
                                     .subject = stack.name,
                                     .sentence = std::move(sentence),
                                     .consequence = std::move(consequence),
                                     .remedy = std::move(remedy)});
    }

    const SettingsFields& fields_;
    const bool botsAreKnown_;
    const std::vector<ModelStack> stacks_;
    // Provider to its models and where they stand.
    std::map<std::string, std::vector<std::string>> unconnected_;
    Section section_{.check = "chains", .summary = {}};
};

} // namespace

Section checkChains(const SettingsFields& fields, bool botsAreKnown) {
    return ChainsCheck(fields, botsAreKnown).section();
}

} // namespace varnhold::doctor
