#pragma once

#include <QAccessible>
#include <QWidget>
#include <functional>

namespace varnhold {

// Tells screen readers what a widget of our own is, and what pressing it by their means does, if it
// does anything. To be called before the widget is given its name, which makes the toolkit describe
// it; main thread.
void describe(QWidget& widget, QAccessible::Role role, std::function<void()> press = nullptr);

} // namespace varnhold
