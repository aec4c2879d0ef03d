#include "jobs/unit_marks.h"

#include <algorithm>

#include "jobs/job_names.h"

namespace varnhold::services {

bool isHeld(const JobFiles& job) {
    return job.has(job::held);
}

Result<void> hold(const JobFiles& job) {
    return job.write(job::held, "");
}

void release(const JobFiles& job) {
    job.remove(job::held);
}

bool isUnit(const JobFiles& job) {
    return job.has(job::isUnit);
}

Result<void> markAsUnit(const JobFiles& job) {
    return job.write(job::isUnit, "");
}

bool hasUnits(const JobStore& store) {
    const auto all = store.names();
    return std::any_of(all.begin(), all.end(),
                       [&store](const JobName& name) { return isUnit(store.job(name)); });
}

} // namespace varnhold::services
