#include "status/counts.h"

namespace varnhold {

FleetCounts countBots(const std::vector<BotConfig>& bots, const StatusMap& statuses) {
    FleetCounts counts;
    counts.totalCount = static_cast<int>(bots.size());
    for (const BotConfig& bot : bots) {
        const DaemonStatus status = statusOf(statuses, bot.launchdLabel);
        counts.runningCount += status == DaemonStatus::running ? 1 : 0;
        counts.crashedCount += status == DaemonStatus::crashed ? 1 : 0;
    }
    return counts;
}

std::string statusTitle(const FleetCounts& counts) {
    std::string title =
        " " + std::to_string(counts.runningCount) + "/" + std::to_string(counts.totalCount);
    if (counts.crashedCount > 0) {
        title += " 🔴" + std::to_string(counts.crashedCount);
    }
    return title;
}

std::string spokenStatus(const FleetCounts& counts) {
    std::string text = "Varnhold, " + std::to_string(counts.runningCount) + " of " +
                       std::to_string(counts.totalCount) + " bots running";
    if (counts.crashedCount > 0) {
        text += ", " + std::to_string(counts.crashedCount) + " crashed";
    }
    return text;
}

} // namespace varnhold
