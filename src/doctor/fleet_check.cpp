#include "doctor/fleet_check.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "base/files.h"
#include "doctor/bot_findings.h"
#include "doctor/bot_state.h"
#include "doctor/catalogue.h"
#include "doctor/words.h"
#include "lifecycle/launch_agent.h"
#include "records/bots.h"

namespace varnhold::doctor {

namespace {

class FleetCheck {
public:
    FleetCheck(const Surroundings& around, const Jobs& jobs)
        : around_(around), jobs_(jobs), bots_(readBots(around.constants.botsConfigFile)) {}

    [[nodiscard]] Section section() && {
        section_.data["bots"] = json::Value::array();
        if (!bots_) {
            section_.summary = files::exists(around_.constants.botsConfigFile)
                                   ? "no fleet: bots.json can't be used"
                                   : "no fleet yet";
            add({.id = ids::fleetEmpty,
                 .level = Level::warning,
                 .subject = "bots.json",
                 .sentence = "There is no list of bots.",
                 .consequence = "No bot is started or shown.",
                 .remedy = "See what the check of the files says of it."});
            return std::move(section_);
        }
        for (const BotConfig& bot : *bots_) {
            look(bot);
        }
        compareRecords();
        lookAtTheRest();
        section_.table.headings = {"Bot", "State", "For", "Starts", "By"};
        section_.summary = summary();
        return std::move(section_);
    }

private:
    void look(const BotConfig& bot) {
        const BotState state = stateOf(bot, jobs_, around_);
        ++counts_[state.kind];
        std::vector<Finding> found = findingsAbout(bot, state, around_);
        std::optional<Level> level;
        for (const Finding& finding : found) {
            level = std::max(level, std::optional(finding.level));
        }
        show(bot, state, level);
        std::move(found.begin(), found.end(), std::back_inserter(section_.findings));
    }

    void show(const BotConfig& bot, const BotState& state, std::optional<Level> level) {
        const std::string runs = state.runsFor ? durationInWords(*state.runsFor) : "";
        const std::int64_t starts = startsOf(state).value_or(0);
        if (level == Level::note) { // the state is as it should be all the same
            level = std::nullopt;
        }
        section_.table.rows.push_back({level,
                                       !level && state.kind == BotState::Kind::running,
                                       {bot.title.empty() ? bot.role : bot.title, inWords(state),
                                        runs, startsInWords(state), managerOf(state)}});
        json::Value row{{"label", bot.launchdLabel},
                        {"role", bot.role},
                        {"title", bot.title},
                        {"state", name(state.kind)},
                        {"startable", isStartable(bot)},
                        {"paused", bot.paused()}};
        if (state.job != nullptr) {
            if (state.job->process) {
                row["pid"] = *state.job->process;
            }
            row["lastStatus"] = state.job->lastStatus;
        }
        if (state.runsFor) {
            row["runsForSeconds"] = state.runsFor->count();
        }
        if (starts > 0) {
            row["starts"] = starts;
        }
        if (const std::string manager = managerOf(state); !manager.empty()) {
            row["manager"] = manager;
        }
        section_.data["bots"].push_back(std::move(row));
    }

    void compareRecords() {
        std::map<std::string, std::string> labels;
        std::map<std::string, std::string> roles;
        std::vector<std::string> withoutToken;
        for (const BotConfig& bot : *bots_) {
            const auto [label, isNewLabel] = labels.emplace(bot.launchdLabel, bot.title);
            const auto [role, isNewRole] = roles.emplace(bot.role, bot.title);
            if (!isNewLabel) {
                twice(ids::labelTwice, Level::fault, bot,
                      "Has the label of " + label->second + ": " + bot.launchdLabel + ".",
                      "They count as one bot, and the first record is the one that counts.");
            } else if (!isNewRole) {
                twice(ids::roleTwice, Level::warning, bot,
                      "Has the role of " + role->second + ": " + bot.role + ".",
                      "They write into one log and one data folder.");
            }
            if (bot.service == BotService::telegram && bot.token.empty() && isStartable(bot)) {
                withoutToken.push_back(bot.title);
            }
        }
        if (!withoutToken.empty()) {
            add({.id = ids::botWithoutToken,
                 .level = Level::note,
                 .subject = counted(withoutToken.size(), "bot", "bots") + " on Telegram",
                 .sentence = "Without a token: " + shortened(withoutToken) + ".",
                 .consequence = "Their daemons start without TELEGRAM_BOT_TOKEN.",
                 .remedy = "Enter the tokens in the settings window."});
        }
    }

