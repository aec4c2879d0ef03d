#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "doctor/jobs.h"
#include "doctor/surroundings.h"
#include "records/bots.h"

namespace varnhold::doctor {

// How one bot stands, as the listing and the process table have it.
struct BotState {
    enum class Kind {
        unknown,    // nobody could be asked
        listedOnly, // the governor: it is listed and never started
        unstartable,
        paused, // and not loaded
        notLoaded,
        running,
        waiting, // loaded, ended well, and about to be started again
        crashed, // loaded, and ended badly
    };

    Kind kind = Kind::unknown;
    const Job* job = nullptr; // none if it isn't loaded
    std::optional<std::chrono::seconds> runsFor = std::nullopt;
};

[[nodiscard]] BotState stateOf(const BotConfig& bot, const Jobs& jobs,
                               const Surroundings& surroundings);

// One word for programs: "running", "crashed", "not-loaded", ...
[[nodiscard]] std::string_view name(BotState::Kind kind);

// "running", "crashed: exit code 3", "paused".
[[nodiscard]] std::string inWords(const BotState& state);

// How often it was started since it was loaded, where anybody counts.
[[nodiscard]] std::optional<std::int64_t> startsOf(const BotState& state);

// The same as a number in words; empty where nobody counts.
[[nodiscard]] std::string startsInWords(const BotState& state);

// "systemd", "s6", or nothing where the system doesn't tell.
[[nodiscard]] std::string managerOf(const BotState& state);

} // namespace varnhold::doctor
