// Tells why a bot is down or a list is empty. Reads only.

#include <chrono>
#include <cstdlib>
#include <iostream>
#include <map>
#include <memory>
#include <string>
#include <sys/ioctl.h>
#include <unistd.h>
#include <vector>

#include "base/text.h"
#include "disk_room.h"
#include "display_tray.h"
#include "doctor/command_line.h"
#include "doctor/examination.h"
#include "doctor/json_report.h"
#include "doctor/text_report.h"
#include "platform/posix_processes.h"
#include "platform/posix_system.h"
#include "process_table.h"
#include "run_listing.h"
#include "session_tray.h"
#include "shell/constants.h"
#include "shell/version.h"
#include "watch_loop.h"

extern char**
    environ; // NOLINT(readability-redundant-declaration): not every system's header has it

namespace {

using namespace varnhold;
using namespace varnhold::doctor;

std::string variable(const char* name) {
    const char* value = std::getenv(name); // NOLINT(concurrency-mt-unsafe): one thread
    return value == nullptr ? "" : value;
}

std::map<std::string, std::string> environmentVariables() {
    std::map<std::string, std::string> variables;
    for (char** entry = environ; *entry != nullptr; ++entry) {
        const std::string text = *entry;
        const std::size_t sign = text.find('=');
        if (sign != std::string::npos) {
            variables.emplace(text.substr(0, sign), text.substr(sign + 1));
        }
    }
    return variables;
}

TextStyle styleOf(const Command& command) {
    TextStyle style;
    const bool isTerminal = ::isatty(STDOUT_FILENO) != 0;
    style.color =
        command.color && isTerminal && variable("NO_COLOR").empty() && variable("TERM") != "dumb";
    winsize size{};
    if (isTerminal && ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0) {
        style.width = size.ws_col;
    } else if (const auto columns = text::parseUnsigned(variable("COLUMNS"))) {
        style.width = *columns;
    }
    return style;
}

// What is looked at, for as long as it is.
struct Home {
    explicit Home(const Command& command)
        : constants(command.data.empty() ? home : Constants(home.appHome, command.data)) {}

    [[nodiscard]] Surroundings surroundings() const {
        return {.constants = constants,
                .home = home,
                .now = std::chrono::system_clock::now(),
                .diskRoom = diskRoomOf,
                .environment = environmentVariables(),
                .bundlePath = system->bundlePath(),
                .runtimeFolder = system->runtimeDirectory(),
                .launchctlPath = system->launchctlPath(),
                .listJobs = [this] { return runListing(*processes, system->launchctlPath()); },
                .startOf = startOfProcess,
                .processes = ownProcesses,
                .lockHolder = holderOfLock,
                .hasTray = sessionHasTray,
                .hasEmbeddedTray = displayHasTray};
    }

    const std::unique_ptr<platform::System> system = platform::makeSystem();
    const std::unique_ptr<platform::Processes> processes =
        std::make_unique<platform::PosixProcesses>();
    const Constants home{system->homeDirectory()};
    const Constants constants;
};

int examineAll(const Command& command) {
    const Home home(command);
    const auto [report, secrets] = examine(home.surroundings(), command);
    std::cout << (command.json ? jsonReport(report, secrets)
                               : textReport(report, secrets, styleOf(command)));
    std::cout.flush();
    return exitCode(report);
}

int watch(const Command& command) {
    const Home home(command);
    return watchFleet([&home] { return home.surroundings(); }, styleOf(command).color);
}

} // namespace

int main(int argc, char** argv) {
    const auto command = parseCommandLine(std::vector<std::string>(argv + 1, argv + argc));
    if (!command) {
        std::cerr << "varnhold-doctor: " << command.error() << "\nTry: varnhold-doctor --help\n";
        return exitWrongUse;
    }
    switch (command->kind) {
    case Command::Kind::help:
        std::cout << helpText();
        return EXIT_SUCCESS;
    case Command::Kind::version:
        std::cout << "varnhold-doctor of Varnhold " << varnhold::version << "\n";
        return EXIT_SUCCESS;
    case Command::Kind::watch:
        return watch(*command);
    case Command::Kind::examine:
        break;
    }
    return examineAll(*command);
}
