#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/result.h"

// Labels as names of systemd units, which allow fewer characters than files do.
namespace varnhold::services {

// "varnhold-job-LABEL.service", with every odd byte of the label as "\x" and two hex digits.
//
// A unit that left processes behind stays in the manager's memory, and its name with it, until they
// end. A job that is loaded again meanwhile takes the next generation:
// "varnhold-job-LABEL@1.service". Refuses what nameOfLabel refuses.
[[nodiscard]] Result<std::string> unitOfLabel(std::string_view label, unsigned generation = 0);

// The label of a unit of ours, of any generation. None for other units.
[[nodiscard]] std::optional<std::string> labelOfUnit(std::string_view unit);

// A pattern that fits the later generations of this label's unit.
[[nodiscard]] Result<std::string> patternOfGenerations(std::string_view label);

inline constexpr const char* patternOfAllUnits = "varnhold-job-*.service";

} // namespace varnhold::services
