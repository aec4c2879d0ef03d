#include "launchctl/folder_watch.h"

#include <fcntl.h>
#include <unistd.h>

namespace varnhold::services {

namespace {

// Some conditions come true a moment after the file that announces them.
constexpr timespec longestPause{.tv_sec = 0, .tv_nsec = 5'000'000};
constexpr timespec none{};

int number() {
    return SIGRTMIN;
}

} // namespace

FolderWatch::FolderWatch() {
    ::sigemptyset(&signal_);
    ::sigaddset(&signal_, number());
    ::pthread_sigmask(SIG_BLOCK, &signal_, &maskBefore_);
}

FolderWatch::~FolderWatch() {
    for (const auto& [path, folder] : folders_) {
        ::close(folder);
    }
    while (::sigtimedwait(&signal_, nullptr, &none) >= 0) { // or it would end this program now
    }
    ::pthread_sigmask(SIG_SETMASK, &maskBefore_, nullptr);
}

void FolderWatch::add(const std::string& path) {
    if (folders_.contains(path)) {
        return;
    }
    const int folder = ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder >= 0) {
        ::fcntl(folder, F_SETSIG, number());
        ::fcntl(folder, F_NOTIFY, DN_CREATE | DN_RENAME | DN_MULTISHOT);
        folders_.emplace(path, folder);
    }
}

bool FolderWatch::waitUntil(std::chrono::milliseconds limit,
                            const std::function<bool()>& condition) const {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() >= end) {
            return false;
        }
        ::sigtimedwait(&signal_, nullptr, &longestPause);
    }
    return true;
}

} // namespace varnhold::services
