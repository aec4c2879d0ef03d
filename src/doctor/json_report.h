#pragma once

#include <string>

#include "doctor/finding.h"
#include "doctor/secrets.h"

namespace varnhold::doctor {

// The report for programs: docs/formats/doctor-report.md. Spread over lines, with a line break at
// its end. Pure; any thread.
[[nodiscard]] std::string jsonReport(const Report& report, const Secrets& secrets);

} // namespace varnhold::doctor
