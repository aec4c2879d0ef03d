#pragma once

#include <string>
#include <vector>

#include "doctor/finding.h"
#include "doctor/secrets.h"
#include "doctor/surroundings.h"

namespace varnhold::doctor {

// Everything that is known to be secret in the home that is looked at.
[[nodiscard]] Secrets gatherSecrets(const Surroundings& surroundings);

// Makes the named checks. Reads files and the listing of jobs; takes as long as those take.
[[nodiscard]] Report examine(const Surroundings& surroundings,
                             const std::vector<std::string>& checks);

} // namespace varnhold::doctor
