#include "agent_exec/ended.h"

#include <algorithm>

namespace varnhold::services {

AfterEnd agentEnded(const JobFiles& job, int waitStatus) {
    job.noteEnd(waitStatus);
    const Result<PropertyList> definition = job.definition();
    const bool keepAlive = definition && definition->keepAlive;
    const std::chrono::nanoseconds since = job.sinceStart();
    const std::chrono::nanoseconds left =
        since >= throttle ? std::chrono::nanoseconds(0) : throttle - since;
    const bool hurried = job.waitUnlessHurried(keepAlive ? left : std::chrono::nanoseconds(0));
    return keepAlive || hurried ? AfterEnd::startAgain : AfterEnd::stayDown;
}

} // namespace varnhold::services
