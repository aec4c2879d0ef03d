#include "launchctl/s6_tree.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <optional>
#include <string_view>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "jobs/job_names.h"
#include "jobs/tree_names.h"

namespace varnhold::services {

namespace {

std::string linkOutOfSight(const JobName& name) {
    return std::string(tree::outOfSightPrefix) + name.text();
}

// Whose link it is, in a scanner's sight or out of it.
std::optional<JobName> jobOfLink(std::string_view link) {
    if (link.starts_with(tree::outOfSightPrefix)) {
        link.remove_prefix(tree::outOfSightPrefix.size());
    }
    return jobNamed(link);
}

void sortOut(std::vector<JobName>& names) {
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
}

} // namespace

Result<void> S6Tree::look() {
    links_ = std::nullopt;
    if (!store_.folder()) {
        return {};
    }
    return store_.folder()->findIn(tree::scan).map([this](auto found) {
        links_ = std::move(found);
    });
}

Result<void> S6Tree::make() {
    if (!store_.folder()) {
        return failure(store_.path() + " isn't there");
    }
    return store_.folder()->makeIn(tree::scan).map([this](auto made) { links_ = std::move(made); });
}

S6Tree::Link S6Tree::linkOf(const JobName& name) const {
    if (links_ && links_->has(name.text())) {
        return Link::inSight;
    }
    return links_ && links_->has(linkOutOfSight(name)) ? Link::outOfSight : Link::none;
}

Result<void> S6Tree::link(const JobName& name) const {
    const std::string target = std::string("../") + tree::jobs + "/" + name.text();
    if (!links_ || ::symlinkat(target.c_str(), links_->descriptor(), name.text().c_str()) != 0) {
        return failure(store_.path() + "/" + tree::scan + "/" + name.text() + ": " +
                       std::system_category().message(errno));
    }
    return {};
}

// In this order, since somebody may hide the link meanwhile.
void S6Tree::unlink(const JobName& name) const {
    if (links_) {
        links_->remove(name.text());
        links_->remove(linkOutOfSight(name));
    }
}

void S6Tree::hide(const JobName& name) const {
    if (links_) {
        ::renameat(links_->descriptor(), name.text().c_str(), links_->descriptor(),
                   linkOutOfSight(name).c_str());
    }
}

std::vector<JobName> S6Tree::linkedJobs() const {
    std::vector<JobName> names;
    static_cast<void>(anyLinked([&names](const JobName& name) {
        names.push_back(name);
        return false;
    }));
    sortOut(names);
    return names;
}

bool S6Tree::anyLinked(const std::function<bool(const JobName& name)>& test) const {
    return links_ && links_->anyName([&test](std::string_view link) {
        const auto name = jobOfLink(link);
        return name && test(*name);
    });
}

std::vector<JobName> S6Tree::allJobs() const {
    std::vector<JobName> names = store_.names();
    std::erase_if(names, [this](const JobName& name) {
        const JobFiles job = store_.job(name);
        return !job.folder() || !job.folder()->has(job::run);
    });
    const auto linked = linkedJobs();
    names.insert(names.end(), linked.begin(), linked.end());
    sortOut(names);
    return names;
}

S6Service S6Tree::service(const JobName& name) const {
    return S6Service(store_.job(name));
}

bool S6Tree::remove(const JobName& name) const {
    store_.remove(name);
    return !service(name).wasSupervised();
}

void S6Tree::removeLinks(const JobStore& store) {
    if (!store.folder()) {
        return;
    }
    const platform::PrivateFolder& root = *store.folder();
    root.remove(tree::scannerLock);
    const auto links = root.findIn(tree::scan);
    if (!links || !*links) {
        return;
    }
    for (const std::string& link : (*links)->names()) {
        if (jobOfLink(link)) {
            (*links)->remove(link);
        }
    }
    (*links)->removeFolderOfFiles(tree::scannerState);
    root.removeFolder(tree::scan);
}

} // namespace varnhold::services
