#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "base/result.h"

namespace varnhold::doctor {

struct EventTable {
    std::uint64_t bytes = 0;
    std::int64_t events = 0;                   // the highest number that one was given
    std::map<std::string, std::string> models; // role to the model last used, as a poll sees it
    std::chrono::milliseconds poll{};          // what the poll's statement took
    bool pollWasCut = false;                   // it was given up after a second
};

// The daemons' events, read without a trace: the file is opened for reading, and so is what stands
// beside it while a daemon writes. None if there is no file yet.
[[nodiscard]] Result<std::optional<EventTable>> readEvents(const std::string& path);

} // namespace varnhold::doctor
