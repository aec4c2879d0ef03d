#include "launchctl/s6_service.h"

#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <system_error>
#include <thread>
#include <unistd.h>

extern "C" {
#include <s6/supervise.h>
}

#include "base/files.h"
#include "base/text.h"
#include "launchctl/folder_watch.h"
#include "launchctl/process_handle.h"

namespace varnhold::services {

namespace {

constexpr const char* controlPipe = "control";
constexpr const char* statusFile = "status";
constexpr const char* lockFile = "lock";
// Should its number be another's by then.
constexpr std::chrono::milliseconds longestPause{500};

// A pipe that nobody reads from can't be opened for writing.
int openControl(const JobFiles::Folder& folder) {
    return folder ? folder->open(controlPipe, O_WRONLY | O_NONBLOCK) : -1;
}

bool isReadFrom(const JobFiles::Folder& folder) {
    const int control = openControl(folder);
    if (control >= 0) {
        ::close(control);
    }
    return control >= 0;
}

// The process that holds the supervisor's lock.
pid_t supervisorOf(const JobFiles::Folder& folder) {
    const int file = folder->open(lockFile, O_RDONLY);
    struct flock lock {};
    lock.l_type = F_RDLCK;
    lock.l_whence = SEEK_SET;
    const bool asked = file >= 0 && ::fcntl(file, F_GETLK, &lock) == 0;
    if (file >= 0) {
        ::close(file);
    }
    return asked && lock.l_type != F_UNLCK ? lock.l_pid : 0;
}

} // namespace

// A supervisor has one child, the agent or what looks after the agent's end.
std::optional<pid_t> S6Service::agentOf(pid_t supervisor) {
    const std::string own = std::to_string(supervisor);
    const auto children = files::read("/proc/" + own + "/task/" + own + "/children");
    const auto child =
        children ? text::parseInteger(children->substr(0, children->find(' '))) : std::nullopt;
    if (!child) {
        return std::nullopt;
    }
    std::error_code gone;
    const auto program =
        std::filesystem::read_symlink("/proc/" + std::to_string(*child) + "/exe", gone);
    return gone || program.filename() == "agent-exec" ? std::nullopt
                                                      : std::optional(static_cast<pid_t>(*child));
}

std::optional<pid_t> S6Service::checked(pid_t noted, const JobFiles::Folder& folder) {
    const pid_t supervisor = supervisorOf(folder);
    const auto found = identify(noted);
    if (found && found->parent == supervisor) {
        return noted;
    }
    return supervisor != 0 ? agentOf(supervisor) : std::nullopt;
}

JobFiles::Folder S6Service::supervise() const {
    return files_.folder() ? valueOrEmpty(files_.folder()->findIn(S6_SUPERVISE_CTLDIR))
                           : std::nullopt;
}

S6Look S6Service::look() const {
    const auto folder = supervise();
    S6Look seen{.isSupervised = isReadFrom(folder), .wasSupervised = folder.has_value()};
    if (seen.isSupervised) {
        seen.status = statusIn(folder);
    }
    return seen;
}

bool S6Service::isSupervised() const {
    return isReadFrom(supervise());
}

pid_t S6Service::supervisor() const {
    const auto folder = supervise();
    return folder ? supervisorOf(folder) : 0;
}

bool S6Service::wasSupervised() const {
    return supervise().has_value();
}

std::optional<S6Status> S6Service::statusIn(const JobFiles::Folder& folder) {
    const auto content = folder ? folder->read(statusFile) : failure("never supervised");
    if (!content || content->size() != S6_SVSTATUS_SIZE) {
        return std::nullopt;
    }
    s6_svstatus_t read = S6_SVSTATUS_ZERO;
    s6_svstatus_unpack(content->data(), &read);
    S6Status status{.lastEnd = read.wstat,
                    .hasStarted = read.pid != 0 || read.wstat != 0,
                    .isFinishing = read.flagfinishing != 0,
                    .isWantedUp = read.flagwantup != 0};
    // While it finishes, the process it tells of is the one that waits for the next start.
    if (read.pid != 0 && read.flagfinishing == 0) {
        status.process = checked(read.pid, folder);
    }
    return status;
}

bool S6Service::waitUntilUnsupervised(std::chrono::milliseconds limit) const {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (isSupervised()) {
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
        if (left <= std::chrono::milliseconds(0)) {
            return false;
        }
        if (const pid_t process = supervisor(); process > 0) {
            ProcessHandle(process).waitForEnd(std::min(left, longestPause));
        } else { // it has just come up, or is just about to go
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }
    return true;
}

void S6Service::waitUntilSupervised(std::chrono::milliseconds limit, bool started,
                                    const std::function<bool()>& isHopeless) const {
    FolderWatch watch;
    watch.add(files_.path());
    watch.waitUntil(limit, [&] {
        watch.add(files_.path() + "/" S6_SUPERVISE_CTLDIR);
        const S6Look now = look();
        if (!now.isSupervised) {
            return isHopeless();
        }
        return !started || (now.status && now.status->hasStarted);
    });
}

void S6Service::command(std::string_view letters) const {
    const int control = openControl(supervise());
    if (control >= 0) {
        static_cast<void>(!::write(control, letters.data(), letters.size()));
        ::close(control);
    }
}

void S6Service::start() const {
    constexpr std::chrono::milliseconds longestFinish{2000};
    const S6Look before = look();
    const auto starts = files_.starts();
    files_.skipThrottle();
    command("u");
    if (!before.status || !before.status->isFinishing) {
        return;
    }
    FolderWatch watch;
    watch.add(files_.path() + "/" S6_SUPERVISE_CTLDIR);
    S6Look now;
    watch.waitUntil(longestFinish, [&] {
        now = look();
        return !now.status || !now.status->isFinishing;
    });
    const bool isDown = now.status && !now.status->process && !now.status->isWantedUp;
    if (isDown && files_.starts() == starts) {
        command("u");
    }
}

} // namespace varnhold::services
