#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "doctor/surroundings.h"

namespace varnhold::doctor {

// What the system's process table says. Empty where the system keeps none that can be read.

// When a process was started; none if there is no such process, or the system won't tell.
[[nodiscard]] std::optional<std::chrono::system_clock::time_point>
startOfProcess(std::int64_t process);

// All processes of this user's that have a command line.
[[nodiscard]] std::vector<Process> ownProcesses();

// Who holds a lock on the whole of a file (flock); none if nobody does. Doesn't touch the lock.
[[nodiscard]] std::optional<std::int64_t> holderOfLock(const std::string& path);

} // namespace varnhold::doctor
