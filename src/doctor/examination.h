#pragma once

#include <string>
#include <vector>

#include "doctor/finding.h"
#include "doctor/secrets.h"
#include "doctor/surroundings.h"

namespace varnhold::doctor {

struct Examination {
    Report report;
    Secrets secrets; // everything that is known to be secret in what was looked at
};

// Makes the named checks. Reads files and the listing of jobs; takes as long as those take.
[[nodiscard]] Examination examine(const Surroundings& surroundings,
                                  const std::vector<std::string>& checks);

} // namespace varnhold::doctor
