#include "run_listing.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

extern char**
    environ; // NOLINT(readability-redundant-declaration): not every system's header has it

namespace varnhold::doctor {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr auto deadline = 10s;

// The two pipes that the child's outputs go to.
class Pipes {
public:
    Pipes() {
        for (auto& pipe : ends_) {
            if (::pipe(pipe.data()) != 0) {
                pipe = {-1, -1};
            }
            for (const int end : pipe) {
                ::fcntl(end, F_SETFD, FD_CLOEXEC);
            }
        }
    }
    ~Pipes() {
        for (const auto& pipe : ends_) {
            ::close(pipe[0]);
            ::close(pipe[1]);
        }
    }
    Pipes(const Pipes&) = delete;
    Pipes& operator=(const Pipes&) = delete;

    // Becomes standard output and error of the child.
    void handTo(posix_spawn_file_actions_t& actions) const {
        ::posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        ::posix_spawn_file_actions_adddup2(&actions, ends_[0][1], STDOUT_FILENO);
        ::posix_spawn_file_actions_adddup2(&actions, ends_[1][1], STDERR_FILENO);
    }

    // Until both have ended; false if that is too late.
    bool readUntil(Clock::time_point end, std::string& output, std::string& error) {
        for (auto& pipe : ends_) {
            ::close(pipe[1]);
            pipe[1] = -1;
        }
        std::array<pollfd, 2> waits{{{ends_[0][0], POLLIN, 0}, {ends_[1][0], POLLIN, 0}}};
        const std::array<std::string*, 2> texts{&output, &error};
        while (waits[0].fd >= 0 || waits[1].fd >= 0) {
            const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
            if (left <= 0ms ||
                (::poll(waits.data(), waits.size(), static_cast<int>(left.count())) < 0 &&
                 errno != EINTR)) {
                return false;
            }
            for (std::size_t i = 0; i < waits.size(); ++i) {
                if (waits.at(i).revents != 0 && !readSome(waits.at(i).fd, *texts.at(i))) {
                    waits.at(i).fd = -1;
                }
            }
        }
        return true;
    }

private:
    static bool readSome(int file, std::string& text) {
        std::array<char, 65536> buffer{};
        const ssize_t got = ::read(file, buffer.data(), buffer.size());
        text.append(buffer.data(), static_cast<std::size_t>(got > 0 ? got : 0));
        return got > 0 || (got < 0 && errno == EINTR);
    }

    std::array<std::array<int, 2>, 2> ends_{};
};

int exitCodeOf(int waitStatus) {
    return WIFSIGNALED(waitStatus) ? -WTERMSIG(waitStatus) : WEXITSTATUS(waitStatus);
}

} // namespace

ListingRun runListing(const std::string& launchctl) {
    ListingRun run;
    const auto start = Clock::now();
    Pipes pipes;
    posix_spawn_file_actions_t actions{};
    ::posix_spawn_file_actions_init(&actions);
    pipes.handTo(actions);
    std::string program = launchctl;
    std::string verb = "list";
    std::array<char*, 3> arguments{program.data(), verb.data(), nullptr};
    pid_t child = -1;
    const int failed =
        ::posix_spawn(&child, program.c_str(), &actions, nullptr, arguments.data(), environ);
    ::posix_spawn_file_actions_destroy(&actions);
    if (failed != 0) {
        run.error = std::system_category().message(failed);
        return run;
    }
    run.started = true;
    run.timedOut = !pipes.readUntil(start + deadline, run.output, run.error);
    int status = 0;
    if (!run.timedOut && ::waitpid(child, &status, 0) == child) {
        run.exitCode = exitCodeOf(status);
    }
    run.took = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start);
    return run;
}

} // namespace varnhold::doctor
