#pragma once

#include "doctor/command_line.h"
#include "doctor/finding.h"
#include "doctor/jobs.h"
#include "doctor/secrets.h"
#include "doctor/surroundings.h"

namespace varnhold::doctor {

// Everything that is known to be secret in the home that is looked at, and in its loaded jobs.
[[nodiscard]] Secrets gatherSecrets(const Surroundings& surroundings, const Jobs& jobs);

struct Examination {
    Report report;
    Secrets secrets; // everything that is known to be secret in what was looked at
};

// Makes the checks that were asked for. Reads files and the listing of jobs; takes as long as those
// take.
[[nodiscard]] Examination examine(const Surroundings& surroundings, const Command& command);

} // namespace varnhold::doctor
