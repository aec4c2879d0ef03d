#include <gtest/gtest.h>
#include <vector>

#include <QApplication>
#include <QStyle>

#include "views/colors/colors.h"
#include "views/colors/model_grounds.h"
#include "views/status/bar_painter.h"

namespace varnhold::testing {
namespace {

std::vector<QPalette> ourPalettes() {
    return {lightPalette(), darkPalette(), paletteOf({.dark = false, .highContrast = true}),
            paletteOf({.dark = true, .highContrast = true})};
}

qreal leastContrast(const QPalette& palette) {
    return isHighContrast(palette) ? strongContrast : readableContrast;
}

std::vector<QPalette> palettes() {
    std::vector<QPalette> all = ourPalettes();
    all.push_back(QApplication::style()->standardPalette());
    // Desktops come in all colours, some of them hard on the eyes.
    for (const QColor& ground : {QColor(Qt::white), QColor(Qt::black), QColor(0x80, 0x80, 0x80),
                                 QColor(0xf4, 0xe4, 0xc0), QColor(0x20, 0x30, 0x48)}) {
        all.emplace_back(ground, ground);
    }
    return all;
}

TEST(Contrast, IsThatOfTheGuideline) {
    EXPECT_NEAR(contrast(Qt::black, Qt::white), 21, 1e-6);
    EXPECT_NEAR(contrast(Qt::white, Qt::black), 21, 1e-6);
    EXPECT_NEAR(contrast(Qt::red, Qt::red), 1, 1e-6);
    EXPECT_NEAR(contrast(QColor(0x76, 0x76, 0x76), Qt::white), 4.54, 0.01);
    EXPECT_NEAR(contrast(QColor(0x77, 0x77, 0x77), Qt::white), 4.48, 0.01);
}

TEST(Contrast, OfEveryTextOnEveryGroundIsEnoughToRead) {
    for (const QPalette& palette : palettes()) {
        const QColor ground = palette.color(QPalette::Window);
        const qreal least = leastContrast(palette);
        EXPECT_GE(contrast(alertColor(palette), ground), least);
        EXPECT_GE(contrast(warningColor(palette), ground), least);
        EXPECT_GE(contrast(quietColor(palette), ground), least);
        const Selection selection = selectionColors(palette);
        EXPECT_GE(contrast(selection.text, selection.ground), least);
    }
}

TEST(Contrast, OfOurPalettesIsEnoughInAllTheirTexts) {
    for (const QPalette& palette : ourPalettes()) {
        for (const auto ground : {QPalette::Window, QPalette::Base, QPalette::Button}) {
            for (const auto text : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
                EXPECT_GE(contrast(palette.color(text), palette.color(ground)), 7.0);
            }
        }
        EXPECT_GE(
            contrast(palette.color(QPalette::HighlightedText), palette.color(QPalette::Highlight)),
            leastContrast(palette));
        EXPECT_GE(contrast(palette.color(QPalette::Link), palette.color(QPalette::Window)),
                  leastContrast(palette));
    }
}

TEST(Contrast, IsStrongOnlyWhereThePaletteIsOfPureColours) {
    for (const bool dark : {false, true}) {
        EXPECT_TRUE(isHighContrast(paletteOf({.dark = dark, .highContrast = true})));
        EXPECT_FALSE(isHighContrast(paletteOf({.dark = dark})));
    }
    EXPECT_FALSE(isHighContrast(QApplication::style()->standardPalette()));
}

// The toolkit draws its own frames with these.
TEST(Contrast, OfTheToolkitsEdgesIsSeenWhereItIsStrong) {
    for (const bool dark : {false, true}) {
        const QPalette palette = paletteOf({.dark = dark, .highContrast = true});
        for (const auto edge : {QPalette::Light, QPalette::Mid, QPalette::Dark}) {
            EXPECT_GE(contrast(palette.color(edge), palette.color(QPalette::Window)), 3);
        }
    }
}

TEST(Contrast, AReadableColourStaysAsItIs) {
    EXPECT_EQ(readable(QColor(0x10, 0x20, 0x90), Qt::white), QColor(0x10, 0x20, 0x90));
}

TEST(Palettes, KnowWhetherTheyAreDark) {
    EXPECT_FALSE(isDark(lightPalette()));
    EXPECT_TRUE(isDark(darkPalette()));
}

int hueDistance(const QColor& one, const QColor& other) {
    const int apart = std::abs(one.hslHue() - other.hslHue());
    return std::min(apart, 360 - apart);
}

TEST(ModelGrounds, KeepTheHueOfTheirNameAndCarryWhiteWords) {
    constexpr int justSeen = 16; // degrees
    for (const ModelGround& each : modelGrounds) {
        for (const bool dark : {false, true}) {
            const QColor ground = modelGround(each.name, {.dark = dark});
            EXPECT_EQ(ground.alpha(), 255) << each.name;
            EXPECT_LE(hueDistance(ground, QColor::fromRgb(each.wanted)), justSeen) << each.name;
            const auto faint = [](int channel) { return (4 * 255 + channel) / 5; };
            EXPECT_GE(
                contrast(QColor(faint(ground.red()), faint(ground.green()), faint(ground.blue())),
                         ground),
                readableContrast)
                << each.name;
        }
    }
}

TEST(ModelGrounds, KeepOrangeAndYellowApart) {
    for (const bool dark : {false, true}) {
        EXPECT_GE(hueDistance(modelGround("orange", {.dark = dark}),
                              modelGround("yellow", {.dark = dark})),
                  25);
    }
}

TEST(ModelGrounds, KeepTheirHueWhereTheirWordsAreOfStrongContrast) {
    for (const ModelGround& each : modelGrounds) {
        const QColor ground = modelGround(each.name, {.highContrast = true});
        EXPECT_GE(contrast(Qt::white, ground), strongContrast) << each.name;
        EXPECT_LE(hueDistance(ground, modelGround(each.name, {})), 4) << each.name;
    }
}

TEST(ModelGrounds, AreIndigoForANameThatNoneHas) {
    const Look light;
    const Look dark{.dark = true};
    EXPECT_EQ(modelGround("Purple", light), modelGround("indigo", light));
    EXPECT_EQ(modelGround("", dark), modelGround("indigo", dark));
    EXPECT_NE(modelGround("indigo", light), modelGround("indigo", dark));
}

TEST(BarColour, IsTheHueAtItsSaturationAndBrightness) {
    EXPECT_EQ(barColor(0).name(), QStringLiteral("#f23030"));
    EXPECT_EQ(barColor(0.415).name(), QStringLiteral("#30f28f"));
    EXPECT_EQ(barColor(0.83).name(), QStringLiteral("#ee30f2"));
    EXPECT_EQ(barColor(0.83).alpha(), 255);
}

} // namespace
} // namespace varnhold::testing
