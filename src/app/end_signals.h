#pragma once

#include <functional>

namespace varnhold {

// Turns SIGTERM, SIGINT and SIGHUP into an orderly end: `onSignal` is called on the main thread,
// from its event loop. That is how a session's end, a log-out or a terminal asks the program to go.
// SIGINT and SIGHUP stay ignored where the program was started so. Call once, after the application
// object has been made.
void endOnSignals(std::function<void()> onSignal);

// Has the work done should the process leave by exit(), as the toolkit does when the display goes
// away under it: that too is a session's end. Afterwards the process is gone at once, whatever its
// other threads are doing. Call once.
void beforeSuddenExit(std::function<void()> work);

} // namespace varnhold
