#include "views/desktop/colours.h"

#include <QPainter>
#include <QWidget>
#include <algorithm>
#include <cmath>

#include "views/desktop/x11_hints.h"

namespace varnhold {

namespace {

constexpr const char* squareCorners = "squareCorners";
constexpr QColor black{0x00, 0x00, 0x00};
constexpr QColor white{0xff, 0xff, 0xff};
constexpr int stepsToTheEnd = 40; // of a colour on its way to black or white

// The light that a channel of 0 to 1 gives, as WCAG defines it for sRGB.
qreal linear(qreal channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

qreal luminance(const QColor& colour) {
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

QColor between(const QColor& from, const QColor& to, int step) {
    const auto mix = [step](int a, int b) { return a + (b - a) * step / stepsToTheEnd; };
    return {mix(from.red(), to.red()), mix(from.green(), to.green()), mix(from.blue(), to.blue())};
}

struct Colours {
    QColor window;
    QColor text;
    QColor base;
    QColor button;
    QColor accent;
    QColor disabled;
};

QPalette paletteOf(const Colours& colours) {
    QPalette palette(colours.button, colours.window);
    for (const auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, colours.text);
        palette.setColor(QPalette::Disabled, role, colours.disabled);
    }
    palette.setColor(QPalette::Base, colours.base);
    palette.setColor(QPalette::ToolTipBase, colours.base);
    palette.setColor(QPalette::PlaceholderText, colours.disabled);
    palette.setColor(QPalette::Highlight, colours.accent);
    palette.setColor(QPalette::HighlightedText, white);
    palette.setColor(QPalette::Link, readable(colours.accent, colours.window));
    return palette;
}

} // namespace

qreal contrast(const QColor& one, const QColor& other) {
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

QColor readable(const QColor& wanted, const QColor& ground) {
    const QColor end = contrast(white, ground) > contrast(black, ground) ? white : black;
    for (int step = 0; step < stepsToTheEnd; ++step) {
        const QColor colour = between(wanted, end, step);
        if (contrast(colour, ground) >= readableContrast) {
            return colour;
        }
    }
    return end; // one of the two is readable on any ground
}

bool isDark(const QPalette& palette) {
    const QColor ground = palette.color(QPalette::Window);
    return contrast(white, ground) > contrast(black, ground);
}

QColor alertColour(const QPalette& palette) {
    const QColor red = isDark(palette) ? QColor(0xff, 0x6b, 0x63) : QColor(0xc4, 0x1e, 0x16);
    return readable(red, palette.color(QPalette::Window));
}

QColor warningColour(const QPalette& palette) {
    const QColor orange = isDark(palette) ? QColor(0xff, 0x9f, 0x0a) : QColor(0xa8, 0x4e, 0x00);
    return readable(orange, palette.color(QPalette::Window));
}

QColor quietColour(const QPalette& palette) {
    const QColor grey = isDark(palette) ? QColor(0xa8, 0xa8, 0xad) : QColor(0x64, 0x64, 0x69);
    return readable(grey, palette.color(QPalette::Window));
}

Selection selectionColours(const QPalette& palette) {
    const QColor text = palette.color(QPalette::HighlightedText);
    return {readable(palette.color(QPalette::Highlight), text), text};
}

QPalette lightPalette() {
    return paletteOf({.window = {0xf6, 0xf6, 0xf8},
                      .text = {0x1d, 0x1d, 0x1f},
                      .base = {0xff, 0xff, 0xff},
                      .button = {0xec, 0xec, 0xef},
                      .accent = {0x0a, 0x60, 0xd6},
                      .disabled = {0x75, 0x75, 0x7a}});
}

QPalette darkPalette() {
    return paletteOf({.window = {0x26, 0x26, 0x29},
                      .text = {0xf2, 0xf2, 0xf4},
                      .base = {0x1b, 0x1b, 0x1d},
                      .button = {0x38, 0x38, 0x3c},
                      .accent = {0x1f, 0x6f, 0xe5},
                      .disabled = {0x98, 0x98, 0x9d}});
}

void drawPanel(QPainter& painter, const QRectF& place, const QPalette& palette, qreal radius,
               float strength) {
    painter.save();
    const auto* widget = dynamic_cast<const QWidget*>(painter.device());
    const bool isSquare = widget != nullptr && widget->property(squareCorners).toBool();
    painter.setRenderHint(QPainter::Antialiasing);
    QColor frame = palette.color(QPalette::WindowText);
    frame.setAlphaF(strength);
    painter.setPen(QPen(frame, 1));
    painter.setBrush(palette.color(QPalette::Window));
    painter.drawRoundedRect(place.adjusted(0.5, 0.5, -0.5, -0.5), isSquare ? 0 : radius,
                            isSquare ? 0 : radius);
    painter.restore();
}

void chooseCorners(QWidget& widget) {
    widget.setProperty(squareCorners, !windowsAreBlended());
}

} // namespace varnhold
