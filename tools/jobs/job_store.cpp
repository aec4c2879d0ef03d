#include "jobs/job_store.h"

#include <cerrno>
#include <fcntl.h>
#include <string_view>
#include <sys/statvfs.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "jobs/tree_names.h"

namespace varnhold::services {

namespace {

std::vector<JobName> jobsIn(const JobFiles::Folder& folder) {
    std::vector<JobName> jobs;
    for (const std::string& text : folder ? folder->names() : std::vector<std::string>()) {
        if (auto name = jobNamed(text)) {
            jobs.push_back(*std::move(name));
        }
    }
    return jobs;
}

} // namespace

JobStore::JobLock::JobLock(FileLock lock, const platform::PrivateFolder& folder, std::string name)
    : lock_(std::move(lock)),
      folder_(::fcntl(folder.descriptor(), F_DUPFD_CLOEXEC, 0)),
      name_(std::move(name)) {}

JobStore::JobLock::JobLock(JobLock&& other) noexcept
    : lock_(std::move(other.lock_)),
      folder_(std::exchange(other.folder_, -1)),
      name_(std::move(other.name_)) {}

JobStore::JobLock::~JobLock() {
    if (folder_ >= 0) {
        ::unlinkat(folder_, name_.c_str(), 0); // while it is still held
        ::close(folder_);
    }
}

Result<JobStore> JobStore::open(const std::string& path) {
    JobStore store(path);
    return platform::PrivateFolder::find(path)
        .and_then([&](auto found) {
            store.root_ = std::move(found);
            return store.look();
        })
        .map([&] { return std::move(store); });
}

// Again whenever a lock has been taken: before that, somebody may have taken the tree down.
Result<void> JobStore::look() {
    if (!root_) {
        return {};
    }
    return root_->findIn(tree::jobs)
        .and_then([this](auto found) {
            jobs_ = std::move(found);
            return root_->findIn(tree::locks);
        })
        .map([this](auto found) { locks_ = std::move(found); });
}

JobFiles JobStore::job(const JobName& name) const {
    return JobFiles(jobs_ ? valueOrEmpty(jobs_->findIn(name.text())) : std::nullopt);
}

std::vector<JobName> JobStore::names() const {
    return jobsIn(jobs_);
}

Result<JobStore::Locks> JobStore::lock(const JobName& name) {
    auto root = platform::PrivateFolder::make(path_);
    if (!root) {
        return failure(root.error());
    }
    root_ = *std::move(root);
    auto whole = FileLock::take(*root_, tree::lock, FileLock::Kind::shared);
    if (!whole) {
        return failure(whole.error());
    }
    for (const char* part : {tree::jobs, tree::locks}) {
        if (const auto made = root_->makeIn(part); !made) {
            return failure(made.error());
        }
    }
    if (const auto seen = look(); !seen) {
        return failure(seen.error());
    }
    auto label = FileLock::take(*locks_, name.text(), FileLock::Kind::exclusive);
    if (!label) {
        return failure(label.error());
    }
    return Locks{*std::move(whole), JobLock(*std::move(label), *locks_, name.text())};
}

std::optional<JobStore::JobLock> JobStore::tryLock(const JobName& name) const {
    auto lock = locks_ ? FileLock::tryExclusive(*locks_, name.text()) : std::nullopt;
    return lock ? std::optional<JobLock>(std::in_place, *std::move(lock), *locks_, name.text())
                : std::nullopt;
}

std::vector<JobName> JobStore::marked() const {
    return jobsIn(locks_);
}

std::optional<FileLock> JobStore::tryAlone() {
    auto lock = root_ ? FileLock::tryExclusive(*root_, tree::lock) : std::nullopt;
    return lock && look() ? std::move(lock) : std::nullopt;
}

Result<void> JobStore::checkRoom(unsigned files) const {
    struct statvfs found {};
    if (!root_ || ::fstatvfs(root_->descriptor(), &found) != 0) {
        return {}; // whoever writes there will see
    }
    const bool countsFiles = found.f_files != 0;
    return found.f_bavail < files || (countsFiles && found.f_favail < files)
               ? failure(path_ + ": " + std::system_category().message(ENOSPC))
               : Result<void>();
}

Result<JobFiles> JobStore::make(const JobName& name, const std::string& content) const {
    if (!jobs_) {
        return failure(path_ + ": no job can be made without its lock");
    }
    remove(name); // left by a launchctl that was killed half-way
    auto folder = jobs_->makeIn(name.text());
    if (!folder) {
        return failure(folder.error());
    }
    JobFiles files(*std::move(folder));
    const auto made = files.setDefinition(content).and_then([&] { return files.makeWakePipe(); });
    return made ? Result<JobFiles>(std::move(files)) : failure(made.error());
}

void JobStore::remove(const JobName& name) const {
    job(name).removeAll();
    if (jobs_) {
        jobs_->removeFolder(name.text());
    }
}

void JobStore::removeAll() const {
    for (const JobName& name : names()) {
        remove(name);
    }
    for (const JobName& name : marked()) {
        locks_->remove(name.text());
    }
    if (!root_) {
        return;
    }
    for (const char* part : {tree::jobs, tree::locks}) {
        root_->removeFolder(part);
    }
}

} // namespace varnhold::services
