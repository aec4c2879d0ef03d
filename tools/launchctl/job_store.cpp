#include "launchctl/job_store.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "base/files.h"

namespace varnhold::services {

namespace {

Result<void> makePrivateFolder(const std::string& path) {
    const auto systemError = [&path] {
        return failure(path + ": " + std::system_category().message(errno));
    };
    if (::mkdir(path.c_str(), 0700) != 0 && errno != EEXIST) {
        return systemError();
    }
    struct stat found {};
    if (::lstat(path.c_str(), &found) != 0) {
        return systemError();
    }
    if (!S_ISDIR(found.st_mode) || found.st_uid != ::getuid() || (found.st_mode & 0077U) != 0) {
        return failure(path + ": not a private folder of this user");
    }
    return {};
}

void removeTree(const std::string& path) {
    std::error_code ignored; // what is left is removed before the next job of this name is made
    std::filesystem::remove_all(path, ignored);
}

} // namespace

JobFiles JobStore::job(const std::string& name) const {
    return JobFiles(folder_ + "/jobs/" + name);
}

bool JobStore::hasUnits() const {
    std::error_code error; // a folder that isn't there holds nothing
    std::filesystem::directory_iterator entries(folder_ + "/jobs", error);
    return std::any_of(begin(entries), end(entries),
                       [](const auto& entry) { return JobFiles(entry.path().string()).isUnit(); });
}

Result<JobStore::Locks> JobStore::lock(const std::string& name) const {
    if (const auto made = makePrivateFolder(folder_); !made) {
        return failure(made.error());
    }
    auto tree = FileLock::take(folder_ + "/lock", FileLock::Kind::shared);
    if (!tree) {
        return failure(tree.error());
    }
    if (const auto made = makePrivateFolder(folder_ + "/locks"); !made) {
        return failure(made.error());
    }
    auto label = FileLock::take(folder_ + "/locks/" + name, FileLock::Kind::exclusive);
    if (!label) {
        return failure(label.error());
    }
    return Locks{*std::move(tree), *std::move(label)};
}

std::optional<FileLock> JobStore::tryLock(const std::string& name) const {
    return FileLock::tryExclusive(folder_ + "/locks/" + name);
}

std::optional<FileLock> JobStore::tryAlone() const {
    return FileLock::tryExclusive(folder_ + "/lock");
}

Result<void> JobStore::make(const std::string& name, const std::string& content) const {
    const JobFiles files = job(name);
    removeTree(files.folder()); // left by a launchctl that was killed half-way
    for (const std::string& path : {folder_ + "/jobs", files.folder()}) {
        if (const auto made = makePrivateFolder(path); !made) {
            return made;
        }
    }
    return files::writeInPlace(files.definitionPath(), content).and_then([&files] {
        return files.makeWakePipe();
    });
}

void JobStore::remove(const std::string& name) const {
    removeTree(job(name).folder());
}

void JobStore::removeAll() const {
    for (const char* part : {"/scan", "/jobs", "/locks", "/scanner-lock"}) {
        removeTree(folder_ + part);
    }
}

} // namespace varnhold::services
