#include "status/counts.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/records.h"

namespace varnhold {
namespace {

std::vector<BotConfig> botsLabelled(const std::vector<std::string>& labels) {
    std::vector<BotConfig> bots;
    for (const std::string& label : labels) {
        bots.push_back(testing::bot(label, {.label = label}));
    }
    return bots;
}

TEST(CountBots, CountsTheBotsOfTheFileAndNoOtherJobs) {
    const StatusMap statuses = parseJobList("PID\tStatus\tLabel\n1\t0\ta\n-\t-9\tb\n-\t0\tc\n"
                                            "2\t0\tstranger\n-\t1\tother\n");
    EXPECT_EQ(countBots(botsLabelled({"a", "b", "c", "unknown"}), statuses),
              (FleetCounts{.runningCount = 1, .totalCount = 4, .crashedCount = 1}));
}

TEST(CountBots, AnEmptyListingLeavesOnlyTheTotal) {
    EXPECT_EQ(countBots(botsLabelled({"a", "b"}), parseJobList("")),
              (FleetCounts{.runningCount = 0, .totalCount = 2, .crashedCount = 0}));
}

TEST(CountBots, APausedBotCountsByWhatItsJobDoes) {
    std::vector<BotConfig> bots = botsLabelled({"a", "b"});
    bots[0].isPaused = true;
    bots[1].isPaused = true;
    EXPECT_EQ(countBots(bots, parseJobList("1\t0\ta")),
              (FleetCounts{.runningCount = 1, .totalCount = 2, .crashedCount = 0}));
}

TEST(CountBots, TwoRecordsWithOneLabelCountTwice) {
    EXPECT_EQ(countBots(botsLabelled({"a", "a"}), parseJobList("1\t0\ta")),
              (FleetCounts{.runningCount = 2, .totalCount = 2, .crashedCount = 0}));
}

} // namespace
} // namespace varnhold
