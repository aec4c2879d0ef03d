#pragma once

#include <array>

// What stands in the folder of a loaded job, by name: what every job has, what the managers add to
// it, and what their own programs make there. All that is removed with a job is told here.
namespace varnhold::services::job {

inline constexpr const char* definition = "job.plist";
inline constexpr const char* lastEnd = "last-end";
inline constexpr const char* lastStart = "last-start";
inline constexpr const char* starts = "starts";
inline constexpr const char* skipThrottle = "skip-throttle";
inline constexpr const char* wakePipe = "wake";
inline constexpr const char* leaving = "leaving";
inline constexpr const char* logTrouble = "log-trouble";
inline constexpr const char* spawnTrouble = "spawn-trouble";

// Under systemd.
inline constexpr const char* held = "held";
inline constexpr const char* isUnit = "is-unit";

// Under s6, which gives these their names.
inline constexpr const char* run = "run";
inline constexpr const char* finish = "finish";
inline constexpr const char* timeoutKill = "timeout-kill";
inline constexpr const char* timeoutFinish = "timeout-finish";
inline constexpr const char* down = "down";
// Holds the number of the descriptor on which a job says that it is up.
inline constexpr const char* readyDescriptor = "notification-fd";
inline constexpr const char* supervise = "supervise";
inline constexpr const char* event = "event";

inline constexpr std::array files{
    definition, lastEnd,     lastStart,     starts, skipThrottle,   wakePipe,
    leaving,    logTrouble,  spawnTrouble,  held,   isUnit,         run,
    finish,     timeoutKill, timeoutFinish, down,   readyDescriptor};
inline constexpr std::array folders{supervise, event};

} // namespace varnhold::services::job
