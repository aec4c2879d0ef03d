#include "doctor/bot_findings.h"

#include <chrono>
#include <string>
#include <string_view>

#include "base/files.h"
#include "doctor/catalogue.h"
#include "doctor/file_state.h"
#include "doctor/logs.h"
#include "doctor/property_list_check.h"
#include "doctor/words.h"
#include "lifecycle/launch_agent.h"

namespace varnhold::doctor {

namespace {

using namespace std::chrono_literals;

// An agent that has just been started after a bad end may end the same way again.
constexpr auto justStarted = 60s;
// A bot may have nothing to say for a while; this long it says at least that it lives.
constexpr auto longSilence = 1h;

class BotCheck {
public:
    BotCheck(const BotConfig& bot, const BotState& state, const Surroundings& around)
        : bot_(bot), state_(state), around_(around) {}

    [[nodiscard]] std::vector<Finding> findings() && {
        checkRecord();
        checkLife();
        if (isStartable(bot_)) {
            checkDefinition();
            checkFolder();
        }
        if (state_.kind == BotState::Kind::running) {
            checkLogs();
        }
        return std::move(findings_);
    }

private:
    void checkRecord() {
        const bool hasBlank = bot_.launchdLabel.find_first_of(" \t") != std::string::npos;
        if (state_.kind == BotState::Kind::unstartable) {
            add(ids::botNotStartable, Level::warning,
                "The label " + bot_.launchdLabel + " doesn't end in " + startableSuffix + ".",
                "The bot is listed and never started.",
                "Remove the bot and add it again in the settings window.");
        }
        if (bot_.role.empty()) {
            add(ids::roleEmpty, Level::warning, "The role is empty.",
                "Its data folder is that of all bots, and it is never asked to keep a cache warm.",
                "Remove the bot and add it again with a role.");
        } else if (hasBlank) {
            add(ids::roleBlank, Level::warning, "The label holds a blank.",
                "Menu, counts and bars show the bot as stopped whether or not it runs.",
                "Remove the bot and add it again with a role without blanks.");
        } else if (isStartable(bot_) && bot_.launchdLabel != labelOfRole(bot_.role)) {
            add(ids::labelOfOtherRole, Level::note,
                "The label isn't that of the role, which would be " + labelOfRole(bot_.role) + ".",
                "The bot's bar stays flat, however busy it is.",
                "Give the record that label, or leave it.");
        }
    }

    void checkLife() {
        using Kind = BotState::Kind;
        if (bot_.paused() && state_.job != nullptr) {
            add(ids::botPausedButLoaded, Level::warning, "The bot is paused, and still loaded.",
                "Pausing keeps it out of the next start and leaves it as it is until Quit.",
                "Unload it.", bootout());
        }
        if (state_.kind == Kind::notLoaded) {
            add(ids::botNotLoaded, Level::warning, "The bot isn't loaded.",
                "Nobody starts it until somebody does in the menu.",
                "Choose it in the menu, or \"Start All Agents\".");
        } else if (state_.kind == Kind::crashed) {
            crashed();
        } else if (state_.kind == Kind::waiting) {
            add(ids::botEnded, Level::note, "The daemon has ended by itself, with success.",
                "It is started again in a few seconds, as every loaded agent is.", {});
        } else if (state_.kind == Kind::running && state_.job->lastStatus != 0 &&
                   state_.runsFor.value_or(justStarted) < justStarted) {
            flapping();
        }
        if (state_.job != nullptr && state_.job->folder && !state_.job->folder->logError.empty()) {
            add(ids::logRefused, Level::warning,
                "A log can't be used: " + state_.job->folder->logError + ".",
                "What the daemon says is lost, and its bar stays flat.",
                "Move away what stands in the log's place, and restart the bot.", kickstart());
        }
    }

    void crashed() {
        const auto& folder = state_.job->folder;
        if (folder && !folder->spawnError.empty()) {
            add(ids::botNotSpawned, Level::fault,
                "The daemon can't be started at all: " + folder->spawnError + ".",
                "It is tried again every ten seconds.",
                "Put in place what is missing; nothing else needs to be done.");
            return;
        }
        add(ids::botCrashed, Level::fault,
            "The daemon ended with " + endInWords(state_.job->lastStatus) + ends() + ".",
            "It is started again every ten seconds for as long as it is loaded.", readOn());
        findings_.back().lines = lastWords(bot_.role);
    }

    void flapping() {
        add(ids::botFlapping, Level::fault,
            "The daemon runs for " + durationInWords(*state_.runsFor) +
                " only, after it had ended with " + endInWords(state_.job->lastStatus) + ends() +
                ".",
            "It will likely end the same way, and be started again every ten seconds.", readOn());
        findings_.back().lines = lastWords(bot_.role);
    }

