#include "launchctl/known_jobs.h"

#include <algorithm>

#include "jobs/label_name.h"
#include "launchctl/process_handle.h"

namespace varnhold::services {

std::optional<JobState> knownJob(const JobStore& store, const std::string& name) {
    const auto label = labelOfName(name);
    const JobFiles files = store.job(name);
    if (!label || !files.isUnit() || files.isLeaving()) {
        return std::nullopt;
    }
    JobState state{.label = *label, .lastEnd = files.lastEnd().value_or(0)};
    const auto started = files.lastStart();
    // A process that has got the number since has started later than that.
    const auto found = started ? identify(started->process) : std::nullopt;
    if (found && timeOfTicks(found->start) <= started->time) {
        state.process = found->process;
    }
    return state;
}

std::vector<JobState> knownJobs(const JobStore& store) {
    std::vector<JobState> jobs;
    for (const std::string& name : store.names()) {
        if (auto job = knownJob(store, name)) {
            jobs.push_back(*std::move(job));
        }
    }
    std::sort(jobs.begin(), jobs.end(),
              [](const JobState& a, const JobState& b) { return a.label < b.label; });
    return jobs;
}

Result<std::vector<JobState>> KnownJobs::jobs() {
    return knownJobs(store_);
}

Result<std::optional<JobState>> KnownJobs::job(const std::string& label) {
    const auto name = nameOfLabel(label);
    return name ? knownJob(store_, *name) : std::nullopt;
}

Result<PropertyList> KnownJobs::definition(const std::string& label) {
    return nameOfLabel(label).and_then(
        [this](const std::string& name) { return store_.job(name).definition(); });
}

Result<Outcome> KnownJobs::bootstrap(const PropertyList&, const std::string&) {
    return failure(reason_);
}

Result<Outcome> KnownJobs::bootout(const std::string&) {
    return failure(reason_);
}

Result<Outcome> KnownJobs::kickstart(const std::string&, bool) {
    return failure(reason_);
}

Result<Outcome> KnownJobs::stop(const std::string&) {
    return failure(reason_);
}

} // namespace varnhold::services
