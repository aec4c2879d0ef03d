#pragma once

#include <string>
#include <vector>

#include "records/bots.h"
#include "status/job_list.h"

namespace varnhold {

// How many of the bots in the file do what. Paused bots count like any other; jobs that no bot
// stands for don't count at all.
struct FleetCounts {
    int runningCount = 0;
    int totalCount = 0;
    int crashedCount = 0;

    bool operator==(const FleetCounts&) const = default;
};

[[nodiscard]] FleetCounts countBots(const std::vector<BotConfig>& bots, const StatusMap& statuses);

// " 3/5", with a red mark and the number behind it where bots have crashed. The leading blank keeps
// the text off the bars.
[[nodiscard]] std::string statusTitle(const FleetCounts& counts);

// The same for those who listen: "Varnhold, 3 of 5 bots running, 1 crashed".
[[nodiscard]] std::string spokenStatus(const FleetCounts& counts);

} // namespace varnhold
