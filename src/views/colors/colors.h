#pragma once

#include <QColor>
#include <QPalette>

// The colours of all windows, whichever toolkit draws them, and what makes a colour readable as
// text on a ground. Pure functions; any thread.
namespace varnhold {

// The least contrast of text and ground that people with poor sight can read (WCAG 2.1, level AA).
inline constexpr qreal readableContrast = 4.5;
// And with very poor sight (level AAA), on desktops that say that theirs is.
inline constexpr qreal strongContrast = 7;

// 1 to 21, after WCAG 2.1; opacity is left out of account.
[[nodiscard]] qreal contrast(const QColor& one, const QColor& other);

// The colour itself if it has that contrast to the ground, or else the nearest one on the way to
// black or white that has.
[[nodiscard]] QColor readable(const QColor& wanted, const QColor& ground,
                              qreal least = readableContrast);

[[nodiscard]] bool isDark(const QColor& ground);
[[nodiscard]] bool isDark(const QPalette& palette);
// Black on white or white on black, as only those have it who need it.
[[nodiscard]] bool isHighContrast(const QColor& ground, const QColor& text);
[[nodiscard]] bool isHighContrast(const QPalette& palette);

// How windows look, as their palette says.
struct Look {
    bool dark = false;
    bool highContrast = false;
};

[[nodiscard]] Look lookOf(const QPalette& palette);

// All components from 0 to 1.
[[nodiscard]] QColor fromHsv(double hue, double saturation, double value);

// What windows of ours are coloured with.
struct Tones {
    QColor window;
    QColor text;
    QColor secondaryText; // that needn't be noticed at once
    QColor field;         // what text is typed on
    QColor accent;        // a ground, unlike the other colours
    QColor accentText;    // on that
    QColor red;
    QColor orange;
};

[[nodiscard]] const Tones& tones(const Look& look);

// The tones of these meanings, readable on the palette's own ground.

[[nodiscard]] QColor alertColor(const QPalette& palette);
[[nodiscard]] QColor warningColor(const QPalette& palette);
// For headers and keys.
[[nodiscard]] QColor quietColor(const QPalette& palette);

struct Selection {
    QColor ground;
    QColor text;
};

// Of the row under the pointer: the desktop's own colours, made readable.
[[nodiscard]] Selection selectionColors(const QPalette& palette);

// Palettes for desktops that name a look as a wish and leave the colours to us.
[[nodiscard]] QPalette paletteOf(const Look& look);
[[nodiscard]] QPalette lightPalette();
[[nodiscard]] QPalette darkPalette();

} // namespace varnhold
