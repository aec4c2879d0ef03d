#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

// The two logs of an agent. Reads only; any thread.
namespace varnhold::doctor {

// The last lines that say something, the oldest first: of the errors, or where there are none, of
// the log itself. They are a daemon's words, and may hold anything.
[[nodiscard]] std::vector<std::string> lastWords(const std::string& role);

// When the agent last wrote into either log; none if there is no log.
[[nodiscard]] std::optional<std::chrono::system_clock::time_point>
lastWritten(const std::string& role);

} // namespace varnhold::doctor
