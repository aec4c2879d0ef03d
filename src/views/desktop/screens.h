#pragma once

#include <functional>

class QObject;
class QRect;
class QScreen;
class QWidget;

// The screens of the moment. Main thread.
namespace varnhold {

// The screen that holds the middle of a rectangle, or is nearest to it; the primary one for none.
[[nodiscard]] const QScreen& screenAt(const QRect& rectangle);

// Whether points of a widget begin within pixels: what is painted of it in part, begins and ends
// there too.
[[nodiscard]] bool isScaledByFraction(const QWidget& widget);

// Calls back whenever a screen comes, goes, moves or changes its size, or a panel takes more or
// less of it, for as long as the context lives.
void onScreensChanged(QObject* context, const std::function<void()>& changed);

} // namespace varnhold
