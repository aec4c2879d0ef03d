#include <gtest/gtest.h>
#include <optional>
#include <vector>

#include "views/desktop/near_scale.h"
#include "views/desktop/placement.h"
#include "views/desktop/work_area.h"
#include "views/status/strip_place.h"

namespace varnhold::testing {
namespace {

const QRect area(0, 30, 1000, 770);
const QSize panel(300, 200);

TEST(Placement, IsUnderTheAnchor) {
    const QRect anchor(400, 40, 80, 28);
    EXPECT_EQ(placeBeside(anchor, panel, area, Alignment::left, 6), QPoint(400, 74));
    EXPECT_EQ(placeBeside(anchor, panel, area, Alignment::centre, 6), QPoint(290, 74));
}

TEST(Placement, IsAboveAnAnchorAtTheBottom) {
    EXPECT_EQ(placeBeside({400, 770, 80, 28}, panel, area, Alignment::left, 6), QPoint(400, 564));
}

TEST(Placement, StaysInsideTheArea) {
    EXPECT_EQ(placeBeside({980, 40, 80, 28}, panel, area, Alignment::left, 6).x(), 700);
    EXPECT_EQ(placeBeside({-50, 40, 80, 28}, panel, area, Alignment::centre, 6).x(), 0);
    EXPECT_EQ(placeBeside({400, 0, 80, 10}, panel, area, Alignment::left, 6).y(), 30);
}

TEST(Placement, OfSomethingTooLargeStartsWhereTheAreaStarts) {
    EXPECT_EQ(placeBeside({400, 400, 80, 28}, {2000, 2000}, area, Alignment::left, 6),
              QPoint(0, 30));
}

TEST(FittedBeside, LeavesAPanelThatFitsAsItIs) {
    const QRect anchor(400, 40, 80, 28);
    EXPECT_EQ(fittedBeside(anchor, panel, area, Alignment::left, 6), QRect(QPoint(400, 74), panel));
}

TEST(FittedBeside, IsNoHigherThanTheRoomAndCoversNoAnchor) {
    EXPECT_EQ(fittedBeside({400, 40, 80, 28}, {300, 2000}, area, Alignment::left, 6),
              QRect(400, 74, 300, 726));
    EXPECT_EQ(fittedBeside({400, 770, 80, 28}, {300, 2000}, area, Alignment::left, 6),
              QRect(400, 30, 300, 734));
    EXPECT_EQ(fittedBeside({400, 300, 80, 28}, {300, 2000}, area, Alignment::left, 6),
              QRect(400, 334, 300, 466));
}

TEST(FittedBeside, CoversAnAnchorThatTakesAllRoom) {
    EXPECT_EQ(fittedBeside({0, 0, 1000, 800}, panel, area, Alignment::left, 6).size(), panel);
}

TEST(PanelCorner, IsWhereAPanelTakesSpace) {
    const QRect screen(0, 0, 1000, 800);
    EXPECT_EQ(panelCorner(screen, {0, 30, 1000, 770}).topLeft(), QPoint(999, 30));
    EXPECT_EQ(panelCorner(screen, {0, 0, 1000, 760}).topLeft(), QPoint(999, 759));
    EXPECT_EQ(panelCorner(screen, screen).topLeft(), QPoint(999, 0));
}

TEST(NearScale, IsOneThatNobodySees) {
    for (const double near : {92.0, 95.0, 98.0, 100.0, 100.7}) {
        EXPECT_TRUE(isNearWhole(near)) << near;
    }
    for (const double other : {0.0, 90.0, 96.0, 101.0, 120.0, 192.0}) {
        EXPECT_FALSE(isNearWhole(other)) << other;
    }
}

TEST(FreePlace, IsAtTheBottomRightBesideThePanels) {
    EXPECT_EQ(freePlace({80, 28}, area), QPoint(912, 764));
}

TEST(FreePlace, InTheShellsBarIsBetweenItsClockAndItsSigns) {
    const QRect large(0, 0, 1280, 800);
    EXPECT_EQ(placeInTopBar({120, 28}, large, {0, 32, 1280, 768}), QPoint(840, 2));
    EXPECT_EQ(placeInTopBar({120, 28}, large.translated(1280, 100), {1280, 132, 1280, 768}),
              QPoint(2120, 102));
}

TEST(FreePlace, IsNotInABarWithoutTheRoom) {
    const QRect large(0, 0, 1280, 800);
    EXPECT_EQ(placeInTopBar({120, 28}, large, {0, 27, 1280, 773}), std::nullopt);
    EXPECT_EQ(placeInTopBar({120, 28}, large, {0, 0, 1280, 760}), std::nullopt);
    EXPECT_EQ(placeInTopBar({240, 28}, large, {0, 32, 1280, 768}), std::nullopt);
}

TEST(AreaBeside, IsWhatPanelsLeaveOfEachScreen) {
    const QRect left(0, 0, 1280, 800);
    const QRect right(1280, 0, 1000, 600);
    // The lower edge of all is further down than that of the right one.
    const std::vector<KeptByPanel> bottoms = {{Qt::BottomEdge, {0, 771, 1280, 29}},
                                              {Qt::BottomEdge, {1280, 560, 1000, 240}}};
    EXPECT_EQ(areaBeside(bottoms, left), QRect(0, 0, 1280, 771));
    EXPECT_EQ(areaBeside(bottoms, right), QRect(1280, 0, 1000, 560));
    const std::vector<KeptByPanel> others = {{Qt::TopEdge, {0, 0, 1280, 24}},
                                             {Qt::TopEdge, {0, 0, 1280, 20}},
                                             {Qt::LeftEdge, {0, 0, 50, 800}},
                                             {Qt::RightEdge, {2240, 0, 40, 600}}};
    EXPECT_EQ(areaBeside(others, left), QRect(50, 24, 1230, 776));
    EXPECT_EQ(areaBeside(others, right), QRect(1280, 0, 960, 600));
}

TEST(AreaBeside, LosesNothingToAPanelBetweenTwoScreens) {
    const std::vector<KeptByPanel> between = {{Qt::LeftEdge, {0, 0, 1320, 800}}};
    EXPECT_EQ(areaBeside(between, {0, 0, 1280, 800}), QRect(0, 0, 1280, 800));
    EXPECT_EQ(areaBeside(between, {1280, 0, 1000, 600}), QRect(1320, 0, 960, 600));
}

TEST(KeptInside, MovesAWindowNoFurtherThanNeeded) {
    EXPECT_EQ(keptInside({10, 50, 80, 28}, area), QPoint(10, 50));
    EXPECT_EQ(keptInside({1500, 900, 80, 28}, area), QPoint(920, 772));
    EXPECT_EQ(keptInside({-20, 0, 80, 28}, area), QPoint(0, 30));
}

} // namespace
} // namespace varnhold::testing
