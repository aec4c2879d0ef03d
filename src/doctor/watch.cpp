#include "doctor/watch.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "base/dates.h"
#include "doctor/columns.h"
#include "doctor/event_table.h"
#include "doctor/examination.h"
#include "doctor/tones.h"
#include "doctor/words.h"
#include "status/bars.h"
#include "status/counts.h"

namespace varnhold::doctor {

namespace {

const std::vector<std::string>& headings() {
    static const std::vector<std::string> texts{"Bot",    "State",      "Pid", "For",
                                                "Starts", "Last model", "Busy"};
    return texts;
}

constexpr std::size_t signWidth = 2;
constexpr std::size_t narrowestColumn = 3;

Sign signOf(BotState::Kind kind) {
    switch (kind) {
    case BotState::Kind::running:
        return {"●", Tone::green};
    case BotState::Kind::crashed:
        return {"✗", Tone::red};
    case BotState::Kind::waiting:
    case BotState::Kind::unstartable:
        return {"!", Tone::yellow};
    default:
        return {"○", Tone::dim};
    }
}

std::string troubleOf(const ListingRun& run) {
    if (!run.started) {
        return "launchctl can't be run: " + run.error;
    }
    return run.timedOut ? "launchctl doesn't answer" : "launchctl has failed: " + run.error;
}

std::string shown(const Secrets& secrets, const std::string& text) {
    return printable(secrets.mask(std::string_view(text)));
}

std::string processInWords(const BotState& state) {
    return state.job != nullptr && state.job->process ? std::to_string(state.job->process.value())
                                                      : std::string();
}

} // namespace

void Watch::look(const Surroundings& surroundings) {
    const auto bots = readBots(surroundings.constants.botsConfigFile);
    const Jobs jobs = findJobs(surroundings);
    const Secrets secrets = gatherSecrets(surroundings, jobs);
    trouble_ = !bots           ? "bots.json can't be used; see varnhold-doctor files"
               : jobs.answered ? ""
                               : shown(secrets, troubleOf(jobs.run));
    const std::vector<BotConfig> fleet = valueOrEmpty(bots);
    title_ = "Varnhold" + statusTitle(countBots(fleet, jobs.shown)) + "   " +
             dates::iso8601(surroundings.now);
    const auto events = readEvents(surroundings.constants.governorDBPath);
    const auto models =
        events && *events ? (*events)->models : std::map<std::string, std::string>();
    std::vector<std::string> roles;
    roles.reserve(fleet.size());
    for (const BotConfig& bot : fleet) {
        roles.push_back(bot.role);
    }
    const ActivitySample sample = sampleActivity(roles, jobs.shown, marks_);
    for (const auto& [role, count] : sample.marks) {
        marks_[role] = count;
    }
    rows_.clear();
    for (const BotConfig& bot : fleet) {
        const BotState state = stateOf(bot, jobs, surroundings);
        const auto model = models.find(bot.role);
        const auto target = sample.targets.find(bot.role);
        rows_.push_back(
            {state.kind,
             {shown(secrets, bot.title), inWords(state), processInWords(state),
              state.runsFor ? durationInWords(*state.runsFor) : "", startsInWords(state),
              model == models.end() ? "Idle" : shown(secrets, model->second),
              target != sample.targets.end() && target->second > 0 ? "▮▮▮" : ""}});
    }
}

// As wide as their widest cell, and where that is too much, the widest give way.
std::vector<std::size_t> Watch::widths(std::size_t most) const {
    std::vector<std::size_t> widths;
    for (const std::string& heading : headings()) {
        widths.push_back(columnsOf(heading));
    }
    for (const Row& row : rows_) {
        for (std::size_t i = 0; i < row.cells.size(); ++i) {
            widths[i] = std::max(widths[i], columnsOf(row.cells[i]));
        }
    }
    std::size_t used = signWidth;
    for (const std::size_t width : widths) {
        used += width + columnGap;
    }
    for (; used > most + columnGap; --used) {
        auto widest = std::max_element(widths.begin(), widths.end());
        if (*widest <= narrowestColumn) {
            break;
        }
        --*widest;
    }
    return widths;
}

std::vector<std::string> Watch::lines(const TextStyle& style, std::size_t height) const {
    const std::vector<std::size_t> columns = widths(style.width);
    const auto cut = [](const std::string& text, std::size_t width) {
        std::string out = fitted(text, width);
        return out.erase(out.find_last_not_of(' ') + 1);
    };
    const std::size_t textWidth = style.width - std::min(style.width, signWidth);
    const auto joined = [&](const std::vector<std::string>& cells) {
        std::string out;
        for (std::size_t i = 0; i < cells.size(); ++i) {
            out += fitted(cells[i], columns[i]) + std::string(columnGap, ' ');
        }
        return cut(out.erase(out.find_last_not_of(' ') + 1), textWidth);
    };
    std::vector<std::string> out{toned(Tone::bold, cut(title_, style.width), style.color),
                                 toned(Tone::red, cut(trouble_, style.width), style.color),
                                 std::string(signWidth, ' ') +
                                     toned(Tone::dim, joined(headings()), style.color)};
    const std::size_t frame = out.size() + 2; // the two lines at the end
    const std::size_t shown = std::min(height > frame ? height - frame : 0, rows_.size());
    for (std::size_t i = 0; i < shown; ++i) {
        const Sign sign = signOf(rows_[i].kind);
        out.push_back(toned(sign.tone, sign.text, style.color) + " " + joined(rows_[i].cells));
    }
    const std::size_t hidden = rows_.size() - shown;
    out.push_back(
        hidden == 0 ? "" : cut("… and " + counted(hidden, "more bot", "more bots"), style.width));
    out.push_back(toned(Tone::dim, cut("q ends", style.width), style.color));
    out.resize(std::min(out.size(), height));
    return out;
}

std::string frameOf(const std::vector<std::string>& lines) {
    std::string out = "\x1b[H";
    for (std::size_t i = 0; i < lines.size(); ++i) {
        out += (i == 0 ? "" : "\r\n") + lines[i] + "\x1b[K";
    }
    return out + "\x1b[J";
}

} // namespace varnhold::doctor
