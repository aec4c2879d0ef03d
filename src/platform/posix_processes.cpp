#include "platform/posix_processes.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <optional>
#include <poll.h>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

#include "base/system_calls.h"
#include "platform/executable.h"

extern char** environ; // NOLINT(readability-redundant-declaration): POSIX leaves it to the program

namespace varnhold::platform {

namespace {

using SteadyClock = std::chrono::steady_clock;
using Deadline = std::optional<SteadyClock::time_point>;

// How often a child is looked at where the system gives no descriptor that tells of its end.
constexpr int lookAgain = 10; // milliseconds

class Descriptor final {
public:
    explicit Descriptor(int number = -1) : number_(number) {}
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { close(); }

    [[nodiscard]] int number() const { return number_; }
    void close() {
        if (number_ >= 0) {
            ::close(std::exchange(number_, -1));
        }
    }

private:
    int number_;
};

// What a child writes to one of its streams.
class Capture final {
public:
    // False if there is no descriptor left for a pipe.
    [[nodiscard]] bool open() {
        std::array<int, 2> ends{-1, -1};
        if (files::makePipe(ends.data()) != 0) {
            return false;
        }
        reading_ = Descriptor(ends[0]);
        writing_ = Descriptor(ends[1]);
        return ::fcntl(ends[0], F_SETFL, O_NONBLOCK) == 0;
    }
    [[nodiscard]] int childsEnd() const { return writing_.number(); }
    void giveAway() { writing_.close(); }

    // Closed at the end of what the child writes, and then never ready.
    [[nodiscard]] pollfd waitable() const { return {reading_.number(), POLLIN, 0}; }

    // Takes what is there, without waiting.
    void read() {
        std::array<char, 16384> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init)
        while (reading_.number() >= 0) {
            const ssize_t got = ::read(reading_.number(), buffer.data(), buffer.size());
            if (got > 0) {
                text_.append(buffer.data(), static_cast<std::size_t>(got));
            } else if (got == 0 || (errno != EINTR && errno != EAGAIN)) {
                reading_.close();
            } else if (errno == EAGAIN) {
                return;
            }
        }
    }
    [[nodiscard]] std::string take() { return std::move(text_); }

private:
    Descriptor reading_;
    Descriptor writing_;
    std::string text_;
};

// Words as the system wants them: a list of pointers that ends with none.
class Words final {
public:
    explicit Words(std::vector<std::string> words) : words_(std::move(words)) {
        for (std::string& word : words_) {
            pointers_.push_back(word.data());
        }
        pointers_.push_back(nullptr);
    }
    [[nodiscard]] char* const* data() const { return pointers_.data(); }

private:
    std::vector<std::string> words_;
    std::vector<char*> pointers_;
};

std::vector<std::string> commandLine(const ProcessRequest& request) {
    std::vector<std::string> words{request.program};
    words.insert(words.end(), request.arguments.begin(), request.arguments.end());
    return words;
}

std::vector<std::string> assignments(const EnvironmentMap& environment) {
    std::vector<std::string> words;
    for (const auto& [name, value] : environment) {
        words.push_back(name);
        words.back().append("=").append(value);
    }
    return words;
}

// How a child's streams, signals and session are to be.
class Setting final {
public:
    Setting() {
        ::posix_spawn_file_actions_init(&actions);
        ::posix_spawnattr_init(&attributes);
        ::posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        sigset_t signals;
        ::sigemptyset(&signals);
        ::posix_spawnattr_setsigmask(&attributes, &signals);
        ::sigaddset(&signals, SIGPIPE);
        ::sigaddset(&signals, SIGCHLD);
        ::posix_spawnattr_setsigdefault(&attributes, &signals);
        setFlags(0);
    }
    ~Setting() {
        ::posix_spawn_file_actions_destroy(&actions);
        ::posix_spawnattr_destroy(&attributes);
    }
    Setting(const Setting&) = delete;
    Setting& operator=(const Setting&) = delete;

    void direct(Stream stream, const Capture& capture, int number) {
        if (stream == Stream::captured) {
            ::posix_spawn_file_actions_adddup2(&actions, capture.childsEnd(), number);
        } else if (stream == Stream::discarded) {
            ::posix_spawn_file_actions_addopen(&actions, number, "/dev/null", O_WRONLY, 0);
        }
    }
    // Away from the terminal that the program may have been started from.
    void giveOwnSession() { setFlags(POSIX_SPAWN_SETSID); }

