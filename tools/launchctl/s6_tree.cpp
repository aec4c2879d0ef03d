#include "launchctl/s6_tree.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <string_view>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

extern "C" {
#include <s6/supervise.h>
}

#include "base/files.h"
#include "launchctl/label_name.h"

namespace varnhold::services {

namespace {

namespace fs = std::filesystem;

// Scanners pass over names that begin with a dot, and no job's name does.
constexpr std::string_view outOfSightPrefix = ".kept-";

bool isLink(const std::string& path) {
    struct stat found {};
    return ::lstat(path.c_str(), &found) == 0;
}

template <class Counts>
void addNames(std::vector<std::string>& names, const std::string& folder, Counts counts) {
    std::error_code error; // a folder that isn't there holds nothing
    for (const auto& entry : fs::directory_iterator(folder, error)) {
        std::string name = entry.path().filename().string();
        if (name.starts_with(outOfSightPrefix)) {
            name.erase(0, outOfSightPrefix.size());
        }
        if (labelOfName(name) && counts(name)) {
            names.push_back(std::move(name));
        }
    }
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
}

} // namespace

std::string S6Tree::jobFolder(const std::string& name) const {
    return jobsFolder() + "/" + name;
}

std::string S6Tree::linkInSight(const std::string& name) const {
    return scanFolder() + "/" + name;
}

std::string S6Tree::linkOutOfSight(const std::string& name) const {
    return scanFolder() + "/" + std::string(outOfSightPrefix) + name;
}

S6Tree::Link S6Tree::linkOf(const std::string& name) const {
    if (isLink(linkInSight(name))) {
        return Link::inSight;
    }
    return isLink(linkOutOfSight(name)) ? Link::outOfSight : Link::none;
}

Result<void> S6Tree::link(const std::string& name) const {
    const std::string path = linkInSight(name);
    if (::symlink(("../jobs/" + name).c_str(), path.c_str()) != 0) {
        return failure(path + ": " + std::system_category().message(errno));
    }
    return {};
}

// In this order, since somebody may hide the link meanwhile.
void S6Tree::unlink(const std::string& name) const {
    ::unlink(linkInSight(name).c_str());
    ::unlink(linkOutOfSight(name).c_str());
}

void S6Tree::hide(const std::string& name) const {
    ::rename(linkInSight(name).c_str(), linkOutOfSight(name).c_str());
}

std::vector<std::string> S6Tree::linkedJobs() const {
    std::vector<std::string> names;
    addNames(names, scanFolder(), [](const std::string&) { return true; });
    return names;
}

std::vector<std::string> S6Tree::allJobs() const {
    std::vector<std::string> names = linkedJobs();
    addNames(names, jobsFolder(),
             [this](const std::string& name) { return files::exists(jobFolder(name) + "/run"); });
    return names;
}

bool S6Tree::isSupervised(const std::string& name) const {
    return s6_svc_ok(jobFolder(name).c_str()) > 0;
}

bool S6Tree::wasSupervised(const std::string& name) const {
    return files::exists(jobFolder(name) + "/" S6_SUPERVISE_CTLDIR);
}

void S6Tree::command(const std::string& name, const char* letters) const {
    s6_svc_writectl(jobFolder(name).c_str(), S6_SUPERVISE_CTLDIR, letters, std::strlen(letters));
}

bool S6Tree::remove(const std::string& name) const {
    std::error_code error;
    fs::remove_all(jobFolder(name), error);
    return !files::exists(jobFolder(name));
}

} // namespace varnhold::services
