#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "shell/constants.h"

namespace varnhold::doctor {

// Room for new content where a file stands.
struct DiskRoom {
    std::uint64_t freeBytes = 0;
    std::optional<std::uint64_t> quotaLeft = std::nullopt; // bytes; none without a quota
    bool outOfNames = false;                               // no new file can be made
};

// What became of the one child process that the doctor starts.
struct ListingRun {
    bool started = false;
    bool timedOut = false;
    int exitCode = 0; // or the negative number of the signal that ended it
    std::string output;
    std::string error; // its standard error, or why it couldn't be started
    std::chrono::milliseconds took{};
};

// A process of this user's.
struct Process {
    std::int64_t id = 0;
    std::int64_t parent = 0;
    std::vector<std::string> words; // its command line
    bool hasTerminal = false;
};

// What the checks ask of the machine, read-only. The constants must outlive it.
struct Surroundings {
    const Constants& constants; // its files may be those of another folder
    const Constants& home;      // those of the user's own
    std::chrono::system_clock::time_point now;
    std::function<std::optional<DiskRoom>(const std::string& folder)> diskRoom;
    std::map<std::string, std::string> environment;
    std::string bundlePath;    // see System::bundlePath
    std::string runtimeFolder; // see System::runtimeDirectory
    std::string launchctlPath; // see System::launchctlPath
    std::function<ListingRun()> listJobs;
    // When a process was started; none if there is no such process.
    std::function<std::optional<std::chrono::system_clock::time_point>(std::int64_t process)>
        startOf;
    std::function<std::vector<Process>()> processes;
    // Who holds a lock on the whole file; none if nobody does.
    std::function<std::optional<std::int64_t>(const std::string& path)> lockHolder;
    // Whether anybody shows status items on the session's bus; none if the bus doesn't answer.
    std::function<std::optional<bool>()> hasTray;
    // Whether a panel on the X server takes in windows of others; none if it doesn't answer.
    std::function<std::optional<bool>()> hasEmbeddedTray;
};

} // namespace varnhold::doctor
