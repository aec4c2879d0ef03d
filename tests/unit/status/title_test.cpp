#include <gtest/gtest.h>

#include "status/counts.h"

namespace varnhold::testing {
namespace {

TEST(Title, OfNoBotsReadsZeroOfZeroAfterABlank) {
    EXPECT_EQ(statusTitle({}), " 0/0");
    EXPECT_EQ(spokenStatus({}), "Varnhold, 0 of 0 bots running");
}

TEST(Title, WithoutACrashHasNoRedMark) {
    EXPECT_EQ(statusTitle({.runningCount = 3, .totalCount = 5}), " 3/5");
    EXPECT_EQ(spokenStatus({.runningCount = 3, .totalCount = 5}), "Varnhold, 3 of 5 bots running");
}

TEST(Title, TellsTheCrashedBehindARedMark) {
    const FleetCounts counts{.runningCount = 3, .totalCount = 5, .crashedCount = 1};
    EXPECT_EQ(statusTitle(counts), " 3/5 🔴1");
    EXPECT_EQ(spokenStatus(counts), "Varnhold, 3 of 5 bots running, 1 crashed");
}

} // namespace
} // namespace varnhold::testing
