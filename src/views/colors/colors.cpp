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

const Tones lightTones{.window = {0xf6, 0xf6, 0xf8},
                       .text = {0x1d, 0x1d, 0x1f},
                       .secondaryText = {0x50, 0x50, 0x56},
                       .field = {0xff, 0xff, 0xff},
                       .accent = {0x0a, 0x60, 0xd6},
                       .red = {0xb3, 0x26, 0x1d},
                       .orange = {0xba, 0x5c, 0x00}};

const Tones darkTones{.window = {0x26, 0x26, 0x29},
                      .text = {0xf2, 0xf2, 0xf4},
                      .secondaryText = {0xc0, 0xc0, 0xc7},
                      .field = {0x1b, 0x1b, 0x1d},
                      .accent = {0x1f, 0x6f, 0xe5},
                      .red = {0xff, 0x85, 0x7d},
                      .orange = {0xff, 0x9f, 0x2e}};

QPalette paletteOf(const Tones& tones, const QColor& button, const QColor& disabled) {
    QPalette palette(button, tones.window);
    for (const auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, tones.text);
        palette.setColor(QPalette::Disabled, role, disabled);
    }
    palette.setColor(QPalette::Base, tones.field);
    palette.setColor(QPalette::ToolTipBase, tones.field);
    palette.setColor(QPalette::PlaceholderText, disabled);
    palette.setColor(QPalette::Highlight, tones.accent);
    palette.setColor(QPalette::HighlightedText, white);
    palette.setColor(QPalette::Link, readable(tones.accent, tones.window));
    return palette;
}

// A tone as it is readable on the ground of the palette.
QColor onPalette(const QPalette& palette, QColor Tones::*tone) {
    return readable(tones(isDark(palette)).*tone, palette.color(QPalette::Window));
}

} // namespace

qreal contrast(const QColor& one, const QColor& other) {
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

QColor readable(const QColor& wanted, const QColor& ground) {
    const QColor end = isDark(ground) ? white : black;
    for (int step = 0; step < stepsToTheEnd; ++step) {
        const QColor color = between(wanted, end, step);
        if (contrast(color, ground) >= readableContrast) {
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

QColor fromHsv(double hue, double saturation, double value) {
    return QColor::fromHsvF(static_cast<float>(hue), static_cast<float>(saturation),
                            static_cast<float>(value));
}

const Tones& tones(bool dark) {
    return dark ? darkTones : lightTones;
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
    return {readable(palette.color(QPalette::Highlight), text), text};
}

QPalette lightPalette() {
    return paletteOf(lightTones, {0xec, 0xec, 0xef}, {0x75, 0x75, 0x7a});
}

QPalette darkPalette() {
    return paletteOf(darkTones, {0x38, 0x38, 0x3c}, {0x98, 0x98, 0x9d});
}

} // namespace varnhold
