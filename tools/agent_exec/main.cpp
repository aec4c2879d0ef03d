// Runs one agent for a service manager.
//
//   agent-exec FOLDER                        becomes the agent that the folder's property list
//   defines agent-exec --ended FOLDER CODE SIGNAL    after its end; exits with 125 if it is to stay
//   down
//
// CODE and SIGNAL are as s6 hands them to a finish script: above 255 the code means that a signal
// ended the agent. Keys and tokens are only ever in the property list, never in these arguments.

#include <csignal>
#include <cstdio>
#include <string>
#include <sys/prctl.h>
#include <unistd.h>

#include "agent_exec/ended.h"
#include "agent_exec/start.h"
#include "base/text.h"

namespace {

using namespace varnhold;
using namespace varnhold::services;

constexpr int wrongUse = 64;
constexpr int stayDown = 125; // s6-supervise takes this for "don't start it again"
constexpr std::int64_t endedBySignal = 256;

int start(const std::string& folder) {
    // Should the manager's own process for this job be killed, its successor would start a second
    // agent beside this one.
    const pid_t parent = ::getppid();
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != parent) {
        return cannotSpawn;
    }
    const JobFiles job(folder);
    job.forgetHurry();
    job.noteStart();
    const Result<PropertyList> definition = job.definition();
    if (!definition) {
        std::fprintf(stderr, "agent-exec: %s\n", definition.error().c_str());
        return cannotSpawn;
    }
    job.tellReady();
    return becomeAgent(*definition);
}

int ended(const std::string& folder, std::int64_t code, std::int64_t signal) {
    const std::int64_t waitStatus = code >= endedBySignal ? signal : code << 8;
    const AfterEnd next = agentEnded(JobFiles(folder), static_cast<int>(waitStatus));
    return next == AfterEnd::stayDown ? stayDown : 0;
}

} // namespace

int main(int argc, char** argv) {
    const std::string first = argc > 1 ? argv[1] : "";
    if (argc == 2 && !first.starts_with("--")) {
        return start(first);
    }
    if (argc == 5 && first == "--ended") {
        const auto code = text::parseInteger(argv[3]);
        const auto signal = text::parseInteger(argv[4]);
        if (code && signal) {
            return ended(argv[2], *code, *signal);
        }
    }
    std::fprintf(stderr, "Usage: agent-exec FOLDER\n"
                         "       agent-exec --ended FOLDER CODE SIGNAL\n");
    return wrongUse;
}
