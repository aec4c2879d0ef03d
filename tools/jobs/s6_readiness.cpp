#include "jobs/s6_readiness.h"

#include <unistd.h>

#include "jobs/job_names.h"

namespace varnhold::services {

namespace {

constexpr const char* descriptor = "3";

} // namespace

Result<void> askToListen(const JobFiles& job) {
    return job.write(job::readyDescriptor, descriptor);
}

void tellReady(const JobFiles& job) {
    if (const auto told = job.readNumber(job::readyDescriptor)) {
        // Nobody listens where a person runs this by hand, and then nothing is lost.
        static_cast<void>(!::write(static_cast<int>(*told), "\n", 1));
        ::close(static_cast<int>(*told));
    }
}

} // namespace varnhold::services
