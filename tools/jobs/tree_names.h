#pragma once

#include <string_view>

// What stands in the user's runtime folder, by name.
namespace varnhold::services::tree {

inline constexpr const char* jobs = "jobs";   // a folder for each job
inline constexpr const char* locks = "locks"; // a file for each job
inline constexpr const char* lock = "lock";
inline constexpr const char* scannerLock = "scanner-lock";

// A scanner's folder, with a link to each of its jobs. It passes over names that begin with a dot,
// and no job's name does.
inline constexpr const char* scan = "scan";
inline constexpr std::string_view outOfSightPrefix = ".kept-";
inline constexpr const char* scannerState = ".s6-svscan";

} // namespace varnhold::services::tree
