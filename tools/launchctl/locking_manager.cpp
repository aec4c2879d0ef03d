#include "launchctl/locking_manager.h"

#include "launchctl/known_jobs.h"
#include "launchctl/s6_tree.h"

namespace varnhold::services {

Result<PropertyList> LockingManager::definition(const Label& label) {
    return definitionOf(store_, label);
}

Result<JobStore::Locks> LockingManager::lock(const JobName& name) {
    return store_.lock(name).and_then([this](JobStore::Locks locks) {
        return lookAgain().map([&] { return std::move(locks); });
    });
}

// Looked at before the lock, so that nothing is made for a job that nobody has loaded.
Result<Outcome>
LockingManager::change(const Label& label,
                       const std::function<Result<Outcome>(const JobName& name)>& work) {
    const auto name = nameOfLabel(label);
    if (!name) {
        return Outcome::notLoaded;
    }
    const auto before = mayBeLoaded(*name);
    if (!before || !*before) {
        return before.map([](bool) { return Outcome::notLoaded; });
    }
    const TakeDownAtEnd atEnd{*this};
    const auto locks = lock(*name);
    return locks ? work(*name) : failure(locks.error());
}

// After the last job nothing of ours is to be left, neither running nor on the disk, also of a
// manager that was there before. Somebody else who is at work holds the tree's lock, and looks by
// himself when he is done.
void LockingManager::takeDownIfEmpty() {
    const auto alone = store_.tryAlone();
    if (alone && lookAgain() && endRemains()) {
        S6Tree::removeLinks(store_);
        store_.removeAll();
    }
}

} // namespace varnhold::services
