#include "agent_exec/ended.h"

#include <chrono>
#include <csignal>
#include <cstring>
#include <optional>
#include <string>

#include "base/text.h"

namespace varnhold::services {

AfterEnd waitForTurn(const JobFiles& job) {
    if (job.isLeaving()) {
        return AfterEnd::stayDown;
    }
    const Result<PropertyList> definition = job.definition();
    const bool keepAlive = definition && definition->keepAlive;
    const std::chrono::nanoseconds since = job.sinceStart();
    std::chrono::nanoseconds left =
        since >= throttle ? std::chrono::nanoseconds(0) : throttle - since;
    if (!definition && since == std::chrono::nanoseconds::max()) {
        left = throttle; // the folder has gone, and the note of the last start with it
    }
    const bool waits = keepAlive || !definition;
    const bool skipped = job.waitUnlessSkipped(waits ? left : std::chrono::nanoseconds(0));
    return keepAlive || skipped ? AfterEnd::startAgain : AfterEnd::stayDown;
}

AfterEnd agentEnded(const JobFiles& job, int waitStatus) {
    job.noteEnd(waitStatus);
    return waitForTurn(job);
}

std::optional<int> waitStatusOfUnit(const std::string& code, const std::string& status) {
    if (code == "exited") {
        const auto number = text::parseInteger(status);
        return number ? std::optional(static_cast<int>(*number) << 8) : std::nullopt;
    }
    if (code != "killed" && code != "dumped") {
        return std::nullopt;
    }
    for (int number = 1; number < NSIG; ++number) {
        const char* name = ::sigabbrev_np(number);
        if (name != nullptr && status == name) {
            return number;
        }
    }
    const auto number = text::parseInteger(status);
    return number ? std::optional(static_cast<int>(*number)) : std::nullopt;
}

} // namespace varnhold::services
