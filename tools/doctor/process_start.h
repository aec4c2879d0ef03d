#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

namespace varnhold::doctor {

// When a process was started; none if there is no such process, or the system won't tell.
[[nodiscard]] std::optional<std::chrono::system_clock::time_point>
startOfProcess(std::int64_t process);

} // namespace varnhold::doctor
