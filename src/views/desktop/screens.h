#pragma once

#include <functional>

class QObject;
class QRect;
class QScreen;

// The screens of the moment. Main thread.
namespace varnhold {

// The screen that holds the middle of a rectangle, or the primary one.
[[nodiscard]] const QScreen& screenAt(const QRect& rectangle);

// Calls back whenever a screen comes, goes, moves or changes its size, or a panel takes more or
// less of it, for as long as the context lives.
void onScreensChanged(QObject* context, const std::function<void()>& changed);

} // namespace varnhold