    posix_spawn_file_actions_t actions{};
    posix_spawnattr_t attributes{};

private:
    void setFlags(int more) {
        const int flags = POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | more;
        ::posix_spawnattr_setflags(&attributes, static_cast<short>(flags));
    }
};

// The child's process id, or 0 and why there is none.
pid_t spawn(const ProcessRequest& request, const Setting& setting, std::string& error) {
    const Words words(commandLine(request));
    const Words variables(request.environment ? assignments(*request.environment)
                                              : std::vector<std::string>());
    pid_t child = 0;
    const int failure =
        ::posix_spawn(&child, request.program.c_str(), &setting.actions, &setting.attributes,
                      words.data(), request.environment ? variables.data() : environ);
    if (failure != 0) {
        error = std::strerror(failure); // NOLINT(concurrency-mt-unsafe): not in this library
        return 0;
    }
    return child;
}

// True once the child has ended. Where somebody has made the system throw ends away, nothing is
// known but that there is no such child any more.
bool hasEnded(pid_t child, int flags, int& status) {
    while (true) {
        const pid_t found = ::waitpid(child, &status, flags);
        if (found >= 0 || errno != EINTR) {
            return found != 0;
        }
    }
}

// At most until the deadline, in poll's milliseconds.
int timeLeft(const Deadline& deadline, bool isTold) {
    int wait = isTold ? -1 : lookAgain;
    if (deadline) {
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(*deadline - SteadyClock::now());
        const int bounded = static_cast<int>(std::clamp<long long>(left.count(), 0, 3600000));
        wait = wait < 0 ? bounded : std::min(wait, bounded);
    }
    return wait;
}

// Takes what the child writes until it has ended: a process of its own that still holds the pipes
// isn't waited for. False at the deadline.
bool awaitEnd(pid_t child, std::array<Capture, 2>& captures, const Deadline& deadline,
              int& status) {
    const Descriptor end(exitDescriptor(child));
    while (!hasEnded(child, WNOHANG, status)) {
        if (deadline && SteadyClock::now() >= *deadline) {
            return false;
        }
        std::array<pollfd, 3> waited{pollfd{end.number(), POLLIN, 0}, captures[0].waitable(),
                                     captures[1].waitable()};
        ::poll(waited.data(), waited.size(), timeLeft(deadline, end.number() >= 0));
        captures[0].read();
        captures[1].read();
    }
    captures[0].read();
    captures[1].read();
    return true;
}

void noteEnd(ProcessResult& result, int status) {
    result.signalled = WIFSIGNALED(status);
    result.status = result.signalled ? WTERMSIG(status) : WEXITSTATUS(status);
}

bool openIfCaptured(Capture& capture, Stream stream) {
    return stream != Stream::captured || capture.open();
}

} // namespace

ProcessResult PosixProcesses::run(const ProcessRequest& request) {
    reap();
    ProcessResult result;
    std::array<Capture, 2> captures;
    if (!openIfCaptured(captures[0], request.standardOutput) ||
        !openIfCaptured(captures[1], request.standardError)) {
        result.startError = std::strerror(errno); // NOLINT(concurrency-mt-unsafe)
        return result;
    }
    Setting setting;
    setting.direct(request.standardOutput, captures[0], STDOUT_FILENO);
    setting.direct(request.standardError, captures[1], STDERR_FILENO);
    const pid_t child = spawn(request, setting, result.startError);
    if (child == 0) {
        return result;
    }
    result.started = true;
    captures[0].giveAway();
    captures[1].giveAway();
    Deadline deadline;
    if (request.deadline) {
        deadline = SteadyClock::now() + *request.deadline;
    }
    int status = 0;
    if (!awaitEnd(child, captures, deadline, status)) {
        ::kill(child, SIGKILL);
        keep(child); // it may be stuck where no signal reaches it
        result.signalled = true;
        result.status = SIGKILL;
        return result;
    }
    noteEnd(result, status);
    result.standardOutput = captures[0].take();
    result.standardError = captures[1].take();
    return result;
}

void PosixProcesses::start(const ProcessRequest& request) {
    reap();
    const Capture none;
    Setting setting;
    setting.direct(request.standardOutput, none, STDOUT_FILENO);
    setting.direct(request.standardError, none, STDERR_FILENO);
    setting.giveOwnSession();
    std::string error;
    if (const pid_t child = spawn(request, setting, error)) {
        keep(child);
    }
}

void PosixProcesses::keep(pid_t child) {
    const std::lock_guard guard(mutex_);
    left_.push_back(child);
}

void PosixProcesses::reap() {
    const std::lock_guard guard(mutex_);
    std::erase_if(left_, [](pid_t child) {
        int status = 0;
        return hasEnded(child, WNOHANG, status);
    });
}

} // namespace varnhold::platform
