#include <string>

#include "base/unicode.h"
#include "settings/settings_state.h"
#include "shell/daemon_code.h"

namespace varnhold {

namespace {

constexpr int noArchitectModel = 2;
constexpr int noCodingModel = 3;

platform::ProcessRequest scriptRequest(const platform::Platform& platform,
                                       const Constants& constants) {
    return {.program = findPython(platform.system),
            .arguments = {autoSetupScript(platform.system)},
            .environment =
                platform::EnvironmentMap{{"DAEMON_DATA_DIR", constants.appSupportDir},
                                         {"DAEMON_RESOURCES", daemonResourcesPath(platform.system)},
                                         {"HOME", constants.appHome},
                                         {"PATH", agentPath}},
            .standardOutput = platform::Stream::captured,
            .standardError = platform::Stream::captured};
}

// Output as the user will read it; what isn't text at all counts as nothing.
std::string textOf(const std::string& output) {
    return unicode::isValidUtf8(output) ? output : std::string();
}

std::string trimmed(const std::string& text) {
    return std::string(unicode::trimmed(text));
}

std::string messageFor(const platform::ProcessResult& result) {
    if (!result.started) {
        return "✗ failed to launch: " + result.startError;
    }
    const std::string output = textOf(result.standardOutput);
    const std::string errors = textOf(result.standardError);
    // A signal's number says nothing about chains.
    const int status = result.signalled ? -1 : result.status;
    if (status == 0) {
        return "✓ " + trimmed(output);
    }
    if (status == noArchitectModel) {
        return "Please assign an Architect AI model first (drag at least one model into the "
               "Architect Chain).";
    }
    if (status == noCodingModel) {
        return "Please assign a Coding AI model first (drag at least one model into the Coding "
               "Chain).";
    }
    return "✗ exit " + std::to_string(result.status) + ": " +
           trimmed(errors.empty() ? output : errors);
}

} // namespace

void ModelSelectorView::runAutoSetup() {
    autoSetupRunning = true;
    autoSetupMessage.clear();
    changed();
    platform::background(
        platform_.queues, platform::Priority::userInitiated, alive_,
        [&platform = platform_, &constants = constants_] {
            return platform.processes.run(scriptRequest(platform, constants));
        },
        [this](const platform::ProcessResult& result) { finishAutoSetup(result); });
}

void ModelSelectorView::finishAutoSetup(const platform::ProcessResult& result) {
    autoSetupRunning = false;
    autoSetupMessage = messageFor(result);
    if (result.started && !result.signalled && result.status == 0) {
        for (const TargetList list : allTargetLists) {
            loadChain(list);
        }
    }
    changed();
}

} // namespace varnhold
