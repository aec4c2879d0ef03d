#include "agent_exec/job_files.h"

#include <array>
#include <cerrno>
#include <ctime>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "base/text.h"

namespace varnhold::services {

namespace {

using namespace std::chrono_literals;

std::chrono::nanoseconds machineTime() {
    timespec now{};
    ::clock_gettime(CLOCK_BOOTTIME, &now);
    return std::chrono::seconds(now.tv_sec) + std::chrono::nanoseconds(now.tv_nsec);
}

constexpr const char* definitionFile = "job.plist";
constexpr const char* lastEndFile = "last-end";
constexpr const char* lastStartFile = "last-start";
constexpr const char* hurryFile = "hurry";
constexpr const char* wakePipe = "wake";
constexpr const char* restFile = "at-rest";
constexpr const char* unitFile = "is-unit";
constexpr const char* leavingFile = "leaving";
constexpr const char* logTroubleFile = "log-trouble";
constexpr const char* spawnTroubleFile = "spawn-trouble";
constexpr const char* startsFile = "starts";
// As in s6: a file that holds the number of the descriptor on which a job says that it is up.
constexpr const char* readyFile = "notification-fd";
constexpr const char* readyDescriptor = "3";
constexpr std::array filesOfS6{"run", "finish", "timeout-kill", "timeout-finish", "down"};
constexpr std::array foldersOfS6{"supervise", "event"};

} // namespace

Result<JobFiles> JobFiles::at(const std::string& path) {
    return platform::PrivateFolder::find(path).and_then([&](auto found) -> Result<JobFiles> {
        return found ? Result<JobFiles>(JobFiles(std::move(found)))
                     : failure(path + ": there is no such job any more");
    });
}

Result<void> JobFiles::write(const char* name, const std::string& content) const {
    return folder_ ? folder_->write(name, content) : failure("the job has no folder");
}

Result<std::string> JobFiles::read(const char* name) const {
    return folder_ ? folder_->read(name) : failure("the job has no folder");
}

std::optional<std::int64_t> JobFiles::readNumber(const char* name) const {
    const Result<std::string> text = read(name);
    return text ? text::parseInteger(*text) : std::nullopt;
}

// Notes only make listings and pauses better; an agent runs without them as well.
void JobFiles::note(const char* name, std::int64_t number) const {
    if (folder_) {
        static_cast<void>(folder_->replace(name, std::to_string(number)));
    }
}

void JobFiles::remove(const char* name) const {
    if (folder_) {
        folder_->remove(name);
    }
}

int JobFiles::openPipe(int way) const {
    return folder_ ? folder_->open(wakePipe, way | O_NONBLOCK) : -1;
}

Result<PropertyList> JobFiles::definition() const {
    return read(definitionFile).and_then([](const std::string& content) {
        return decodePropertyList(content);
    });
}

Result<void> JobFiles::setDefinition(const std::string& content) const {
    return write(definitionFile, content);
}

std::optional<int> JobFiles::lastEnd() const {
    const auto number = readNumber(lastEndFile);
    return number ? std::optional(static_cast<int>(*number)) : std::nullopt;
}

void JobFiles::noteEnd(int waitStatus) const {
    note(lastEndFile, waitStatus);
}

void JobFiles::noteStart() const {
    note(lastStartFile, machineTime().count());
    note(startsFile, starts() + 1);
}

std::int64_t JobFiles::starts() const {
    return readNumber(startsFile).value_or(0);
}

// A start that lies ahead was noted before the machine's own.
std::chrono::nanoseconds JobFiles::sinceStart() const {
    const auto start = readNumber(lastStartFile);
    const auto now = machineTime();
    return start && *start <= now.count() ? now - std::chrono::nanoseconds(*start)
                                          : std::chrono::nanoseconds::max();
}

void JobFiles::hurry() const {
    static_cast<void>(write(hurryFile, ""));
    const int pipe = openPipe(O_WRONLY);
    if (pipe >= 0) { // somebody waits
        const char byte = 1;
        static_cast<void>(!::write(pipe, &byte, 1));
        ::close(pipe);
    }
}

void JobFiles::forgetHurry() const {
    remove(hurryFile);
}

bool JobFiles::waitUnlessHurried(std::chrono::nanoseconds duration) const {
    // Opened for both directions, so that it never reads as closed. The pipe comes first: a hurry
    // after this point wakes the wait, and one before it has left its file.
    const int pipe = openPipe(O_RDWR);
    const auto end = machineTime() + duration;
    bool hurried = has(hurryFile);
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
    return write(readyFile, readyDescriptor);
}

void JobFiles::tellReady() const {
    if (const auto descriptor = readNumber(readyFile)) {
        // Nobody listens where a person runs this by hand, and then nothing is lost.
        static_cast<void>(!::write(static_cast<int>(*descriptor), "\n", 1));
        ::close(static_cast<int>(*descriptor));
    }
}

void JobFiles::noteLogTrouble(const std::string& lines) const {
    if (lines.empty()) {
        remove(logTroubleFile);
    } else {
        static_cast<void>(write(logTroubleFile, lines));
    }
}

void JobFiles::noteSpawnTrouble(const std::string& reason) const {
    if (reason.empty()) {
        remove(spawnTroubleFile);
    } else {
        static_cast<void>(write(spawnTroubleFile, reason + "\n"));
    }
}

std::string JobFiles::spawnTrouble() const {
    return std::string(text::trim(valueOrEmpty(read(spawnTroubleFile)), "\n"));
}

bool JobFiles::isAtRest() const {
    return has(restFile);
}

Result<void> JobFiles::putToRest() const {
    return write(restFile, "");
}

void JobFiles::wakeFromRest() const {
    remove(restFile);
}

bool JobFiles::isUnit() const {
    return has(unitFile);
}

Result<void> JobFiles::markAsUnit() const {
    return write(unitFile, "");
}

bool JobFiles::isLeaving() const {
    return has(leavingFile);
}

void JobFiles::markLeaving() const {
    static_cast<void>(write(leavingFile, ""));
}

Result<void> JobFiles::makeWakePipe() const {
    if (!folder_ || ::mkfifoat(folder_->descriptor(), wakePipe, 0600) != 0) {
        return failure(path() + ": " + std::system_category().message(errno));
    }
    return {};
}

void JobFiles::removeAll() const {
    for (const char* name :
         {definitionFile, lastEndFile, lastStartFile, hurryFile, wakePipe, restFile, unitFile,
          leavingFile, logTroubleFile, spawnTroubleFile, startsFile, readyFile}) {
        remove(name);
        remove((std::string(name) + ".new").c_str());
    }
    for (const char* name : filesOfS6) {
        remove(name);
    }
    for (const char* name : foldersOfS6) {
        if (folder_) {
            folder_->removeFolderOfFiles(name);
        }
    }
}

} // namespace varnhold::services
