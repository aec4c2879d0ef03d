#pragma once

#include <cstdint>
#include <optional>
#include <string>

class QWindow;

// What launchers on X11 and the programs that they start tell each other (startup notification,
// freedesktop.org). Main thread, after the application object has been made; harmless where there
// is no X server.
namespace varnhold {

// When the user asked for the start, on the X server's clock, as its id says; none if it doesn't.
// Pure.
[[nodiscard]] std::optional<std::uint32_t> startupTime(const std::string& id);

// Asks the window manager to bring a window forward for the start of this id, which mustn't be
// empty. Without it, what was used since our own last input counts as newer, and stays in front.
void bringForward(QWindow& window, const std::string& id);

// Tells launchers that the start is over, so that none goes on showing that it waits. Does nothing
// for an empty id.
void endStartup(const std::string& id);

} // namespace varnhold
