#include <gtest/gtest.h>
#include <vector>

#include <QApplication>
#include <QStyle>

#include "views/colors/colors.h"
#include "views/colors/model_grounds.h"
#include "views/status/bar_painter.h"

namespace varnhold::testing {
namespace {

std::vector<QPalette> palettes() {
    std::vector<QPalette> all{lightPalette(), darkPalette(),
                              QApplication::style()->standardPalette()};
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
        EXPECT_GE(contrast(alertColor(palette), ground), readableContrast);
        EXPECT_GE(contrast(warningColor(palette), ground), readableContrast);
        EXPECT_GE(contrast(quietColor(palette), ground), readableContrast);
        const Selection selection = selectionColors(palette);
        EXPECT_GE(contrast(selection.text, selection.ground), readableContrast);
    }
}

TEST(Contrast, OfOurPalettesIsEnoughInAllTheirTexts) {
    for (const QPalette& palette : {lightPalette(), darkPalette()}) {
        for (const auto ground : {QPalette::Window, QPalette::Base, QPalette::Button}) {
            for (const auto text : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
                EXPECT_GE(contrast(palette.color(text), palette.color(ground)), 7.0);
            }
        }
        EXPECT_GE(
            contrast(palette.color(QPalette::HighlightedText), palette.color(QPalette::Highlight)),
            readableContrast);
        EXPECT_GE(contrast(palette.color(QPalette::Link), palette.color(QPalette::Window)),
                  readableContrast);
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
            const QColor ground = modelGround(each.name, dark);
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
        EXPECT_GE(hueDistance(modelGround("orange", dark), modelGround("yellow", dark)), 25);
    }
}

TEST(ModelGrounds, AreIndigoForANameThatNoneHas) {
    EXPECT_EQ(modelGround("Purple", false), modelGround("indigo", false));
    EXPECT_EQ(modelGround("", true), modelGround("indigo", true));
    EXPECT_NE(modelGround("indigo", false), modelGround("indigo", true));
}

TEST(BarColour, IsTheHueAtItsSaturationAndBrightness) {
    EXPECT_EQ(barColor(0).name(), QStringLiteral("#f23030"));
    EXPECT_EQ(barColor(0.415).name(), QStringLiteral("#30f28f"));
    EXPECT_EQ(barColor(0.83).name(), QStringLiteral("#ee30f2"));
    EXPECT_EQ(barColor(0.83).alpha(), 255);
}

} // namespace
} // namespace varnhold::testing
