#pragma once

#include <optional>
#include <string>
#include <vector>

#include "jobs/job_store.h"
#include "launchctl/service_manager.h"

namespace varnhold::services {

// The jobs of a user manager that doesn't answer, as their folders tell of them: which are loaded,
// which of their agents runs by its own note, and how each ended last. Changes fail.
class KnownJobs final : public ServiceManager {
public:
    // `reason`: why nothing can be changed.
    KnownJobs(JobStore store, std::string reason)
        : store_(std::move(store)), reason_(std::move(reason)) {}

    Result<std::vector<JobState>> jobs() override;
    Result<std::optional<JobState>> job(const Label& label) override;
    Result<PropertyList> definition(const Label& label) override;
    Result<Outcome> bootstrap(const PropertyList& list, const std::string& content) override;
    Result<Outcome> bootout(const Label& label) override;
    Result<Outcome> kickstart(const Label& label, bool kill) override;
    Result<Outcome> stop(const Label& label) override;

private:
    JobStore store_;
    std::string reason_;
};

// The same for a manager that answers too late. None if it isn't a unit's folder.
[[nodiscard]] std::optional<JobState> knownJob(const JobStore& store, const JobName& name);
[[nodiscard]] std::vector<JobState> knownJobs(const JobStore& store);

// What a job was loaded with, whichever manager has it.
[[nodiscard]] Result<PropertyList> definitionOf(const JobStore& store, const Label& label);

} // namespace varnhold::services
