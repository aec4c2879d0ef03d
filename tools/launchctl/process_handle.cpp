#include "launchctl/process_handle.h"

#include <csignal>
#include <cstdio>
#include <memory>
#include <poll.h>
#include <string_view>
#include <unistd.h>

extern "C" { // this header of glibc 2.36 doesn't say so itself
#include <sys/pidfd.h>
}

namespace varnhold::services {

std::chrono::nanoseconds timeOfTicks(std::uint64_t ticks) {
    constexpr std::uint64_t second = 1'000'000'000;
    const auto inSecond = static_cast<std::uint64_t>(::sysconf(_SC_CLK_TCK));
    return std::chrono::nanoseconds(ticks * (second / inSecond));
}

// The name in the line may hold anything, also brackets and blanks; the numbers follow its last.
std::optional<ProcessIdentity> identify(pid_t process) {
    const std::string path = "/proc/" + std::to_string(process) + "/stat";
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "re"),
                                                               &std::fclose);
    char buffer[1024];
    const std::size_t length = file ? std::fread(buffer, 1, sizeof buffer, file.get()) : 0;
    const std::string_view line(buffer, length);
    const std::size_t bracket = line.rfind(')');
    ProcessIdentity found{.process = process};
    char state = 'X';
    constexpr const char* layout = " %c %d %*d %*d %*d %*d %*u %*u %*u %*u %*u %*u %*u %*d %*d %*d "
                                   "%*d %*d %*d %ju";
    std::uintmax_t start = 0;
    if (bracket == std::string_view::npos ||
        // NOLINTNEXTLINE(cert-err34-c): the system wrote these numbers
        std::sscanf(std::string(line.substr(bracket + 1)).c_str(), layout, &state, &found.parent,
                    &start) != 3 ||
        state == 'Z' || state == 'X') {
        return std::nullopt;
    }
    found.start = start;
    return found;
}

ProcessHandle::ProcessHandle(pid_t process) : handle_(::pidfd_open(process, 0)) {}

ProcessHandle::~ProcessHandle() {
    if (handle_ >= 0) {
        ::close(handle_);
    }
}

void ProcessHandle::waitForEnd(std::chrono::milliseconds limit) const {
    pollfd ended{.fd = handle_, .events = POLLIN, .revents = 0};
    if (handle_ >= 0) {
        ::poll(&ended, 1, static_cast<int>(limit.count()));
    }
}

bool ProcessHandle::hasEnded() const {
    pollfd ended{.fd = handle_, .events = POLLIN, .revents = 0};
    return handle_ < 0 || ::poll(&ended, 1, 0) > 0;
}

void ProcessHandle::askToEnd() const {
    ::pidfd_send_signal(handle_, SIGTERM, nullptr, 0);
}

void ProcessHandle::kill() const {
    ::pidfd_send_signal(handle_, SIGKILL, nullptr, 0);
}

} // namespace varnhold::services