    void twice(std::string_view id, Level level, const BotConfig& bot, const std::string& sentence,
               const std::string& consequence) {
        add({.id = id,
             .level = level,
             .subject = bot.title,
             .sentence = sentence,
             .consequence = consequence,
             .remedy = "Give one of them another."});
    }

    static std::string shortened(std::vector<std::string> names) {
        constexpr std::size_t most = 8;
        const std::size_t count = names.size();
        if (count > most) {
            names.resize(most);
            names.push_back(std::to_string(count - most) + " more");
        }
        return enumerated(names);
    }

    // Jobs that no record stands for, and a fleet of which nothing is loaded.
    void lookAtTheRest() {
        std::set<std::string> labels;
        for (const BotConfig& bot : *bots_) {
            labels.insert(bot.launchdLabel);
        }
        for (const auto& [label, job] : jobs_.byLabel) {
            const bool isAgent =
                label.starts_with("com.ostrelleai.") && label.ends_with(startableSuffix);
            if (isAgent && !labels.contains(label)) {
                add({.id = ids::jobOfNobody,
                     .level = Level::warning,
                     .subject = label,
                     .sentence = "Is loaded, and no bot has this label.",
                     .consequence = "Quit doesn't end it, and it comes back at the next login.",
                     .remedy = "Unload it, and remove its property list.",
                     .command = shellQuoted(around_.launchctlPath) + " bootout gui/$(id -u)/" +
                                shellQuoted(label)});
            }
        }
        if (bots_->empty()) {
            add({.id = ids::fleetEmpty,
                 .level = Level::warning,
                 .subject = "bots.json",
                 .sentence = "The list of bots is empty.",
                 .remedy = "Add a bot in the settings window."});
        }
        gatherNotLoaded();
    }

    // One sentence for a fleet that was never started, instead of one for each of its bots.
    void gatherNotLoaded() {
        const std::size_t down = counts_[BotState::Kind::notLoaded];
        const bool isAnyLoaded =
            std::any_of(jobs_.byLabel.begin(), jobs_.byLabel.end(),
                        [this](const auto& each) { return isOfFleet(each.first); });
        if (down < 2 || isAnyLoaded) {
            return;
        }
        std::erase_if(section_.findings,
                      [](const Finding& each) { return each.id == ids::botNotLoaded; });
        add({.id = ids::fleetNotLoaded,
             .level = Level::warning,
             .subject = "the whole fleet",
             .sentence =
                 "None of the " + counted(down, "bot", "bots") + " that should run is loaded.",
             .consequence = "Either Varnhold isn't running, or the fleet was quit with it.",
             .remedy = "Start Varnhold: it starts the fleet."});
    }

    [[nodiscard]] bool isOfFleet(const std::string& label) const {
        return std::any_of(bots_->begin(), bots_->end(),
                           [&](const BotConfig& bot) { return bot.launchdLabel == label; });
    }

    [[nodiscard]] std::string summary() {
        std::string text = counted(bots_->size(), "bot", "bots");
        const auto append = [&](BotState::Kind kind, const char* words) {
            if (counts_[kind] > 0) {
                text += (text.find(':') == std::string::npos ? ": " : ", ") +
                        std::to_string(counts_[kind]) + " " + words;
            }
        };
        append(BotState::Kind::running, "running");
        append(BotState::Kind::crashed, "crashed");
        append(BotState::Kind::waiting, "starting again");
        append(BotState::Kind::paused, "paused");
        append(BotState::Kind::notLoaded, "not loaded");
        append(BotState::Kind::unstartable, "that can't be started");
        append(BotState::Kind::listedOnly, "listed only");
        append(BotState::Kind::unknown, "of which nobody knows");
        return text;
    }

    void add(Finding finding) { section_.findings.push_back(std::move(finding)); }

    const Surroundings& around_;
    const Jobs& jobs_;
    const Result<std::vector<BotConfig>> bots_;
    Section section_{.check = "fleet", .summary = {}};
    std::map<BotState::Kind, std::size_t> counts_;
};

} // namespace

Section checkFleet(const Surroundings& surroundings, const Jobs& jobs) {
    return FleetCheck(surroundings, jobs).section();
}

} // namespace varnhold::doctor
