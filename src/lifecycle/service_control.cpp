#include "lifecycle/service_control.h"

#include <algorithm>
#include <vector>

#include "base/text.h"
#include "base/unicode.h"
#include "lifecycle/launch_agent.h"
#include "records/bots.h"

namespace varnhold {

namespace {

using platform::ProcessRequest;
using platform::Stream;

constexpr std::string_view pidKey = "\"PID\"";

ProcessRequest launchctl(const FleetContext& context, std::vector<std::string> arguments) {
    return {.program = context.platform.system.launchctlPath(), .arguments = std::move(arguments)};
}

void runDetached(const FleetContext& context, std::vector<std::string> arguments) {
    ProcessRequest request = launchctl(context, std::move(arguments));
    request.standardOutput = Stream::discarded;
    request.standardError = Stream::discarded;
    context.platform.processes.start(request);
}

// The file to load a label from; rewritten first where the record allows, so that a start from the
// menu always has the present keys.
std::string pathToLoad(const FleetContext& context, const std::string& label) {
    const std::vector<BotConfig> bots = loadBots(context.constants);
    const auto bot = std::find_if(bots.begin(), bots.end(), [&](const BotConfig& each) {
        return each.launchdLabel == label;
    });
    if (bot != bots.end()) {
        if (const auto path = generatePlist(context, *bot)) {
            return *path;
        }
    }
    return propertyListPath(context.constants, label);
}

} // namespace

std::string domainTarget(const FleetContext& context) {
    return "gui/" + std::to_string(context.platform.system.userId());
}

std::string serviceTarget(const FleetContext& context, const std::string& label) {
    return domainTarget(context) + "/" + label;
}

std::string listJobs(const FleetContext& context) {
    ProcessRequest request = launchctl(context, {"list"});
    request.standardOutput = Stream::captured;
    request.deadline = listingDeadline;
    return context.platform.processes.run(request).standardOutput;
}

void bootstrap(const FleetContext& context, const std::string& path) {
    context.platform.processes.run(launchctl(context, {"bootstrap", domainTarget(context), path}));
}

void bootout(const FleetContext& context, const std::string& label) {
    context.platform.processes.run(launchctl(context, {"bootout", serviceTarget(context, label)}));
}

bool listsLivingProcess(std::string_view listing) {
    if (!unicode::isValidUtf8(listing)) {
        return false;
    }
    for (const std::string_view line : text::split(listing, '\n')) {
        const std::string_view entry = text::trim(line, " \t");
        if (!entry.starts_with(pidKey)) {
            continue;
        }
        const auto pieces = text::split(entry, '=');
        if (pieces.size() < 2) {
            continue;
        }
        if (const auto pid = text::parseInteger(text::trim(pieces[1], " ;"))) {
            return *pid > 0;
        }
    }
    return false;
}

bool isDaemonOnline(const FleetContext& context, const std::string& label) {
    ProcessRequest request = launchctl(context, {"list", label});
    request.standardOutput = Stream::captured;
    request.standardError = Stream::discarded;
    request.deadline = listingDeadline;
    return listsLivingProcess(context.platform.processes.run(request).standardOutput);
}

void restartDaemon(const FleetContext& context, const std::string& label) {
    runDetached(context, {"kickstart", "-k", serviceTarget(context, label)});
}

void stopDaemon(const FleetContext& context, const std::string& label) {
    runDetached(context, {"stop", label});
}

void toggleDaemon(const FleetContext& context, const std::string& label, bool running) {
    if (running) {
        bootout(context, label);
    } else {
        bootstrap(context, pathToLoad(context, label));
    }
}

} // namespace varnhold
