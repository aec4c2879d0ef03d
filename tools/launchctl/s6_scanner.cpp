#include "launchctl/s6_scanner.h"

#include <cstdlib>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "agent_exec/signals.h"
#include "launchctl/tree_names.h"
#include "launchctl/waiting.h"

namespace varnhold::services {

namespace {

using namespace std::chrono_literals;

constexpr auto startLimit = 10s;
constexpr auto stopLimit = 10s;
constexpr const char* mostServices = "10000"; // far above any fleet; the default of 500 isn't

// In the grandchild: no terminal, no folder, no descriptor, no variable and no way with signals of
// the caller's is left.
[[noreturn]] void becomeScanner(const char* folder) {
    resetSignals();
    const int null = ::open("/dev/null", O_RDWR);
    for (int target = 0; target <= 2; ++target) {
        ::dup2(null, target);
    }
    ::close_range(3, ~0U, 0);
    static_cast<void>(!::chdir("/"));
    char path[] = "PATH=/usr/bin:/bin:/usr/sbin:/sbin";
    char* const environment[] = {path, nullptr};
    for (const char* program :
         {"/usr/bin/s6-svscan", "/bin/s6-svscan", "/usr/local/bin/s6-svscan"}) {
        ::execle(program, "s6-svscan", "-c", mostServices, "--", folder, nullptr, environment);
    }
    ::_exit(127);
}

// Forks twice, so that the scanner belongs to the system and never to us.
bool spawnDetached(const std::string& folder) {
    const pid_t child = ::fork();
    if (child == 0) {
        ::setsid();
        const pid_t grandchild = ::fork();
        if (grandchild == 0) {
            becomeScanner(folder.c_str());
        }
        ::_exit(grandchild > 0 ? 0 : 1);
    }
    int status = 0;
    return child > 0 && ::waitpid(child, &status, 0) == child && status == 0;
}

} // namespace

// Its pipe can be opened for writing only while it reads.
int S6Scanner::openControl() const {
    const auto within = [](const JobFiles::Folder& folder, const char* name) {
        return folder ? valueOrEmpty(folder->findIn(name)) : std::nullopt;
    };
    const auto state = within(within(store_.folder(), tree::scan), tree::scannerState);
    return state ? state->open("control", O_WRONLY | O_NONBLOCK) : -1;
}

bool S6Scanner::isRunning() const {
    const int pipe = openControl();
    if (pipe >= 0) {
        ::close(pipe);
    }
    return pipe >= 0;
}

Result<void> S6Scanner::start() const {
    if (isRunning()) {
        return {};
    }
    if (!spawnDetached(store_.path() + "/" + tree::scan) ||
        !waitUntil(startLimit, [this] { return isRunning(); })) {
        return failure("s6-svscan can't be started; is s6 installed?");
    }
    return {};
}

void S6Scanner::command(std::string_view letters) const {
    const int pipe = openControl();
    if (pipe >= 0) { // or else the next start does what they ask for
        static_cast<void>(!::write(pipe, letters.data(), letters.size()));
        ::close(pipe);
    }
}

void S6Scanner::rescan() const {
    command("a");
}

Result<void> S6Scanner::stop() const {
    command("t");
    if (!waitUntil(stopLimit, [this] { return !isRunning(); })) {
        return failure("s6-svscan doesn't end");
    }
    return {};
}

} // namespace varnhold::services