    // How many times so far, where that is known.
    [[nodiscard]] std::string ends() const {
        const std::string starts = startsInWords(state_);
        return starts.empty() || starts == "1" ? "" : ", after " + starts + " starts";
    }

    [[nodiscard]] std::string readOn() const {
        return "Read on in " + logPath(bot_.role) + " and " + errorLogPath(bot_.role) + ".";
    }

    // What is loaded counts for the agent that runs, what is on disk for the next start.
    void checkDefinition() {
        Constants constants = around_.home;
        constants.authConfigFile = around_.constants.authConfigFile;
        const PropertyList now =
            agentDefinition(constants, around_.bundlePath, files::exists, bot_);
        if (const Result<std::string> encoded = encodePropertyList(now); !encoded) {
            add(ids::propertyListImpossible, Level::fault,
                "No property list can be made: " + encoded.error() + ".",
                "The bot can't be started.", "Take the character out of the record.");
            return;
        }
        if (state_.job != nullptr && state_.job->folder && state_.job->folder->loaded) {
            const auto changes = differences(*state_.job->folder->loaded, now);
            if (!changes.empty()) {
                add(ids::agentOutdated, Level::warning,
                    "What it was started with is out of date: " + enumerated(changes) + ".",
                    "The agent goes on with the old values.",
                    "Choose \"Restart All Agents\", or the bot in the menu, twice.");
            }
            return;
        }
        checkFile(now);
    }

    void checkFile(const PropertyList& now) {
        const std::string path = propertyListPath(around_.home, bot_.launchdLabel);
        const FileState file = fileStateOf(path);
        if (file.kind != FileState::Kind::read) {
            if (state_.job != nullptr) {
                add(ids::propertyListMissing, Level::warning, "The property list is missing.",
                    "The agent runs on and won't come back at the next login.",
                    "Choose \"Restart All Agents\".");
            }
            return;
        }
        const Result<PropertyList> list = decodePropertyList(file.content);
        if (!list) {
            add(ids::propertyListBroken, Level::warning,
                "The property list can't be used: " + list.error() + ".",
                "The agent won't come back at the next login. The next start by Varnhold makes the "
                "file anew.",
                "Start the bot in the menu.");
            findings_.back().place = Place{path};
            return;
        }
        const auto changes = differences(*list, now);
        if (!changes.empty()) {
            add(ids::propertyListStale, Level::note,
                "The property list is out of date: " + enumerated(changes) + ".",
                "The next start by Varnhold makes it anew; the next login would take it as it is.",
                {});
            findings_.back().place = Place{path};
        }
    }

    void checkFolder() {
        const std::string path = around_.constants.appSupportDir + "/data/" + bot_.role;
        if (files::exists(path) && !files::isDirectory(path)) {
            add(ids::botFolderBlocked, Level::fault,
                "A file stands in the place of the data folder " + path + ".",
                "The daemon has nowhere to keep anything.", "Move it away.");
        }
    }

    void checkLogs() {
        const auto last = lastWritten(bot_.role);
        if (!state_.runsFor || *state_.runsFor < longSilence) {
            return;
        }
        if (!last) {
            add(ids::botSilent, Level::warning, "The daemon runs and has no log.",
                "Its bar stays flat.", "Restart it, so that it opens one.", kickstart());
            return;
        }
        const auto silence = std::chrono::duration_cast<std::chrono::seconds>(around_.now - *last);
        if (silence > longSilence) {
            add(ids::botSilent, Level::warning,
                "The daemon runs and hasn't said anything for " + durationInWords(silence) + ".",
                "It may hang, or there is nothing for it to do.",
                "Write to the bot; should it not answer, restart it.", kickstart());
            findings_.back().lines = lastWords(bot_.role);
        }
    }

    [[nodiscard]] std::string target() const {
        return "gui/$(id -u)/" + shellQuoted(bot_.launchdLabel);
    }
    [[nodiscard]] std::string bootout() const {
        return shellQuoted(around_.launchctlPath) + " bootout " + target();
    }
    [[nodiscard]] std::string kickstart() const {
        return shellQuoted(around_.launchctlPath) + " kickstart -k " + target();
    }

    void add(std::string_view id, Level level, std::string sentence, std::string consequence,
             std::string remedy, std::string command = {}) {
        findings_.push_back({.id = id,
                             .level = level,
                             .subject = bot_.title.empty() ? bot_.role : bot_.title,
                             .sentence = std::move(sentence),
                             .consequence = std::move(consequence),
                             .remedy = std::move(remedy),
                             .command = std::move(command)});
    }

    const BotConfig& bot_;
    const BotState& state_;
    const Surroundings& around_;
    std::vector<Finding> findings_;
};

} // namespace

std::vector<Finding> findingsAbout(const BotConfig& bot, const BotState& state,
                                   const Surroundings& surroundings) {
    return BotCheck(bot, state, surroundings).findings();
}

} // namespace varnhold::doctor
