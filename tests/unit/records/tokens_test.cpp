#include "records/tokens.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <gmock/gmock.h>
#include <limits>

namespace varnhold {
namespace {

constexpr std::array ladder{0, 8000, 16000, 32000, 64000, 128000, 200000, 400000, 1000000, 2000000};

TEST(FormatTokens, SaysAutoForNothingAndBelow) {
    EXPECT_EQ(formatTokens(0), "Auto");
    EXPECT_EQ(formatTokens(-5), "Auto");
    EXPECT_EQ(formatTokens(std::numeric_limits<std::int64_t>::min()), "Auto");
}

TEST(FormatTokens, GivesHundredsPlainAndCutsThousands) {
    EXPECT_EQ(formatTokens(1), "1");
    EXPECT_EQ(formatTokens(999), "999");
    EXPECT_EQ(formatTokens(1000), "1K");
    EXPECT_EQ(formatTokens(1999), "1K");
    EXPECT_EQ(formatTokens(8000), "8K");
    EXPECT_EQ(formatTokens(128000), "128K");
    EXPECT_EQ(formatTokens(999999), "999K");
}

TEST(FormatTokens, GivesADecimalOnlyToBrokenMillions) {
    EXPECT_EQ(formatTokens(1000000), "1M");
    EXPECT_EQ(formatTokens(1100000), "1.1M");
    EXPECT_EQ(formatTokens(1500000), "1.5M");
    EXPECT_EQ(formatTokens(2000000), "2M");
    EXPECT_EQ(formatTokens(1999999), "2.0M");
}

TEST(FormatTokens, RoundsTiesToEven) {
    EXPECT_EQ(formatTokens(1250000), "1.2M");
    EXPECT_EQ(formatTokens(2250000), "2.2M");
    EXPECT_EQ(formatTokens(1950000), "1.9M");
    EXPECT_EQ(formatTokens(1050000), "1.1M");
}

TEST(FormatTokens, CopesWithTheLargestNumber) {
    EXPECT_EQ(formatTokens(std::numeric_limits<std::int64_t>::max()), "9223372036854.8M");
}

TEST(FormatTokenCount, AlwaysHasADecimalInMillions) {
    EXPECT_EQ(formatTokenCount(1000000), "1.0M");
    EXPECT_EQ(formatTokenCount(1500000), "1.5M");
    EXPECT_EQ(formatTokenCount(2000000), "2.0M");
    EXPECT_EQ(formatTokenCount(2250000), "2.2M");
}

TEST(FormatTokenCount, GivesNothingAndLessAsNumbers) {
    EXPECT_EQ(formatTokenCount(0), "0");
    EXPECT_EQ(formatTokenCount(-5), "-5");
    EXPECT_EQ(formatTokenCount(999), "999");
    EXPECT_EQ(formatTokenCount(8000), "8K");
    EXPECT_EQ(formatTokenCount(999999), "999K");
}

TEST(Tokens, AreRoundedWithHalvesAwayFromZero) {
    EXPECT_EQ(roundedTokens(31999.6), 32000);
    EXPECT_EQ(roundedTokens(2.5), 3);
    EXPECT_EQ(roundedTokens(-2.5), -3);
    EXPECT_EQ(roundedTokens(0.49999999999999994), 0);
}

TEST(Tokens, LoseTheirFractionWhereTheyAreCut) {
    EXPECT_EQ(truncatedTokens(31999.6), 31999);
    EXPECT_EQ(truncatedTokens(-0.9), 0);
}

TEST(Tokens, StayWithinWholeNumbersWhateverTheyAre) {
    EXPECT_EQ(roundedTokens(1e30), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(roundedTokens(0x1p63), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(roundedTokens(-1e30), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(truncatedTokens(-0x1p63), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(truncatedTokens(std::numeric_limits<double>::infinity()),
              std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(roundedTokens(std::nan("")), 0);
}

TEST(Ladder, EndsAtNothingOnTheLeft) {
    EXPECT_FALSE(canStepLeft(ladder, 0));
    EXPECT_EQ(stepLeft(ladder, 0), 0);
    EXPECT_TRUE(canStepRight(ladder, 0));
    EXPECT_EQ(stepRight(ladder, 0), 8000);
}

TEST(Ladder, EndsAtTheTopOnTheRight) {
    EXPECT_FALSE(canStepRight(ladder, 2000000));
    EXPECT_EQ(stepRight(ladder, 2000000), 2000000);
    EXPECT_TRUE(canStepLeft(ladder, 2000000));
    EXPECT_EQ(stepLeft(ladder, 2000000), 1000000);
}

TEST(Ladder, StepsFromBetweenTwoEntriesToTheNeighbour) {
    EXPECT_EQ(stepLeft(ladder, 50000), 32000);
    EXPECT_EQ(stepRight(ladder, 50000), 64000);
}

TEST(Ladder, StepsFromAboveTheTopOnlyLeftAndToTheTop) {
    EXPECT_FALSE(canStepRight(ladder, 3000000));
    EXPECT_EQ(stepRight(ladder, 3000000), 2000000);
    EXPECT_EQ(stepLeft(ladder, 3000000), 2000000);
}

TEST(Ladder, StepsFromBelowNothingOnlyRight) {
    EXPECT_FALSE(canStepLeft(ladder, -1));
    EXPECT_EQ(stepLeft(ladder, -1), 0);
    EXPECT_EQ(stepRight(ladder, -1), 0);
}

TEST(Ladder, IsClimbedEntryByEntryBothWays) {
    for (std::size_t i = 0; i + 1 < ladder.size(); ++i) {
        EXPECT_EQ(stepRight(ladder, ladder[i]), ladder[i + 1]);
        EXPECT_EQ(stepLeft(ladder, ladder[i + 1]), ladder[i]);
    }
}

} // namespace
} // namespace varnhold
