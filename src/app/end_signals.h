#pragma once

#include <functional>

namespace varnhold {

// Turns SIGTERM, SIGINT and SIGHUP into an orderly end: `onSignal` is called on the main thread,
// from its event loop. That is how a session's end, a log-out or a terminal asks the program to go.
// Call once, after the application object has been made.
void endOnSignals(std::function<void()> onSignal);

} // namespace varnhold
