#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <iostream>
#include <string>
#include <unistd.h>
#include <vector>

#include "launchctl/choose_manager.h"
#include "launchctl/launchctl.h"
#include "platform/executable.h"
#include "platform/runtime_directory.h"

namespace {

// Where something can't be opened, it would look as if it weren't there, and a loaded job as if it
// weren't loaded. So there must be enough for any verb before it begins.
bool hasDescriptors() {
    constexpr int most = 32;
    std::vector<int> opened;
    while (opened.size() < most) {
        const int file = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
        if (file < 0) {
            break;
        }
        opened.push_back(file);
    }
    const int error = errno;
    for (const int file : opened) {
        ::close(file);
    }
    errno = error;
    return opened.size() == most;
}

} // namespace

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
    const auto choose = [&](services::Purpose purpose) {
        return platform::findRuntimeDirectory(platform::runtimeHints())
            .and_then([&](const platform::RuntimeDirectory& runtime) {
                if (!runtime.remark.empty()) {
                    std::cerr << "launchctl: " << runtime.remark << "\n";
                }
                return services::chooseManager(runtime.path, agentExec, purpose);
            });
    };
    if (!hasDescriptors()) {
        std::cerr << "launchctl: too few files may be open at a time: "
                  << std::generic_category().message(errno) << "\n";
        return services::exitUnavailable;
    }
    const int code = services::perform(*command, choose, ::getuid(), std::cout, std::cerr);
    if (!std::cout.flush() && code == services::exitDone) {
        std::cerr << "launchctl: the answer can't be written: "
                  << std::generic_category().message(errno) << "\n";
        return services::exitUnavailable;
    }
    return code;
}
