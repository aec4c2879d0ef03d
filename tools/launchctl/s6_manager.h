#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "jobs/job_store.h"
#include "launchctl/locking_manager.h"
#include "launchctl/s6_scanner.h"
#include "launchctl/s6_tree.h"

namespace varnhold::services {

// Services on s6, for systems without a user manager of their own.
//
// Each job is a service folder with a private copy of its property list; it is loaded while a link
// to it stands in the scan folder and somebody supervises it. Everything lives in the user's
// runtime folder, and is forgotten if that goes with the session.
class S6Manager final : public LockingManager {
public:
    // Fails if the folder of its links isn't private to the user. `agentExec`: path of the helper
    // that becomes the agent.
    [[nodiscard]] static Result<std::unique_ptr<S6Manager>> open(JobStore store,
                                                                 std::string agentExec);

    // Whether any job is loaded here.
    [[nodiscard]] bool hasJobs() const;

    Result<std::vector<JobState>> jobs() override;
    Result<std::optional<JobState>> job(const Label& label) override;
    Result<Outcome> bootstrap(const PropertyList& list, const std::string& content) override;
    Result<Outcome> bootout(const Label& label) override;
    Result<Outcome> kickstart(const Label& label, bool kill) override;
    Result<Outcome> stop(const Label& label) override;

private:
    S6Manager(JobStore store, std::string agentExec);
    [[nodiscard]] Result<void> lookAgain() override { return tree_.look(); }
    [[nodiscard]] Result<bool> mayBeLoaded(const JobName& name) override;
    [[nodiscard]] bool endRemains() override;
    [[nodiscard]] bool isLoaded(const JobName& name) const;
    [[nodiscard]] bool isLoaded(const JobName& name, const S6Service& service,
                                const S6Look& seen) const;
    [[nodiscard]] static JobState state(const S6Service& service, const S6Look& seen,
                                        const Label& label);
    [[nodiscard]] Result<void> writeJob(const JobName& name, const PropertyList& list,
                                        const std::string& content) const;
    void tidyUp(const JobName& name) const;
    void tidyUpMarked() const;
    void tidyUpAll() const;
    [[nodiscard]] Result<void> startScanner();
    [[nodiscard]] Result<void> load(const JobName& name, bool starts);
    [[nodiscard]] Result<void> unload(const JobName& name) const;
    // Does the work on a loaded job while nobody else changes it.
    [[nodiscard]] Result<Outcome>
    changeLoaded(const Label& label,
                 const std::function<Result<Outcome>(const JobName& name)>& work);
    void tellToEnd(const JobName& name) const;

    S6Tree tree_;
    S6Scanner scanner_;
};

} // namespace varnhold::services
