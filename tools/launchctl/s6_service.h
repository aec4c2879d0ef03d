#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string_view>
#include <sys/types.h>

#include "jobs/job_files.h"

namespace varnhold::services {

// What the supervisor of a job last wrote down about its process.
struct S6Status {
    std::optional<pid_t> process; // absent while the agent doesn't run
    int lastEnd = 0;              // wait status; 0 before the first
    bool hasStarted = false;      // ever
    bool isFinishing = false;     // the agent's end is being looked after
    bool isWantedUp = false;
};

// A job's supervisor at one moment.
struct S6Look {
    bool isSupervised = false;
    // Also true in the second before a supervisor that was killed is replaced.
    bool wasSupervised = false;
    // Of one that is. The process is one that the supervisor really has: on a full disk it may have
    // been unable to write down the last.
    std::optional<S6Status> status;
};

// One job's folder as s6 sees it, and the pipe through which its supervisor is told what to do.
class S6Service final {
public:
    explicit S6Service(JobFiles files) : files_(std::move(files)) {}

    [[nodiscard]] const JobFiles& files() const { return files_; }

    // All at once, which opens its folder once.
    [[nodiscard]] S6Look look() const;
    // Parts of it.
    [[nodiscard]] bool isSupervised() const;
    // Its process; 0 if there is none.
    [[nodiscard]] pid_t supervisor() const;
    [[nodiscard]] bool wasSupervised() const;

    // False if somebody still supervises it when the time is up.
    [[nodiscard]] bool waitUntilUnsupervised(std::chrono::milliseconds limit) const;
    // Returns when there is a supervisor, and with `started` when it has started the agent once; or
    // when the time is up or there is no hope.
    void waitUntilSupervised(std::chrono::milliseconds limit, bool started,
                             const std::function<bool()>& isHopeless) const;

    // The agent of a supervisor; none while it has none that runs.
    [[nodiscard]] static std::optional<pid_t> agentOf(pid_t supervisor);

    // Letters as of s6-svc. Nothing happens if there is no supervisor to read them.
    void command(std::string_view letters) const;
    // Starts an agent that doesn't run. What looks after its end may have decided to leave it down
    // before this wish came, and takes the wish back as it ends: then it is wished once more.
    void start() const;

private:
    [[nodiscard]] JobFiles::Folder supervise() const;
    [[nodiscard]] static std::optional<S6Status> statusIn(const JobFiles::Folder& folder);
    [[nodiscard]] static std::optional<pid_t> checked(pid_t noted, const JobFiles::Folder& folder);

    JobFiles files_;
};

} // namespace varnhold::services
