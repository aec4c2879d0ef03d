#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "shell/constants.h"
#include "status/bars.h"

namespace varnhold::testing {
namespace {

using ::testing::DoubleNear;
using ::testing::ElementsAre;

const double rainbowEnd = Constants("/home/somebody").RAINBOW_END;

BarState fleetOf(const std::vector<std::string>& roles) {
    BarState bars;
    setOrder(bars, roles);
    return bars;
}

std::vector<double> huesOf(const BarImage& image) {
    std::vector<double> hues;
    for (const BarRectangle& bar : image.bars) {
        hues.push_back(bar.hue);
    }
    return hues;
}

TEST(BarImage, OfNoBotsIsOneFlatRedBar) {
    const BarImage image = barImage({}, rainbowEnd);
    EXPECT_EQ(image.width, 2);
    EXPECT_EQ(image.height, 16);
    EXPECT_THAT(image.bars,
                ElementsAre(BarRectangle{.x = 0, .y = 7.5, .width = 2, .height = 1, .hue = 0}));
}

TEST(BarImage, OfOneBotIsRedAndAsWideAsItsBar) {
    const BarImage image = barImage(fleetOf({"a"}), rainbowEnd);
    EXPECT_EQ(image.width, 2);
    EXPECT_THAT(huesOf(image), ElementsAre(0.0));
}

TEST(BarImage, OfTwoBotsReachesTheEndOfTheRainbow) {
    const BarImage image = barImage(fleetOf({"a", "b"}), rainbowEnd);
    EXPECT_EQ(image.width, 5);
    EXPECT_THAT(huesOf(image), ElementsAre(0.0, 0.83));
}

TEST(BarImage, OfThreeBotsSpreadsTheHuesEvenly) {
    const BarImage image = barImage(fleetOf({"a", "b", "c"}), rainbowEnd);
    EXPECT_EQ(image.width, 8);
    EXPECT_THAT(huesOf(image), ElementsAre(0.0, 0.415, 0.83));
}

TEST(BarImage, BarsGrowFromTheMiddleBothWaysToTheFullHeight) {
    BarState bars = fleetOf({"flat", "half", "full"});
    bars.barCurrent["half"] = 0.5;
    bars.barCurrent["full"] = 1;
    const BarImage image = barImage(bars, rainbowEnd);
    EXPECT_EQ(image.bars[0], (BarRectangle{.x = 0, .y = 7.5, .width = 2, .height = 1, .hue = 0}));
    EXPECT_EQ(image.bars[1], (BarRectangle{.x = 3, .y = 4, .width = 2, .height = 8, .hue = 0.415}));
    EXPECT_EQ(image.bars[2], (BarRectangle{.x = 6, .y = 0, .width = 2, .height = 16, .hue = 0.83}));
}

TEST(BarImage, ABarIsNeverLowerThanOnePoint) {
    BarState bars = fleetOf({"a", "b"});
    bars.barCurrent["a"] = 0.0624;
    bars.barCurrent["b"] = 0.0626;
    const BarImage image = barImage(bars, rainbowEnd);
    EXPECT_EQ(image.bars[0].height, 1);
    EXPECT_THAT(image.bars[1].height, DoubleNear(0.0626 * 16, 1e-12));
}

TEST(Hue, OfTheLastBotStopsShortOfTheWrapBackToRed) {
    EXPECT_EQ(botHueForIndex(0, 0, rainbowEnd), 0.0);
    EXPECT_EQ(botHueForIndex(0, 1, rainbowEnd), 0.0);
    EXPECT_EQ(botHueForIndex(59, 60, rainbowEnd), 0.83);
    EXPECT_EQ(botHueForIndex(5, 11, rainbowEnd), 0.415);
}

TEST(Order, OfTheBarsIsThatOfTheBotsFile) {
    BarState bars = fleetOf({"a", "b"});
    setOrder(bars, {"b", "c", "a"});
    EXPECT_THAT(bars.botOrder, ElementsAre("b", "c", "a"));
    EXPECT_EQ(bars.barCurrent.at("c"), 0.0);
    EXPECT_EQ(bars.barTarget.at("c"), 0.0);
}

TEST(Order, ARoleThatComesBackFindsItsLevelAndTargetAgain) {
    BarState bars = fleetOf({"a", "b"});
    bars.barCurrent["b"] = 0.7;
    bars.barTarget["b"] = 1;
    bars.lastActivityMarks["b"] = 3;
    setOrder(bars, {"a"});
    EXPECT_EQ(barImage(bars, rainbowEnd).bars.size(), 1U);
    setOrder(bars, {"b"});
    EXPECT_EQ(bars.barCurrent.at("b"), 0.7);
    EXPECT_EQ(bars.barTarget.at("b"), 1.0);
    EXPECT_EQ(bars.lastActivityMarks.at("b"), 3);
}

} // namespace
} // namespace varnhold::testing
