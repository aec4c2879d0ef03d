#include "jobs/job_files.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <ctime>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "base/text.h"
#include "jobs/job_names.h"

namespace varnhold::services {

namespace {

std::chrono::nanoseconds machineTime() {
    timespec now{};
    ::clock_gettime(CLOCK_BOOTTIME, &now);
    return std::chrono::seconds(now.tv_sec) + std::chrono::nanoseconds(now.tv_nsec);
}

constexpr std::size_t noteLength = 64;
constexpr std::size_t countLength = 1; // it only grows, so nothing of the last is left behind it
constexpr const char* none = "-";

} // namespace

Result<JobFiles> JobFiles::at(const std::string& path) {
    return platform::PrivateFolder::find(path).and_then([&](auto found) -> Result<JobFiles> {
        return found ? Result<JobFiles>(JobFiles(std::move(found)))
                     : failure(path + ": there is no such job any more");
    });
}

Result<void> JobFiles::write(const char* name, const std::string& content, mode_t mode) const {
    return folder_ ? folder_->write(name, content, mode) : failure("the job has no folder");
}

Result<std::string> JobFiles::read(const char* name) const {
    return folder_ ? folder_->read(name) : failure("the job has no folder");
}

std::optional<std::int64_t> JobFiles::readNumber(const char* name) const {
    const Result<std::string> text = read(name);
    return text ? text::parseInteger(text->substr(0, text->find(' '))) : std::nullopt;
}

// Notes only make listings and pauses better; an agent runs without them as well.
// They are written over one another in the room that was made for them at first.
bool JobFiles::note(const char* name, const std::string& text, std::size_t length) const {
    const int file = folder_ ? folder_->open(name, O_WRONLY | O_CREAT | O_NONBLOCK) : -1;
    if (file < 0) {
        return false;
    }
    std::string padded = text;
    padded.resize(std::max(padded.size(), length), ' ');
    const bool written =
        ::pwrite(file, padded.data(), padded.size(), 0) == static_cast<ssize_t>(padded.size());
    ::close(file);
    return written;
}

void JobFiles::remove(const char* name) const {
    if (folder_) {
        folder_->remove(name);
    }
}

int JobFiles::openPipe(int way) const {
    return folder_ ? folder_->open(job::wakePipe, way | O_NONBLOCK) : -1;
}

Result<PropertyList> JobFiles::definition() const {
    return read(job::definition).and_then([](const std::string& content) {
        return decodePropertyList(content);
    });
}

Result<void> JobFiles::setDefinition(const std::string& content) const {
    return write(job::definition, content).and_then([this]() -> Result<void> {
        return note(job::lastStart, none, noteLength) && note(job::lastEnd, none, noteLength) &&
                       note(job::starts, "0", countLength)
                   ? Result<void>()
                   : failure(path() + ": " + std::system_category().message(errno));
    });
}

std::optional<int> JobFiles::lastEnd() const {
    const auto number = readNumber(job::lastEnd);
    return number ? std::optional(static_cast<int>(*number)) : std::nullopt;
}

void JobFiles::noteEnd(int waitStatus) const {
    note(job::lastEnd, std::to_string(waitStatus), noteLength);
}

bool JobFiles::noteStart() const {
    note(job::starts, std::to_string(starts() + 1), countLength);
    return note(job::lastStart,
                std::to_string(machineTime().count()) + " " + std::to_string(::getpid()),
                noteLength);
}

std::int64_t JobFiles::starts() const {
    return readNumber(job::starts).value_or(0);
}

std::optional<JobFiles::Start> JobFiles::lastStart() const {
    const auto time = readNumber(job::lastStart);
    const Result<std::string> whole = read(job::lastStart);
    if (!time || !whole) {
        return std::nullopt;
    }
    const std::size_t second = std::min(whole->find(' '), whole->size() - 1) + 1;
    const auto process =
        text::parseInteger(whole->substr(second, whole->find(' ', second) - second));
    return Start{std::chrono::nanoseconds(*time), static_cast<pid_t>(process.value_or(0))};
}

// A start that lies ahead was noted before the machine's own.
std::chrono::nanoseconds JobFiles::sinceStart() const {
    const auto start = lastStart();
    const auto now = machineTime();
    return start && start->time <= now ? now - start->time : std::chrono::nanoseconds::max();
}

void JobFiles::skipThrottle() const {
    static_cast<void>(write(job::skipThrottle, ""));
    const int pipe = openPipe(O_WRONLY);
    if (pipe >= 0) { // somebody waits
        const char byte = 1;
        static_cast<void>(!::write(pipe, &byte, 1));
        ::close(pipe);
    }
}

void JobFiles::forgetSkip() const {
    remove(job::skipThrottle);
}

bool JobFiles::waitUnlessSkipped(std::chrono::nanoseconds duration) const {
    // Opened for both directions, so that it never reads as closed. The pipe comes first: a skip
    // after this point wakes the wait, and one before it has left its file.
    const int pipe = openPipe(O_RDWR);
    const auto end = machineTime() + duration;
    bool skipped = has(job::skipThrottle);
    while (!skipped) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - machineTime());
        if (left.count() <= 0) {
            break;
        }
        pollfd wake{.fd = pipe, .events = POLLIN, .revents = 0};
        const int ready = ::poll(&wake, 1, static_cast<int>(left.count()));
        skipped = ready > 0;
        if (ready < 0 && errno != EINTR) {
            break;
        }
    }
    if (pipe >= 0) {
        ::close(pipe);
    }
    forgetSkip();
    return skipped;
}

void JobFiles::noteLogTrouble(const std::string& lines) const {
    if (lines.empty()) {
        remove(job::logTrouble);
    } else {
        static_cast<void>(write(job::logTrouble, lines));
    }
}

void JobFiles::noteSpawnTrouble(const std::string& reason) const {
    if (reason.empty()) {
        remove(job::spawnTrouble);
    } else {
        static_cast<void>(write(job::spawnTrouble, reason + "\n"));
    }
}

std::string JobFiles::spawnTrouble() const {
    return std::string(text::trim(valueOrEmpty(read(job::spawnTrouble)), "\n"));
}

bool JobFiles::isLeaving() const {
    return has(job::leaving);
}

void JobFiles::markLeaving() const {
    static_cast<void>(write(job::leaving, ""));
}

Result<void> JobFiles::makeWakePipe() const {
    if (!folder_ || ::mkfifoat(folder_->descriptor(), job::wakePipe, 0600) != 0) {
        return failure(path() + ": " + std::system_category().message(errno));
    }
    return {};
}

void JobFiles::removeAll() const {
    for (const char* name : job::files) {
        remove(name);
    }
    for (const char* name : job::folders) {
        if (folder_) {
            folder_->removeFolderOfFiles(name);
        }
    }
}

} // namespace varnhold::services
