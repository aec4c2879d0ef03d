#include "launchctl/s6_scanner.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <optional>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

#include "jobs/signals.h"
#include "jobs/tree_names.h"
#include "launchctl/waiting.h"

namespace varnhold::services {

namespace {

using namespace std::chrono_literals;

constexpr auto startLimit = 10s;
constexpr auto stopLimit = 10s;
constexpr const char* mostServices = "10000"; // far above any fleet; the default of 500 isn't

// A step on the way to the scanner that has failed, as it is told through the pipe.
struct Trouble {
    enum class Step { fork, execute } step;
    int error;
};

constexpr int pipeOfScanner = 3;

[[noreturn]] void tell(int pipe, Trouble::Step step) {
    const Trouble trouble{step, errno};
    static_cast<void>(!::write(pipe, &trouble, sizeof trouble));
    ::_exit(127);
}

// In the grandchild: no terminal, no folder, no descriptor, no variable and no way with signals of
// the caller's is left, and the pipe closes as the scanner begins.
[[noreturn]] void becomeScanner(const std::vector<std::string>& programs, const char* folder,
                                int pipe) {
    resetSignals();
    const int null = ::open("/dev/null", O_RDWR);
    if (pipe != pipeOfScanner) {
        ::dup2(pipe, pipeOfScanner);
    }
    ::fcntl(pipeOfScanner, F_SETFD, FD_CLOEXEC);
    for (int target = 0; target <= 2; ++target) {
        ::dup2(null, target);
    }
    ::close_range(pipeOfScanner + 1, ~0U, 0);
    static_cast<void>(!::chdir("/"));
    char path[] = "PATH=/usr/bin:/bin:/usr/sbin:/sbin";
    char* const environment[] = {path, nullptr};
    for (const std::string& program : programs) {
        ::execle(program.c_str(), "s6-svscan", "-c", mostServices, "--", folder, nullptr,
                 environment);
    }
    tell(pipeOfScanner, Trouble::Step::execute);
}

// Forks twice, so that the scanner belongs to the system and never to us. Returns when it has been
// executed.
Result<void> spawnDetached(const std::vector<std::string>& programs, const std::string& folder) {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0) {
        return failure(std::system_category().message(errno));
    }
    const pid_t child = ::fork();
    if (child == 0) {
        ::setsid();
        const pid_t grandchild = ::fork();
        if (grandchild == 0) {
            becomeScanner(programs, folder.c_str(), ends[1]);
        }
        if (grandchild < 0) {
            tell(ends[1], Trouble::Step::fork);
        }
        ::_exit(0);
    }
    Trouble trouble{Trouble::Step::fork, errno};
    ::close(ends[1]);
    bool failed = child < 0;
    if (child > 0) {
        failed = ::read(ends[0], &trouble, sizeof trouble) == static_cast<ssize_t>(sizeof trouble);
        ::waitpid(child, nullptr, 0);
    }
    ::close(ends[0]);
    if (!failed) {
        return {};
    }
    const std::string reason = std::system_category().message(trouble.error);
    if (trouble.step == Trouble::Step::fork) {
        return failure("no process can be started: " + reason);
    }
    const char* guess = trouble.error == ENOENT ? "; is s6 installed?" : "";
    return failure("s6-svscan can't be executed: " + reason + guess);
}

} // namespace

std::vector<std::string> S6Scanner::places() {
    return {"/usr/bin/s6-svscan", "/bin/s6-svscan", "/usr/local/bin/s6-svscan"};
}

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
    return spawnDetached(programs_, store_.path() + "/" + tree::scan).and_then([this] {
        return waitUntil(startLimit, [this] { return isRunning(); })
                   ? Result<void>()
                   : failure("s6-svscan doesn't come up");
    });
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
