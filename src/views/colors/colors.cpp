#include "views/colors/colors.h"

#include <algorithm>
#include <cmath>

namespace varnhold {

namespace {

constexpr QColor black{0x00, 0x00, 0x00};
constexpr QColor white{0xff, 0xff, 0xff};
constexpr int stepsToTheEnd = 40; // of a colour on its way to black or white

// The light that a channel of 0 to 1 gives, as WCAG defines it for sRGB.
qreal linear(qreal channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

qreal luminance(const QColor& color) {
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

QColor between(const QColor& from, const QColor& to, int step) {
    const auto mix = [step](int a, int b) { return a + (b - a) * step / stepsToTheEnd; };
    return {mix(from.red(), to.red()), mix(from.green(), to.green()), mix(from.blue(), to.blue())};
}

// A look in all of its colours.
struct Dress {
    Tones tones;
    QColor button;
    QColor disabled; // words
};

const Dress light{.tones = {.window = {0xf6, 0xf6, 0xf8},
                            .text = {0x1d, 0x1d, 0x1f},
                            .secondaryText = {0x50, 0x50, 0x56},
                            .field = {0xff, 0xff, 0xff},
                            .accent = {0x0a, 0x60, 0xd6},
                            .accentText = white,
                            .red = {0xb3, 0x26, 0x1d},
                            .orange = {0xba, 0x5c, 0x00}},
                  .button = {0xec, 0xec, 0xef},
                  .disabled = {0x75, 0x75, 0x7a}};

const Dress dark{.tones = {.window = {0x26, 0x26, 0x29},
                           .text = {0xf2, 0xf2, 0xf4},
                           .secondaryText = {0xc0, 0xc0, 0xc7},
                           .field = {0x1b, 0x1b, 0x1d},
                           .accent = {0x1f, 0x6f, 0xe5},
                           .accentText = white,
                           .red = {0xff, 0x85, 0x7d},
                           .orange = {0xff, 0x9f, 0x2e}},
                 .button = {0x38, 0x38, 0x3c},
                 .disabled = {0x98, 0x98, 0x9d}};

const Dress strongLight{.tones = {.window = white,
                                  .text = black,
                                  .secondaryText = {0x30, 0x30, 0x34},
                                  .field = white,
                                  .accent = {0x0a, 0x44, 0xa8},
                                  .accentText = white,
                                  .red = {0x90, 0x10, 0x08},
                                  .orange = {0x7d, 0x3d, 0x00}},
                        .button = white,
                        .disabled = {0x66, 0x66, 0x6a}};

const Dress strongDark{.tones = {.window = black,
                                 .text = white,
                                 .secondaryText = {0xdc, 0xdc, 0xe2},
                                 .field = black,
                                 .accent = {0x9c, 0xc6, 0xff},
                                 .accentText = black,
                                 .red = {0xff, 0x9c, 0x95},
                                 .orange = {0xff, 0xb0, 0x4f}},
                       .button = black,
                       .disabled = {0xa0, 0xa0, 0xa6}};

const Dress& dressOf(const Look& look) {
    if (look.highContrast) {
        return look.dark ? strongDark : strongLight;
    }
    return look.dark ? dark : light;
}

// The toolkit makes edges of these; those that it finds by itself between black and black are none.
void strengthenEdges(QPalette& palette, const Look& look) {
    for (const auto role :
         {QPalette::Light, QPalette::Midlight, QPalette::Mid, QPalette::Dark, QPalette::Shadow}) {
        palette.setColor(role, dressOf(look).disabled);
    }
}

qreal leastContrast(const QPalette& palette) {
    return isHighContrast(palette) ? strongContrast : readableContrast;
}

// A tone as it is readable on the ground of the palette.
QColor onPalette(const QPalette& palette, QColor Tones::*tone) {
    return readable(tones(lookOf(palette)).*tone, palette.color(QPalette::Window),
                    leastContrast(palette));
}

} // namespace

qreal contrast(const QColor& one, const QColor& other) {
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

QColor readable(const QColor& wanted, const QColor& ground, qreal least) {
    const QColor end = isDark(ground) ? white : black;
    for (int step = 0; step < stepsToTheEnd; ++step) {
        const QColor color = between(wanted, end, step);
        if (contrast(color, ground) >= least) {
            return color;
        }
    }
    return end; // one of the two is readable on any ground
}

bool isDark(const QColor& ground) {
    return contrast(white, ground) > contrast(black, ground);
}

bool isDark(const QPalette& palette) {
    return isDark(palette.color(QPalette::Window));
}

bool isHighContrast(const QColor& ground, const QColor& text) {
    constexpr qreal allButAll = 20; // of 21
    return contrast(ground, text) > allButAll;
}

bool isHighContrast(const QPalette& palette) {
    return isHighContrast(palette.color(QPalette::Window), palette.color(QPalette::WindowText));
}

Look lookOf(const QPalette& palette) {
    return {.dark = isDark(palette), .highContrast = isHighContrast(palette)};
}

QColor fromHsv(double hue, double saturation, double value) {
    return QColor::fromHsvF(static_cast<float>(hue), static_cast<float>(saturation),
                            static_cast<float>(value));
}

const Tones& tones(const Look& look) {
    return dressOf(look).tones;
}

QColor alertColor(const QPalette& palette) {
    return onPalette(palette, &Tones::red);
}

QColor warningColor(const QPalette& palette) {
    return onPalette(palette, &Tones::orange);
}

QColor quietColor(const QPalette& palette) {
    return onPalette(palette, &Tones::secondaryText);
}

Selection selectionColors(const QPalette& palette) {
    const QColor text = palette.color(QPalette::HighlightedText);
    return {readable(palette.color(QPalette::Highlight), text, leastContrast(palette)), text};
}

QPalette paletteOf(const Look& look) {
    const Dress& dress = dressOf(look);
    const Tones& tones = dress.tones;
    QPalette palette(dress.button, tones.window);
    for (const auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, tones.text);
        palette.setColor(QPalette::Disabled, role, dress.disabled);
    }
    palette.setColor(QPalette::Base, tones.field);
    palette.setColor(QPalette::ToolTipBase, tones.field);
    palette.setColor(QPalette::PlaceholderText, dress.disabled);
    palette.setColor(QPalette::Highlight, tones.accent);
    palette.setColor(QPalette::HighlightedText, tones.accentText);
    palette.setColor(QPalette::Link, readable(tones.accent, tones.window));
    if (look.highContrast) {
        palette.setColor(QPalette::AlternateBase, tones.field);
        strengthenEdges(palette, look);
    }
    return palette;
}

QPalette lightPalette() {
    return paletteOf({.dark = false});
}

QPalette darkPalette() {
    return paletteOf({.dark = true});
}

} // namespace varnhold
