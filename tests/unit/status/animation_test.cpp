#include <gtest/gtest.h>

#include "status/bars.h"

namespace varnhold::testing {
namespace {

BarState barAt(double current, double target) {
    BarState bars;
    setOrder(bars, {"a"});
    bars.barCurrent["a"] = current;
    bars.barTarget["a"] = target;
    return bars;
}

TEST(Animation, RisesByEighteenHundredthsOfTheWay) {
    BarState bars = barAt(0.5, 1);
    EXPECT_TRUE(animate(bars));
    EXPECT_DOUBLE_EQ(bars.barCurrent.at("a"), 0.59);
}

TEST(Animation, FallsByFiveHundredthsOfTheWay) {
    BarState bars = barAt(1, 0);
    EXPECT_TRUE(animate(bars));
    EXPECT_DOUBLE_EQ(bars.barCurrent.at("a"), 0.95);
}

TEST(Animation, SnapsOnceItsStepIsTooSmallAndDrawsThatTickButNotTheNext) {
    BarState bars = barAt(0.9995, 1);
    EXPECT_TRUE(animate(bars));
    EXPECT_EQ(bars.barCurrent.at("a"), 1.0);
    EXPECT_FALSE(animate(bars));
    EXPECT_EQ(bars.barCurrent.at("a"), 1.0);
}

// A step of a thousandth is the smallest that is taken, upwards and downwards.
TEST(Animation, TakesAStepOfJustOverAThousandthAndSnapsAtOneOfJustUnder) {
    BarState rising = barAt(1 - 0.00100001 / 0.18, 1);
    EXPECT_TRUE(animate(rising));
    EXPECT_LT(rising.barCurrent.at("a"), 1.0);
    rising = barAt(1 - 0.00099999 / 0.18, 1);
    EXPECT_TRUE(animate(rising));
    EXPECT_EQ(rising.barCurrent.at("a"), 1.0);

    BarState falling = barAt(0.00100001 / 0.05, 0);
    EXPECT_TRUE(animate(falling));
    EXPECT_GT(falling.barCurrent.at("a"), 0.0);
    falling = barAt(0.00099999 / 0.05, 0);
    EXPECT_TRUE(animate(falling));
    EXPECT_EQ(falling.barCurrent.at("a"), 0.0);
}

TEST(Animation, EndsExactlyAtItsTargetBothWays) {
    BarState bars = barAt(0, 1);
    int ticks = 0;
    for (; animate(bars); ++ticks) {
        ASSERT_LT(ticks, 1000);
    }
    EXPECT_EQ(bars.barCurrent.at("a"), 1.0);
    bars.barTarget["a"] = 0;
    for (ticks = 0; animate(bars); ++ticks) {
        ASSERT_LT(ticks, 1000);
    }
    EXPECT_EQ(bars.barCurrent.at("a"), 0.0);
}

TEST(Animation, CoversHalfTheWayInFourTicksUpAndFourteenDown) {
    BarState rising = barAt(0, 1);
    for (int tick = 0; tick < 4; ++tick) {
        EXPECT_LT(rising.barCurrent.at("a"), 0.5);
        animate(rising);
    }
    EXPECT_GE(rising.barCurrent.at("a"), 0.5);
    BarState falling = barAt(1, 0);
    for (int tick = 0; tick < 14; ++tick) {
        EXPECT_GT(falling.barCurrent.at("a"), 0.5);
        animate(falling);
    }
    EXPECT_LE(falling.barCurrent.at("a"), 0.5);
}

TEST(Animation, OfARoleOutsideTheOrderStandsStill) {
    BarState bars = barAt(0.5, 1);
    setOrder(bars, {"b"});
    EXPECT_FALSE(animate(bars));
    EXPECT_EQ(bars.barCurrent.at("a"), 0.5);
}

TEST(Animation, OfNoBotsMovesNothing) {
    BarState bars;
    EXPECT_FALSE(animate(bars));
}

} // namespace
} // namespace varnhold::testing
