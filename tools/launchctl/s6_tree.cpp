#include "launchctl/s6_tree.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <system_error>
#include <unistd.h>

#include "jobs/label_name.h"
#include "jobs/tree_names.h"

namespace varnhold::services {

namespace {

std::string linkOutOfSight(const std::string& name) {
    return std::string(tree::outOfSightPrefix) + name;
}

void sortOut(std::vector<std::string>& names) {
    std::erase_if(names, [](const std::string& name) { return !labelOfName(name); });
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

S6Tree::Link S6Tree::linkOf(const std::string& name) const {
    if (links_ && links_->has(name)) {
        return Link::inSight;
    }
    return links_ && links_->has(linkOutOfSight(name)) ? Link::outOfSight : Link::none;
}

Result<void> S6Tree::link(const std::string& name) const {
    const std::string target = std::string("../") + tree::jobs + "/" + name;
    if (!links_ || ::symlinkat(target.c_str(), links_->descriptor(), name.c_str()) != 0) {
        return failure(store_.path() + "/" + tree::scan + "/" + name + ": " +
                       std::system_category().message(errno));
    }
    return {};
}

// In this order, since somebody may hide the link meanwhile.
void S6Tree::unlink(const std::string& name) const {
    if (links_) {
        links_->remove(name);
        links_->remove(linkOutOfSight(name));
    }
}

void S6Tree::hide(const std::string& name) const {
    if (links_) {
        ::renameat(links_->descriptor(), name.c_str(), links_->descriptor(),
                   linkOutOfSight(name).c_str());
    }
}

std::vector<std::string> S6Tree::linkedJobs() const {
    std::vector<std::string> names = links_ ? links_->names() : std::vector<std::string>();
    for (std::string& name : names) {
        if (name.starts_with(tree::outOfSightPrefix)) {
            name.erase(0, tree::outOfSightPrefix.size());
        }
    }
    sortOut(names);
    return names;
}

std::vector<std::string> S6Tree::allJobs() const {
    std::vector<std::string> names = store_.names();
    std::erase_if(names, [this](const std::string& name) {
        const JobFiles job = store_.job(name);
        return !job.folder() || !job.folder()->has("run");
    });
    const auto linked = linkedJobs();
    names.insert(names.end(), linked.begin(), linked.end());
    sortOut(names);
    return names;
}

S6Service S6Tree::service(const std::string& name) const {
    return S6Service(store_.job(name));
}

bool S6Tree::remove(const std::string& name) const {
    store_.remove(name);
    return !service(name).wasSupervised();
}

} // namespace varnhold::services
