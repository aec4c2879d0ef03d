#pragma once

namespace varnhold {

// Tells screen readers what our own widgets are: the strip is a button with a menu, which they can
// press, and the notices are an alert. Main thread; calling it again does nothing.
void installAccessibility();

} // namespace varnhold
