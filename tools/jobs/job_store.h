#pragma once

#include <optional>
#include <string>
#include <vector>

#include "jobs/job_files.h"
#include "jobs/label_name.h"
#include "jobs/locks.h"
#include "platform/private_folder.h"

namespace varnhold::services {

// The folders of the loaded jobs below the user's private runtime folder, whichever manager runs
// them, and the locks between processes that work on them.
//
// Every change holds the tree's lock together with others and its own label's lock alone; who takes
// the tree down holds the first alone. Folders that aren't private
// to the user are neither believed nor touched, and only what we have made is ever removed.
class JobStore final {
public:
    // A job's lock. Its file goes with it, so that one which is there and not held is the mark of
    // work that somebody was killed at.
    class JobLock final {
    public:
        JobLock(FileLock lock, const platform::PrivateFolder& folder, std::string name);
        JobLock(JobLock&& other) noexcept;
        JobLock& operator=(JobLock&&) = delete;
        JobLock(const JobLock&) = delete;
        JobLock& operator=(const JobLock&) = delete;
        ~JobLock();
        // For work that goes on by itself and is to be looked after once more.
        void leaveMark() { folder_ = -1; }

    private:
        FileLock lock_;
        int folder_;
        std::string name_;
    };

    struct Locks {
        FileLock tree;
        JobLock label;
    };

    // Of a folder that isn't there yet. Fails if there is one that isn't private to the user.
    [[nodiscard]] static Result<JobStore> open(const std::string& path);

    [[nodiscard]] const std::string& path() const { return path_; }
    // None until the first lock has been taken.
    [[nodiscard]] const JobFiles::Folder& folder() const { return root_; }

    // Without its folder if there is none, or none to be believed.
    [[nodiscard]] JobFiles job(const JobName& name) const;
    // What isn't named as a job is left out.
    [[nodiscard]] std::vector<JobName> names() const;

    // Waits for whoever changes this job. The runtime folder is made if it is missing.
    [[nodiscard]] Result<Locks> lock(const JobName& name);
    // None if somebody else changes this job. The tree's lock must be held.
    [[nodiscard]] std::optional<JobLock> tryLock(const JobName& name) const;
    // Jobs that somebody works on or was killed at.
    [[nodiscard]] std::vector<JobName> marked() const;
    // The tree for oneself alone; none if somebody else is at work, or there is no tree.
    [[nodiscard]] std::optional<FileLock> tryAlone();

    // Fails where the file system has no room for so many small files.
    [[nodiscard]] Result<void> checkRoom(unsigned files) const;
    // Makes a job's folder anew with a copy of its property list.
    [[nodiscard]] Result<JobFiles> make(const JobName& name, const std::string& content) const;
    // What somebody else has put into a job's folder stays, and the folder with it.
    void remove(const JobName& name) const;
    // All folders of jobs and all locks but the tree's, which its holder has.
    void removeAll() const;

private:
    explicit JobStore(std::string path) : path_(std::move(path)) {}
    [[nodiscard]] Result<void> look();

    std::string path_;
    JobFiles::Folder root_;
    JobFiles::Folder jobs_;
    JobFiles::Folder locks_;
};

} // namespace varnhold::services
