#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "status/tray_bars.h"

namespace varnhold::testing {
namespace {

using ::testing::ElementsAre;

constexpr double lastHue = 0.83;
const std::vector<int> sides{16, 22, 24, 32, 48, 64};

std::vector<std::string> rolesOf(int bots) {
    std::vector<std::string> roles;
    for (int i = 0; i < bots; ++i) {
        roles.push_back(std::to_string(i));
    }
    return roles;
}

BarImage fleetImage(int bots, const std::string& busy = "") {
    BarState bars;
    setOrder(bars, rolesOf(bots));
    if (!busy.empty()) {
        bars.barCurrent[busy] = 1;
    }
    return barImage(bars, lastHue);
}

TEST(TrayBars, AreNeverASmudgeHoweverManyBotsThereAre) {
    for (const int side : sides) {
        for (const int bots : {0, 1, 2, 5, 7, 8, 20, 21, 22, 60}) {
            const auto bars = trayBars(fleetImage(bots), side);
            ASSERT_FALSE(bars.empty());
            int end = -1; // a gap of one pixel before the first costs nothing
            for (const TrayBar& bar : bars) {
                EXPECT_GE(bar.x, end + 1) << side << " pixels, " << bots << " bots";
                EXPECT_GE(bar.width, 2);
                EXPECT_GE(bar.height, 2);
                end = bar.x + bar.width;
            }
            EXPECT_LE(end, side);
        }
    }
}

TEST(TrayBars, StandInTheMiddleOfTheirSquare) {
    for (const int side : sides) {
        for (const int bots : {1, 5, 20, 60}) {
            const auto bars = trayBars(fleetImage(bots, "0"), side);
            const int left = bars.front().x;
            const int right = side - bars.back().x - bars.back().width;
            EXPECT_LE(std::abs(left - right), 1);
            for (const TrayBar& bar : bars) {
                EXPECT_EQ(bar.y, side - bar.y - bar.height);
            }
        }
    }
}

TEST(TrayBars, AreOneForEachBotAsLongAsTheyFit) {
    EXPECT_EQ(trayBars(fleetImage(5), 16).size(), 5U);
    EXPECT_EQ(trayBars(fleetImage(6), 16).size(), 5U);
    EXPECT_EQ(trayBars(fleetImage(7), 22).size(), 7U);
    EXPECT_EQ(trayBars(fleetImage(20), 64).size(), 20U);
    EXPECT_EQ(trayBars(fleetImage(60), 64).size(), 21U);
}

TEST(TrayBars, OfAFullSquareHaveTheStripsMeasure) {
    EXPECT_THAT(trayBars(fleetImage(5), 16),
                ElementsAre(TrayBar{1, 5, 2, 6, 0.0}, TrayBar{4, 5, 2, 6, lastHue / 4},
                            TrayBar{7, 5, 2, 6, lastHue / 2}, TrayBar{10, 5, 2, 6, 0.75 * lastHue},
                            TrayBar{13, 5, 2, 6, lastHue}));
}

TEST(TrayBars, FillTheirSquareWithGapsOfAThirdOfABar) {
    const auto bars = trayBars(fleetImage(4), 16);
    ASSERT_EQ(bars.size(), 4U);
    for (std::size_t i = 0; i < bars.size(); ++i) {
        EXPECT_EQ(bars[i].width, 3);
        EXPECT_EQ(bars[i].x, bars[0].x + static_cast<int>(i) * 4);
    }
}

TEST(TrayBars, FillTheirSquareWithGapsOfHalfABar) {
    const auto bars = trayBars(fleetImage(3), 16);
    ASSERT_EQ(bars.size(), 3U);
    EXPECT_EQ(bars[0].width, 4);
    EXPECT_EQ(bars[1].x, bars[0].x + 6);
}

TEST(TrayBars, ThatAreSharedRiseWithAnyOfTheirBots) {
    for (int busy = 0; busy < 20; ++busy) {
        const auto bars = trayBars(fleetImage(20, std::to_string(busy)), 16);
        ASSERT_EQ(bars.size(), 5U);
        for (std::size_t i = 0; i < bars.size(); ++i) {
            const bool shared = static_cast<int>(i) == busy / 4;
            EXPECT_EQ(bars[i].height, shared ? 16 : 6) << "bot " << busy << ", bar " << i;
        }
    }
}

TEST(TrayBars, ThatAreSharedKeepTheOrderOfTheRainbow) {
    const auto bars = trayBars(fleetImage(60), 22);
    for (std::size_t i = 1; i < bars.size(); ++i) {
        EXPECT_GT(bars[i].hue, bars[i - 1].hue);
    }
    EXPECT_GE(bars.front().hue, 0.0);
    EXPECT_LE(bars.back().hue, lastHue);
}

TEST(TrayBars, FillMostOfTheirSquare) {
    for (const int side : sides) {
        for (const int bots : {5, 8, 20, 60}) {
            const auto bars = trayBars(fleetImage(bots), side);
            const int used = bars.back().x + bars.back().width - bars.front().x;
            EXPECT_GE(used, side * 2 / 3) << side << " pixels, " << bots << " bots";
        }
    }
}

TEST(TrayBars, AtRestAreSeenAndRiseFromThere) {
    for (const int side : sides) {
        BarImage image = fleetImage(1);
        int before = trayBars(image, side).front().height;
        EXPECT_GE(before, side / 3);
        EXPECT_LE(before, side / 2);
        for (const double height : {5.0, 10.0, 16.0}) {
            image.bars.front().height = height;
            const int now = trayBars(image, side).front().height;
            EXPECT_GT(now, before);
            before = now;
        }
        EXPECT_EQ(before, side);
    }
}

TEST(TrayBars, OfASmallFleetAreBroadButNoWall) {
    for (const int side : sides) {
        EXPECT_EQ(trayBars(fleetImage(1), side).front().width, side / 4);
    }
}

} // namespace
} // namespace varnhold::testing
