// Runs one agent for a service manager.
//
//   agent-exec FOLDER                    becomes the agent that the folder's property list defines
//   agent-exec FOLDER ./run              the same, as the interpreter of s6's script of that name
//   agent-exec --ended FOLDER CODE SIGNAL     after its end; exits with 125 if it is to stay down
//   agent-exec FOLDER ./finish CODE SIGNAL    the same, as an interpreter
//   agent-exec --wait FOLDER             waits until the agent may be started
//   agent-exec --unit FOLDER             becomes the agent, as the main process of a systemd unit
//   agent-exec --note FOLDER             after its end, with EXIT_CODE and EXIT_STATUS set
//
// The first four are for s6, whose finish script is given CODE and SIGNAL: above 255 the code means
// that a signal ended the agent. More words may follow those of a script. The others are for
// systemd. Keys and tokens are only ever in the property list, never in these arguments.

#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <sys/prctl.h>
#include <unistd.h>

#include "agent_exec/ended.h"
#include "agent_exec/start.h"
#include "base/text.h"
#include "jobs/s6_readiness.h"
#include "jobs/unit_marks.h"

namespace {

using namespace varnhold;
using namespace varnhold::services;

constexpr int wrongUse = 64;
constexpr int stayDown = 125; // s6-supervise takes this for "don't start it again"
constexpr std::int64_t endedBySignal = 256;

JobFiles jobAt(const std::string& folder) {
    auto job = JobFiles::at(folder);
    if (!job) {
        std::fprintf(stderr, "agent-exec: %s\n", job.error().c_str());
        return JobFiles(std::nullopt);
    }
    return *std::move(job);
}

int start(const JobFiles& job) {
    if (job.isLeaving()) {
        return 0; // its unloading was cut short, and somebody was put in its supervisor's place
    }
    job.forgetSkip();
    if (job.folder() && !job.noteStart()) {
        // Nobody could tell later when it started. So the pause comes before the start instead of
        // after it, and a crash loop goes on as slowly as ever.
        static_cast<void>(job.waitUnlessSkipped(throttle));
    }
    const Result<PropertyList> definition = job.definition();
    if (!definition) {
        std::fprintf(stderr, "agent-exec: %s\n", definition.error().c_str());
        job.noteSpawnTrouble(definition.error());
        return cannotSpawn;
    }
    job.noteSpawnTrouble("");
    tellReady(job);
    return becomeAgent(*definition, job);
}

int startSupervised(const std::string& folder) {
    // Should s6's own process for this job be killed, its successor would start a second agent
    // beside this one. A systemd unit is a child of the one manager and needs nothing like it.
    const pid_t parent = ::getppid();
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    return ::getppid() == parent ? start(jobAt(folder)) : cannotSpawn;
}

int startUnit(const std::string& folder) {
    const JobFiles job = jobAt(folder);
    return isHeld(job) ? 0 : start(job);
}

int note(const std::string& folder) {
    const JobFiles job = jobAt(folder);
    const char* code = std::getenv("EXIT_CODE");     // NOLINT(concurrency-mt-unsafe)
    const char* status = std::getenv("EXIT_STATUS"); // NOLINT(concurrency-mt-unsafe)
    if (code != nullptr && status != nullptr && !isHeld(job)) {
        if (const auto waitStatus = waitStatusOfUnit(code, status)) {
            job.noteEnd(*waitStatus);
        }
    }
    return 0;
}

int complain() {
    std::fprintf(stderr, "Usage: agent-exec FOLDER\n"
                         "       agent-exec --ended FOLDER CODE SIGNAL\n"
                         "       agent-exec --wait|--unit|--note FOLDER\n");
    return wrongUse;
}

int ended(const std::string& folder, const char* codeText, const char* signalText) {
    const auto code = text::parseInteger(codeText);
    const auto signal = text::parseInteger(signalText);
    if (!code || !signal) {
        return complain();
    }
    const std::int64_t waitStatus = *code >= endedBySignal ? *signal : *code << 8;
    const AfterEnd next = agentEnded(jobAt(folder), static_cast<int>(waitStatus));
    return next == AfterEnd::stayDown ? stayDown : 0;
}

} // namespace

int main(int argc, char** argv) {
    const std::string first = argc > 1 ? argv[1] : "";
    const std::string second = argc > 2 ? argv[2] : "";
    if (!first.empty() && !first.starts_with("--")) {
        if (argc == 2 || second == "./run") {
            return startSupervised(first);
        }
        return argc >= 5 && second == "./finish" ? ended(first, argv[3], argv[4]) : complain();
    }
    if (argc == 3 && first == "--wait") {
        static_cast<void>(waitForTurn(jobAt(second))); // the unit starts it in any case
        return 0;
    }
    if (argc == 3 && first == "--unit") {
        return startUnit(second);
    }
    if (argc == 3 && first == "--note") {
        return note(second);
    }
    return argc == 5 && first == "--ended" ? ended(second, argv[3], argv[4]) : complain();
}
