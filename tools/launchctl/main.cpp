#include <csignal>
#include <cstdlib>
#include <iostream>
#include <unistd.h>

#include "launchctl/choose_manager.h"
#include "launchctl/launchctl.h"
#include "platform/executable.h"
#include "platform/runtime_directory.h"

int main(int argc, char** argv) {
    using namespace varnhold;
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    // A supervisor may close its control pipe just before it is told to end.
    std::signal(SIGPIPE, SIG_IGN);
    const auto command = services::parseCommandLine(arguments);
    if (!command) {
        std::cerr << "launchctl: " << command.error() << "\nTry: launchctl --help\n";
        return services::exitWrongUse;
    }
    const std::string own = platform::executablePath();
    const std::string agentExec = own.substr(0, own.rfind('/') + 1) + "agent-exec";
    // NOLINTNEXTLINE(concurrency-mt-unsafe): this program has one thread
    const std::string runtime =
        platform::runtimeDirectory(std::getenv("XDG_RUNTIME_DIR"), ::getuid());
    const auto manager = services::chooseManager(runtime, agentExec);
    return services::perform(*command, *manager, ::getuid(), std::cout, std::cerr);
}
