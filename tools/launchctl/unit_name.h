#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "jobs/label_name.h"

// Jobs' names as those of systemd units, which allow fewer characters than files do.
namespace varnhold::services {

// "varnhold-job-LABEL.service", with every odd byte of the label as "\x" and two hex digits.
//
// A unit that left processes behind stays in the manager's memory, and its name with it, until they
// end. A job that is loaded again meanwhile takes the next generation:
// "varnhold-job-LABEL@1.service".
[[nodiscard]] std::string unitOfJob(const JobName& name, unsigned generation = 0);

// The job of a unit of ours, of any generation. None for other units.
[[nodiscard]] std::optional<JobName> jobOfUnit(std::string_view unit);

// A pattern that fits the later generations of this job's unit.
[[nodiscard]] std::string patternOfGenerations(const JobName& name);

inline constexpr const char* patternOfAllUnits = "varnhold-job-*.service";

} // namespace varnhold::services
