#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "views/macos/popover_layout.h"

namespace varnhold {
namespace {

using Kind = PopoverText::Kind;

// Letters as wide as half their size, in lines as high as their size.
double heightOf(Kind kind, const std::string& text, double width) {
    const double size = fontSizeOf(kind);
    const double lines = std::ceil(static_cast<double>(text.size()) * size / 2 / width);
    return std::max(1.0, lines) * size;
}

NoticePanel panelOf(std::vector<ModelNotice> notices) {
    return noticePanel(std::move(notices));
}

TEST(PopoverLayout, PutsTheTitleBesideTheIcon) {
    const PopoverLayout layout = popoverLayout(panelOf({{"A new model", false}}), true, heightOf);

    EXPECT_EQ(layout.icon, (PopoverRectangle{16, 16, 26, 26}));
    EXPECT_EQ(layout.texts[0].text, "New AI model installed");
    EXPECT_EQ(layout.texts[0].place, (PopoverRectangle{51, 22, 253, 14}));
}

TEST(PopoverLayout, LetsTheTitleTakeTheIconsPlaceWhereThereIsNone) {
    const PopoverLayout layout = popoverLayout(panelOf({{"A new model", false}}), false, heightOf);

    EXPECT_EQ(layout.icon, PopoverRectangle{});
    EXPECT_EQ(layout.texts[0].place, (PopoverRectangle{16, 16, 288, 14}));
}

TEST(PopoverLayout, PutsAWarningRightBelowItsMessage) {
    const PopoverLayout layout =
        popoverLayout(panelOf({{"One", true}, {"Two", false}}), true, heightOf);

    ASSERT_EQ(layout.texts.size(), 4U);
    EXPECT_EQ(layout.texts[1].place, (PopoverRectangle{16, 54, 288, 12}));
    EXPECT_EQ(layout.texts[2].kind, Kind::warning);
    EXPECT_EQ(layout.texts[2].text, chainWarning);
    EXPECT_EQ(layout.texts[2].place, (PopoverRectangle{16, 68, 288, 11}));
    EXPECT_EQ(layout.texts[3].place, (PopoverRectangle{16, 91, 288, 12}));
}

TEST(PopoverLayout, IsAsLargeAsThePanelSays) {
    const PopoverLayout layout =
        popoverLayout(panelOf({{"One", true}, {"Two", false}}), true, heightOf);

    EXPECT_EQ(layout.width, 320);
    EXPECT_EQ(layout.height, 156);
}

TEST(PopoverLayout, GrowsForAMessageThatNeedsMoreLines) {
    const std::string message(480, 'm'); // ten lines of 48 letters
    const PopoverLayout layout = popoverLayout(panelOf({{message, false}}), true, heightOf);

    EXPECT_EQ(layout.texts[1].place.height, 120);
    EXPECT_EQ(layout.height, 54 + 120 + 16);
}

} // namespace
} // namespace varnhold
