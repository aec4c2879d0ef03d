#pragma once

#include <string>
#include <vector>

#include "launchctl/service_manager.h"

// The texts of the verb "list", as other programs have long read them.
namespace varnhold::services {

// Exit code, or the signal's number as a negative one.
[[nodiscard]] int lastStatus(int waitStatus);

// Three columns with tabs between, a header first: process id or "-", last status, label.
[[nodiscard]] std::string jobTable(const std::vector<JobState>& jobs);

// One job as a list of properties. Quotes, backslashes and line breaks in values are escaped, so
// that no value can pass for a line of its own. The line "PID" stands only while the agent runs.
[[nodiscard]] std::string jobProperties(const JobState& state, const PropertyList& list);

} // namespace varnhold::services
