#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <vector>

#include "doctor/catalogue.h"
#include "doctor/chains_check.h"
#include "doctor/stacks_of_models.h"
#include "settings/placement_checks.h"

namespace varnhold::doctor {

namespace {

constexpr std::array<const char*, 4> assumptions{
    "The models of a chain or group are tried from the top, as the window says.",
    "Those are passed over that couldn't be dropped there now: their provider isn't connected, or "
    "they can't serve there.",
    "While a provider fails, so do all models that are reached through it, whoever made them.",
    "A bot is served by the chains and groups that it is assigned to; what answers for one that is "
    "in none is for its daemon to say."};

std::string nameOf(const AIModelItem* model) {
    return model == nullptr ? "nobody" : model->name;
}

json::Value idOf(const AIModelItem* model) {
    return model == nullptr ? json::Value() : json::Value(model->id);
}

class WithoutCheck {
public:
    WithoutCheck(const SettingsFields& fields, std::string provider)
        : fields_(fields), provider_(std::move(provider)), stacks_(stacksOf(fields)) {}

    [[nodiscard]] Section section() && {
        section_.data["provider"] = provider_;
        for (const char* key : {"chains", "groups", "bots"}) {
            section_.data[key] = json::Value::array();
        }
        for (const ModelStack& stack : stacks_) {
            look(stack);
        }
        for (const BotConfig& bot : fields_.userBots) {
            look(bot);
        }
        checkProvider();
        section_.data["assumptions"] = assumptions;
        for (const char* each : assumptions) {
            section_.remarks.emplace_back(each);
        }
        section_.table.headings = {"List or bot", "Answers now",
                                   "Without " + nameOfProvider(provider_)};
        section_.summary = "while " + nameOfProvider(provider_) + " fails: " +
                           (silenced_ == 0 ? "somebody answers wherever somebody does now"
                                           : "nobody answers any more in " +
                                                 counted(silenced_, "place", "places"));
        return std::move(section_);
    }

private:
    // A row for a list of models, or a line of a bot's.
    std::optional<Level> show(std::string name, const ModelStack& stack) {
        const AIModelItem* now = whoAnswers(fields_, stack);
        const AIModelItem* then = whoAnswers(fields_, stack, provider_);
        std::optional<Level> level;
        if (then == nullptr && now != nullptr) {
            level = stack.labels.empty() ? Level::warning : Level::fault;
        }
        section_.table.rows.push_back(
            {level, then != nullptr, {std::move(name), nameOf(now), nameOf(then)}});
        return level;
    }

    void look(const ModelStack& stack) {
        if (stack.models->empty() && stack.labels.empty()) {
            return;
        }
        const auto level = show(stack.name, stack);
        section_.data[stack.chain ? "chains" : "groups"].push_back(answersOf(stack));
        if (level) {
            ++silenced_;
            section_.findings.push_back(
                {.id = ids::withoutNobody,
                 .level = *level,
                 .subject = stack.name,
                 .sentence = "Nobody answers while " + nameOfProvider(provider_) + " fails.",
                 .consequence =
                     counted(stack.labels.size(), "bot is", "bots are") + " assigned to it.",
                 .remedy = "Add a model of another provider that is connected."});
        }
    }

    void look(const BotConfig& bot) {
        json::Value row{{"label", bot.launchdLabel}, {"title", bot.title}};
        row["serves"] = json::Value::array();
        for (const ModelStack& stack : stacks_) {
            const auto& labels = stack.labels;
            if (std::find(labels.begin(), labels.end(), bot.launchdLabel) != labels.end()) {
                show(bot.title + ", " + stack.name, stack);
                row["serves"].push_back(answersOf(stack));
            }
        }
        section_.data["bots"].push_back(std::move(row));
    }

    // A name that nobody knows would look like good news.
    void checkProvider() {
        const bool isKnown = std::any_of(stacks_.begin(), stacks_.end(), [this](const auto& stack) {
            return std::any_of(stack.models->begin(), stack.models->end(),
                               [this](const auto& each) { return providerOf(each) == provider_; });
        });
        if (!isKnown) {
            section_.findings.push_back(
                {.id = ids::withoutUnknown,
                 .level = Level::warning,
                 .subject = provider_,
                 .sentence = "No model of any chain or group is reached through it.",
                 .remedy = "See with --json chains which provider each model has."});
        }
    }

    [[nodiscard]] json::Value answersOf(const ModelStack& stack) const {
        return {{stack.chain ? "chain" : "group", stack.key},
                {"now", idOf(whoAnswers(fields_, stack))},
                {"then", idOf(whoAnswers(fields_, stack, provider_))}};
    }

    const SettingsFields& fields_;
    const std::string provider_;
    const std::vector<ModelStack> stacks_;
    Section section_{.check = "without", .summary = {}};
    std::size_t silenced_ = 0;
};

} // namespace

Section checkWithout(const SettingsFields& fields, const std::string& provider) {
    return WithoutCheck(fields, providerNamed(provider)).section();
}

} // namespace varnhold::doctor
