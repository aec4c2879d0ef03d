#include "launchctl/known_jobs.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "jobs/unit_marks.h"
#include "launchctl/process_handle.h"

namespace varnhold::services {

std::optional<JobState> knownJob(const JobStore& store, const JobName& name) {
    const JobFiles files = store.job(name);
    if (!isUnit(files) || files.isLeaving()) {
        return std::nullopt;
    }
    JobState state{.label = name.label(), .lastEnd = files.lastEnd().value_or(0)};
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
    for (const JobName& name : store.names()) {
        if (auto job = knownJob(store, name)) {
            jobs.push_back(*std::move(job));
        }
    }
    std::sort(jobs.begin(), jobs.end(), precedes);
    return jobs;
}

Result<PropertyList> definitionOf(const JobStore& store, const Label& label) {
    return nameOfLabel(label).and_then(
        [&store](const JobName& name) { return store.job(name).definition(); });
}

Result<std::vector<JobState>> KnownJobs::jobs() {
    return knownJobs(store_);
}

Result<std::optional<JobState>> KnownJobs::job(const Label& label) {
    const auto name = nameOfLabel(label);
    return name ? knownJob(store_, *name) : std::nullopt;
}

Result<PropertyList> KnownJobs::definition(const Label& label) {
    return definitionOf(store_, label);
}

Result<Outcome> KnownJobs::bootstrap(const PropertyList&, const std::string&) {
    return failure(reason_);
}

Result<Outcome> KnownJobs::bootout(const Label&) {
    return failure(reason_);
}

Result<Outcome> KnownJobs::kickstart(const Label&, bool) {
    return failure(reason_);
}

Result<Outcome> KnownJobs::stop(const Label&) {
    return failure(reason_);
}

} // namespace varnhold::services
