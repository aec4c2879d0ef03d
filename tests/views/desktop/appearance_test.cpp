#include <gtest/gtest.h>
#include <string>
#include <vector>

#include <QApplication>
#include <QDBusVariant>

#include "views/desktop/appearance.h"

namespace varnhold::testing {
namespace {

struct Setting {
    const char* group;
    const char* key;
    QVariant value;
};

const char* const appearance = "org.freedesktop.appearance";
const char* const accessibility = "org.gnome.desktop.a11y.interface";
const char* const interface = "org.gnome.desktop.interface";

LookWishes wishesOf(const std::vector<Setting>& settings) {
    LookWishes wishes;
    for (const Setting& each : settings) {
        EXPECT_TRUE(
            wishes.take(QString::fromLatin1(each.group), QString::fromLatin1(each.key), each.value))
            << each.key;
    }
    return wishes;
}

// "dark", "light", each perhaps with "strong ".
std::string wanted(const std::vector<Setting>& settings, const Look& own = {}) {
    const Look look = lookWanted(wishesOf(settings), own);
    return std::string(look.highContrast ? "strong " : "") + (look.dark ? "dark" : "light");
}

TEST(Appearance, IsTheToolkitsWhereNothingIsSaid) {
    EXPECT_EQ(wanted({}), "light");
    EXPECT_EQ(wanted({}, {.dark = true}), "dark");
    EXPECT_EQ(wanted({}, {.dark = true, .highContrast = true}), "strong dark");
}

TEST(Appearance, IsDarkOrLightAsTheDesktopSays) {
    EXPECT_EQ(wanted({{appearance, "color-scheme", 1U}}), "dark");
    EXPECT_EQ(wanted({{appearance, "color-scheme", 2U}}, {.dark = true}), "light");
    EXPECT_EQ(wanted({{appearance, "color-scheme", 0U}}, {.dark = true}), "dark");
    EXPECT_EQ(wanted({{appearance, "color-scheme", 7U}}), "light");
}

TEST(Appearance, IsOfStrongContrastInEveryWayThatDesktopsSayIt) {
    EXPECT_EQ(wanted({{appearance, "contrast", 1U}}), "strong light");
    EXPECT_EQ(wanted({{appearance, "contrast", 0U}}), "light");
    EXPECT_EQ(wanted({{appearance, "contrast", 5U}}), "light");
    EXPECT_EQ(wanted({{accessibility, "high-contrast", true}}), "strong light");
    EXPECT_EQ(wanted({{interface, "gtk-theme", QStringLiteral("HighContrast")}}), "strong light");
    EXPECT_EQ(wanted({{interface, "gtk-theme", QStringLiteral("HighContrastInverse")}}),
              "strong dark");
    EXPECT_EQ(wanted({{interface, "gtk-theme", QStringLiteral("Adwaita")}}), "light");
}

TEST(Appearance, IsDarkAndOfStrongContrastAtOnce) {
    EXPECT_EQ(wanted({{appearance, "color-scheme", 1U}, {accessibility, "high-contrast", true}}),
              "strong dark");
    EXPECT_EQ(
        wanted({{appearance, "color-scheme", 2U}, {appearance, "contrast", 1U}}, {.dark = true}),
        "strong light");
}

TEST(Appearance, IsAsTheLastChangeSays) {
    EXPECT_EQ(wanted({{appearance, "contrast", 1U}, {appearance, "contrast", 0U}}), "light");
    EXPECT_EQ(
        wanted({{accessibility, "high-contrast", true}, {accessibility, "high-contrast", false}}),
        "light");
}

TEST(Appearance, UnwrapsWhatOlderPortalsWrapTwice) {
    const QVariant once = QVariant::fromValue(QDBusVariant(1U));
    EXPECT_EQ(wanted({{appearance, "contrast", QVariant::fromValue(QDBusVariant(once))}}),
              "strong light");
}

TEST(Appearance, LeavesOtherSettingsAlone) {
    LookWishes wishes;
    EXPECT_FALSE(wishes.take(QString::fromLatin1(appearance), QStringLiteral("accent-color"), 1U));
    EXPECT_FALSE(wishes.take(QString::fromLatin1(interface), QStringLiteral("contrast"), 1U));
    EXPECT_FALSE(wishes.take(QString::fromLatin1(interface), QStringLiteral("color-scheme"),
                             QStringLiteral("prefer-dark")));
}

TEST(Appearance, GivesWindowsThePaletteOfEachLook) {
    for (const bool dark : {false, true}) {
        for (const bool highContrast : {false, true}) {
            applyLook({.colorScheme = dark ? 1U : 2U, .highContrast = highContrast});
            EXPECT_EQ(isDark(QApplication::palette()), dark);
            EXPECT_EQ(isHighContrast(QApplication::palette()), highContrast);
        }
    }
    QApplication::setPalette(lightPalette());
}

} // namespace
} // namespace varnhold::testing
