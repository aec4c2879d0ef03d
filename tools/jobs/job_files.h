#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <sys/types.h>

#include "lifecycle/property_list.h"
#include "platform/private_folder.h"

// The files of one loaded job's folder, as the two sides of it see them: launchctl makes and reads
// them, agent-exec keeps them up to date from within the service manager.
//
// The folder is private to the user, and the property list in it is the definition that was loaded:
// the file that it came from may have changed since.
namespace varnhold::services {

// The shortest time from one start of an agent to the next, whatever it does; a manager of the
// launchd family keeps to the same (man 5 launchd.plist, ThrottleInterval).
inline constexpr std::chrono::seconds throttle{10};

class JobFiles final {
public:
    using Folder = std::optional<platform::PrivateFolder>;

    // Without a folder there is nothing to be read, and nothing can be noted.
    explicit JobFiles(Folder folder) : folder_(std::move(folder)) {}
    // What a manager was told to run; a failure if it isn't a private folder of ours any more.
    [[nodiscard]] static Result<JobFiles> at(const std::string& path);

    // Empty without a folder.
    [[nodiscard]] std::string path() const { return folder_ ? folder_->path() : std::string(); }
    [[nodiscard]] const Folder& folder() const { return folder_; }

    [[nodiscard]] Result<PropertyList> definition() const;
    // Together with room for the notes, which can then be written also when the disk is full.
    [[nodiscard]] Result<void> setDefinition(const std::string& content) const;

    // Wait status of the agent's last end, as from wait(2). None before the first.
    [[nodiscard]] std::optional<int> lastEnd() const;
    void noteEnd(int waitStatus) const;

    // The clock goes on while the machine sleeps and starts anew with it.
    struct Start {
        std::chrono::nanoseconds time{};
        pid_t process = 0;
    };
    // Of this process, which is about to become the agent. False if it can't be noted.
    bool noteStart() const;
    [[nodiscard]] std::optional<Start> lastStart() const;
    [[nodiscard]] std::chrono::nanoseconds sinceStart() const;
    // How often the agent was started since the job was loaded.
    [[nodiscard]] std::int64_t starts() const;

    // Makes the wait that follows an end stop at once, or not begin. Whoever wants a job started or
    // forgotten now says so before it ends the process.
    void skipThrottle() const;
    // Waits out the time, or until somebody skips the rest. True if somebody did.
    [[nodiscard]] bool waitUnlessSkipped(std::chrono::nanoseconds duration) const;
    void forgetSkip() const;

    // Why the agent runs without a log that it should have, for whoever looks for it; a line each.
    void noteLogTrouble(const std::string& lines) const;

    // Why the agent couldn't be started at all; empty once it could. Under s6 nobody else keeps it.
    void noteSpawnTrouble(const std::string& reason) const;
    [[nodiscard]] std::string spawnTrouble() const;

    // A job that is on its way out counts as gone, also if the process that unloads it is killed.
    [[nodiscard]] bool isLeaving() const;
    void markLeaving() const;

    // The pipe through which a skip reaches a wait that has begun.
    [[nodiscard]] Result<void> makeWakePipe() const;

    // Takes away whatever the tools and managers of a job make in its folder, and nothing else.
    void removeAll() const;

    // What one manager alone has in it, by the names of job_names.h.
    [[nodiscard]] bool has(const char* name) const { return folder_ && folder_->has(name); }
    [[nodiscard]] Result<void> write(const char* name, const std::string& content,
                                     mode_t mode = 0600) const;
    // At the beginning of a file.
    [[nodiscard]] std::optional<std::int64_t> readNumber(const char* name) const;
    void remove(const char* name) const;

private:
    [[nodiscard]] Result<std::string> read(const char* name) const;
    bool note(const char* name, const std::string& text, std::size_t length) const;
    [[nodiscard]] int openPipe(int way) const;

    Folder folder_;
};

} // namespace varnhold::services
