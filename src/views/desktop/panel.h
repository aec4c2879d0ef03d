#pragma once

#include <QRectF>

class QPainter;
class QPalette;
class QWidget;

// The frame that the strip, its menu and its popover have in common. Main thread.
namespace varnhold {

inline constexpr qreal stripRadius = 8; // points
inline constexpr qreal menuRadius = 9;
inline constexpr qreal popoverRadius = 10;
inline constexpr float usualFrame = 0.18F; // its strength, from 0 to 1
inline constexpr float focusFrame = 0.6F;

// A rounded panel in the window's colour with a fine frame.
void drawPanel(QPainter& painter, const QRectF& place, const QPalette& palette, qreal radius,
               float strength = usualFrame);

// Has drawPanel round the corners of a top-level widget only where windows are blended: elsewhere
// they would come out black, or with the steps of a mask. Call again when its size changes.
void chooseCorners(QWidget& widget);

} // namespace varnhold
