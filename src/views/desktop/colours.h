#pragma once

#include <QColor>
#include <QPalette>
#include <QRectF>

class QPainter;
class QWidget;

// What the strip, its menu and its popover have in common: their colours, made from the palette of
// the moment so that each is readable as text there, and their frame. Main thread.
namespace varnhold {

inline constexpr qreal stripRadius = 8; // points
inline constexpr qreal menuRadius = 9;
inline constexpr qreal popoverRadius = 10;

// The least contrast of text and ground that people with poor sight can read (WCAG 2.1, level AA).
inline constexpr qreal readableContrast = 4.5;

// 1 to 21, after WCAG 2.1; opacity is left out of account.
[[nodiscard]] qreal contrast(const QColor& one, const QColor& other);

// The colour itself if it is readable on the ground, or else the nearest one on the way to black or
// white that is.
[[nodiscard]] QColor readable(const QColor& wanted, const QColor& ground);

[[nodiscard]] bool isDark(const QPalette& palette);

[[nodiscard]] QColor alertColour(const QPalette& palette);
[[nodiscard]] QColor warningColour(const QPalette& palette);
// For headers and keys: text that needn't be noticed at once.
[[nodiscard]] QColor quietColour(const QPalette& palette);

struct Selection {
    QColor ground;
    QColor text;
};

// Of the row under the pointer: the desktop's own colours, made readable.
[[nodiscard]] Selection selectionColours(const QPalette& palette);

// Palettes for desktops that name light or dark as a wish and leave the colours to us.
[[nodiscard]] QPalette lightPalette();
[[nodiscard]] QPalette darkPalette();

// A rounded panel in the window's colour with a fine frame; `strength` of the frame is 0 to 1.
void drawPanel(QPainter& painter, const QRectF& place, const QPalette& palette, qreal radius,
               float strength = 0.18F);

// Has drawPanel round the corners of a top-level widget only where windows are blended: elsewhere
// they would come out black, or with the steps of a mask. Call again when its size changes.
void chooseCorners(QWidget& widget);

} // namespace varnhold
