#include "launchctl/s6_scanner.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

extern "C" {
#include <s6/supervise.h>
}

#include "agent_exec/signals.h"
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

bool S6Scanner::isRunning() const {
    // Its control pipe can be opened for writing only while it reads.
    const std::string control = folder_ + "/" S6_SVSCAN_CTLDIR "/control";
    const int pipe = ::open(control.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
    if (pipe >= 0) {
        ::close(pipe);
    }
    return pipe >= 0;
}

Result<void> S6Scanner::start() const {
    if (isRunning()) {
        return {};
    }
    if (::mkdir(folder_.c_str(), 0700) != 0 && errno != EEXIST) {
        return failure(folder_ + ": " + std::system_category().message(errno));
    }
    if (!spawnDetached(folder_) || !waitUntil(startLimit, [this] { return isRunning(); })) {
        return failure("s6-svscan can't be started; is s6 installed?");
    }
    return {};
}

void S6Scanner::command(const char* letters) const {
    // If it isn't there to read them, the next start does what they ask for.
    s6_svc_writectl(folder_.c_str(), S6_SVSCAN_CTLDIR, letters, std::strlen(letters));
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
