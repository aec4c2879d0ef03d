#pragma once

#include <QColor>
#include <QPalette>
#include <QRectF>

class QPainter;
class QWidget;

// What the strip, its menu and its popover have in common: their colours on light and dark
// palettes, each readable as text there (contrast of 4.5 and more), and their frame.
namespace varnhold {

inline constexpr qreal stripRadius = 8; // points
inline constexpr qreal menuRadius = 9;
inline constexpr qreal popoverRadius = 10;

[[nodiscard]] QColor alertColour(const QPalette& palette);
[[nodiscard]] QColor warningColour(const QPalette& palette);
// For headers and keys: text that needn't be noticed at once.
[[nodiscard]] QColor quietColour(const QPalette& palette);

// A rounded panel in the window's colour with a fine frame; `strength` of the frame is 0 to 1.
void drawPanel(QPainter& painter, const QRectF& place, const QPalette& palette, qreal radius,
               float strength = 0.18F);

// Rounds the corners of a top-level widget where nothing blends windows and they would come out
// black. Call again when its size changes.
void roundCorners(QWidget& widget, qreal radius);

} // namespace varnhold
