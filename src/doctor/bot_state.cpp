#include "doctor/bot_state.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "lifecycle/launch_agent.h"

namespace varnhold::doctor {

namespace {

BotState::Kind kindOf(const BotConfig& bot, const Jobs& jobs, const Job* job) {
    using Kind = BotState::Kind;
    if (job != nullptr) {
        if (job->process) {
            return Kind::running;
        }
        return job->lastStatus == 0 ? Kind::waiting : Kind::crashed;
    }
    if (!isStartable(bot)) {
        return bot.role == "governor" ? Kind::listedOnly : Kind::unstartable;
    }
    if (bot.paused()) {
        return Kind::paused;
    }
    return jobs.answered ? Kind::notLoaded : Kind::unknown;
}

} // namespace

BotState stateOf(const BotConfig& bot, const Jobs& jobs, const Surroundings& surroundings) {
    BotState state;
    if (const auto found = jobs.byLabel.find(bot.launchdLabel); found != jobs.byLabel.end()) {
        state.job = &found->second;
    }
    state.kind = kindOf(bot, jobs, state.job);
    if (state.kind == BotState::Kind::running) {
        if (const auto start = surroundings.startOf(*state.job->process)) {
            state.runsFor = std::max(
                std::chrono::seconds(0),
                std::chrono::duration_cast<std::chrono::seconds>(surroundings.now - *start));
        }
    }
    return state;
}

std::string_view name(BotState::Kind kind) {
    switch (kind) {
    case BotState::Kind::unknown:
        break;
    case BotState::Kind::listedOnly:
        return "listed-only";
    case BotState::Kind::unstartable:
        return "unstartable";
    case BotState::Kind::paused:
        return "paused";
    case BotState::Kind::notLoaded:
        return "not-loaded";
    case BotState::Kind::running:
        return "running";
    case BotState::Kind::waiting:
        return "waiting";
    case BotState::Kind::crashed:
        return "crashed";
    }
    return "unknown";
}

std::string inWords(const BotState& state) {
    switch (state.kind) {
    case BotState::Kind::unknown:
        break;
    case BotState::Kind::listedOnly:
        return "listed only";
    case BotState::Kind::unstartable:
        return "can't be started";
    case BotState::Kind::paused:
        return "paused";
    case BotState::Kind::notLoaded:
        return "not loaded";
    case BotState::Kind::running:
        return "running";
    case BotState::Kind::waiting:
        return "ended, starts again";
    case BotState::Kind::crashed:
        return "crashed: " + endInWords(state.job->lastStatus);
    }
    return "nobody knows";
}

std::optional<std::int64_t> startsOf(const BotState& state) {
    return state.job != nullptr && state.job->folder ? state.job->folder->starts : std::nullopt;
}

std::string startsInWords(const BotState& state) {
    const std::optional<std::int64_t> starts = startsOf(state);
    return starts.has_value() ? std::to_string(starts.value()) : std::string();
}

std::string managerOf(const BotState& state) {
    if (state.job == nullptr || !state.job->folder) {
        return {};
    }
    return state.job->folder->isUnit ? "systemd" : "s6";
}

} // namespace varnhold::doctor
