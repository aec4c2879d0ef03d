#include "agent_exec/job_files.h"

#include <cerrno>
#include <ctime>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "base/files.h"
#include "base/text.h"

namespace varnhold::services {

namespace {

using namespace std::chrono_literals;

std::chrono::nanoseconds machineTime() {
    timespec now{};
    ::clock_gettime(CLOCK_BOOTTIME, &now);
    return std::chrono::seconds(now.tv_sec) + std::chrono::nanoseconds(now.tv_nsec);
}

std::optional<std::int64_t> readNumber(const std::string& path) {
    const Result<std::string> text = files::read(path);
    return text ? text::parseInteger(*text) : std::nullopt;
}

// As in s6: a file that holds the number of the descriptor on which a job says that it is up.
constexpr const char* readyFile = "notification-fd";
constexpr const char* readyDescriptor = "3";

} // namespace

Result<PropertyList> JobFiles::definition() const {
    return files::read(definitionPath()).and_then([](const std::string& content) {
        return decodePropertyList(content);
    });
}

std::optional<int> JobFiles::lastEnd() const {
    const auto number = readNumber(at("last-end"));
    return number ? std::optional(static_cast<int>(*number)) : std::nullopt;
}

// These notes only make listings and pauses better; an agent runs without them as well.
void JobFiles::noteEnd(int waitStatus) const {
    static_cast<void>(files::writeAtomically(at("last-end"), std::to_string(waitStatus)));
}

void JobFiles::noteStart() const {
    static_cast<void>(
        files::writeAtomically(at("last-start"), std::to_string(machineTime().count())));
}

std::chrono::nanoseconds JobFiles::sinceStart() const {
    const auto start = readNumber(at("last-start"));
    return start ? machineTime() - std::chrono::nanoseconds(*start)
                 : std::chrono::nanoseconds::max();
}

void JobFiles::hurry() const {
    static_cast<void>(files::writeInPlace(at("hurry"), ""));
    const int pipe = ::open(at("wake").c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
    if (pipe >= 0) { // somebody waits
        const char byte = 1;
        static_cast<void>(!::write(pipe, &byte, 1));
        ::close(pipe);
    }
}

void JobFiles::forgetHurry() const {
    ::unlink(at("hurry").c_str());
}

bool JobFiles::waitUnlessHurried(std::chrono::nanoseconds duration) const {
    // Opened for both directions, so that it never reads as closed. The pipe comes first: a hurry
    // after this point wakes the wait, and one before it has left its file.
    const int pipe = ::open(at("wake").c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
    const auto end = machineTime() + duration;
    bool hurried = files::exists(at("hurry"));
    while (!hurried) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - machineTime());
        if (left <= 0ms) {
            break;
        }
        pollfd wake{.fd = pipe, .events = POLLIN, .revents = 0};
        const int ready = ::poll(&wake, 1, static_cast<int>(left.count()));
        hurried = ready > 0;
        if (ready < 0 && errno != EINTR) {
            break;
        }
    }
    if (pipe >= 0) {
        ::close(pipe);
    }
    forgetHurry();
    return hurried;
}

Result<void> JobFiles::askToListen() const {
    return files::writeInPlace(at(readyFile), readyDescriptor);
}

void JobFiles::tellReady() const {
    if (const auto descriptor = readNumber(at(readyFile))) {
        // Nobody listens where a person runs this by hand, and then nothing is lost.
        static_cast<void>(!::write(static_cast<int>(*descriptor), "\n", 1));
        ::close(static_cast<int>(*descriptor));
    }
}

bool JobFiles::isAtRest() const {
    return files::exists(at("at-rest"));
}

Result<void> JobFiles::putToRest() const {
    return files::writeInPlace(at("at-rest"), "");
}

void JobFiles::wakeFromRest() const {
    ::unlink(at("at-rest").c_str());
}

bool JobFiles::isUnit() const {
    return files::exists(at("is-unit"));
}

Result<void> JobFiles::markAsUnit() const {
    return files::writeInPlace(at("is-unit"), "");
}

bool JobFiles::isLeaving() const {
    return files::exists(at("leaving"));
}

void JobFiles::markLeaving() const {
    static_cast<void>(files::writeInPlace(at("leaving"), ""));
}

Result<void> JobFiles::makeWakePipe() const {
    if (::mkfifo(at("wake").c_str(), 0600) != 0) {
        return failure(at("wake") + ": " + std::system_category().message(errno));
    }
    return {};
}

} // namespace varnhold::services
