#include <csignal>
#include <iostream>
#include <unistd.h>

#include "launchctl/choose_manager.h"
#include "launchctl/launchctl.h"
#include "platform/executable.h"
#include "platform/runtime_directory.h"

int main(int argc, char** argv) {
    using namespace varnhold;
    // A pipe whose reader has just ended is an error to be told, not an end of this program.
    std::signal(SIGPIPE, SIG_IGN);
    // A caller that ignores it hands that down, and then nobody can wait for a child.
    std::signal(SIGCHLD, SIG_DFL);
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    const auto command = services::parseCommandLine(arguments);
    if (!command) {
        std::cerr << "launchctl: " << command.error() << "\nTry: launchctl --help\n";
        return services::exitWrongUse;
    }
    const std::string own = platform::executablePath();
    const std::string agentExec = own.substr(0, own.rfind('/') + 1) + "agent-exec";
    const auto choose = [&] {
        return platform::findRuntimeDirectory(platform::runtimeHints())
            .and_then([&](const platform::RuntimeDirectory& runtime) {
                if (!runtime.remark.empty()) {
                    std::cerr << "launchctl: " << runtime.remark << "\n";
                }
                return services::chooseManager(runtime.path, agentExec);
            });
    };
    return services::perform(*command, choose, ::getuid(), std::cout, std::cerr);
}
