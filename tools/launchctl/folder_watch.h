#pragma once

#include <chrono>
#include <csignal>
#include <functional>
#include <map>
#include <string>

namespace varnhold::services {

// Waits for something to become true that shows by a file made or renamed in some folders.
//
// The system tells of that by a signal (F_NOTIFY), which is blocked as long as this lives. The
// younger inotify isn't made use of: giving up its watches takes longer than what is waited for
// here. Where folders can't be watched it looks again every few milliseconds. Main thread.
class FolderWatch final {
public:
    FolderWatch();
    FolderWatch(const FolderWatch&) = delete;
    FolderWatch& operator=(const FolderWatch&) = delete;
    ~FolderWatch();

    // One that isn't there yet may be added again later; one that is added already stays so.
    void add(const std::string& folder);

    // Looks at once, and whenever something has happened in the folders. True if the condition
    // held before the time was up.
    bool waitUntil(std::chrono::milliseconds limit, const std::function<bool()>& condition) const;

private:
    sigset_t signal_{};
    sigset_t maskBefore_{};
    std::map<std::string, int> folders_;
};

} // namespace varnhold::services
