#pragma once

#include <optional>
#include <string>

#include "agent_exec/job_files.h"
#include "launchctl/locks.h"

namespace varnhold::services {

// The folders of the loaded jobs below the user's private runtime folder, whichever manager runs
// them, and the locks between processes that work on them.
//
// Every change holds the tree's lock together with others and its own label's lock alone; who takes
// the tree down holds the first alone. Names are those of nameOfLabel.
class JobStore final {
public:
    struct Locks {
        FileLock tree;
        FileLock label;
    };

    explicit JobStore(std::string folder) : folder_(std::move(folder)) {}

    [[nodiscard]] const std::string& folder() const { return folder_; }
    [[nodiscard]] JobFiles job(const std::string& name) const;
    // Whether there is the folder of any job that a systemd user manager was given.
    [[nodiscard]] bool hasUnits() const;

    // Waits for whoever changes this job. The runtime folder is made if it is missing, and refused
    // if others could look into it.
    [[nodiscard]] Result<Locks> lock(const std::string& name) const;
    // None if somebody else changes this job. The tree's lock must be held.
    [[nodiscard]] std::optional<FileLock> tryLock(const std::string& name) const;
    // The tree for oneself alone; none if somebody else is at work.
    [[nodiscard]] std::optional<FileLock> tryAlone() const;

    // Makes a job's folder anew with a copy of its property list.
    [[nodiscard]] Result<void> make(const std::string& name, const std::string& content) const;
    void remove(const std::string& name) const;
    // All but the tree's lock, which its holder has.
    void removeAll() const;

private:
    std::string folder_;
};

} // namespace varnhold::services
