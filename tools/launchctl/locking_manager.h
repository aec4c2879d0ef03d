#pragma once

#include <functional>
#include <string>
#include <utility>

#include "jobs/job_store.h"
#include "launchctl/service_manager.h"

namespace varnhold::services {

// A manager whose jobs have their folders in a store: what any such manager does alike. Each change
// holds the locks of its job, and whoever lets go last takes the empty tree down. Looking takes no
// lock.
class LockingManager : public ServiceManager {
public:
    Result<PropertyList> definition(const Label& label) override;

protected:
    // `agentExec`: path of the helper that becomes the agent.
    LockingManager(JobStore store, std::string agentExec)
        : store_(std::move(store)), agentExec_(std::move(agentExec)) {}

    // Made before the locks and so gone after them.
    struct TakeDownAtEnd {
        LockingManager& manager;
        bool isNeeded = true;
        ~TakeDownAtEnd() {
            if (isNeeded) {
                manager.takeDownIfEmpty();
            }
        }
    };

    [[nodiscard]] const JobStore& store() const { return store_; }
    [[nodiscard]] const std::string& agentExec() const { return agentExec_; }

    [[nodiscard]] Result<JobStore::Locks> lock(const JobName& name);
    // Does the work on a job while nobody else changes it, unless there is none; the work itself
    // sees whether it is still loaded.
    [[nodiscard]] Result<Outcome>
    change(const Label& label, const std::function<Result<Outcome>(const JobName& name)>& work);

private:
    // After a lock has been taken: before that, somebody may have taken the tree down.
    [[nodiscard]] virtual Result<void> lookAgain() { return {}; }
    // Whether the job may be loaded: a look without a lock.
    [[nodiscard]] virtual Result<bool> mayBeLoaded(const JobName& name) = 0;
    // With the tree for oneself: takes away what remains of former jobs and whatever runs for them.
    // False if a job is loaded, or something can't be ended.
    [[nodiscard]] virtual bool endRemains() = 0;
    void takeDownIfEmpty();

    JobStore store_;
    std::string agentExec_;
};

} // namespace varnhold::services
