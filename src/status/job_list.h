#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace varnhold {

enum class DaemonStatus {
    running, // the service manager reports a process
    stopped, // not running and last exited with 0, or unknown to the service manager
    crashed, // not running and last exited otherwise
};

// The coloured disc that stands for a status wherever it is shown.
[[nodiscard]] std::string_view indicator(DaemonStatus status);

using StatusMap = std::map<std::string, DaemonStatus, std::less<>>;

// Status of each job in the three-column listing of the service manager: process id or "-", last
// exit status, label. Lines with fewer columns are passed over; text that isn't UTF-8 is no listing
// at all. The header line comes out as a job called "Label", which nothing ever asks for.
[[nodiscard]] StatusMap parseJobList(std::string_view listing);

// Absent labels are stopped.
[[nodiscard]] DaemonStatus statusOf(const StatusMap& statuses, std::string_view label);

} // namespace varnhold
