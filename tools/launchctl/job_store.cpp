#include "launchctl/job_store.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "base/files.h"

namespace varnhold::services {

namespace {

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
    if (const auto made = files::createPrivateDirectory(folder_); !made) {
        return failure(made.error());
    }
    auto tree = FileLock::take(folder_ + "/lock", FileLock::Kind::shared);
    if (!tree) {
        return failure(tree.error());
    }
    if (const auto made = files::createPrivateDirectory(folder_ + "/locks"); !made) {
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
        if (const auto made = files::createPrivateDirectory(path); !made) {
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
