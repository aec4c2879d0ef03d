#pragma once

#include <string>

namespace varnhold {

// The socket beside the lock of the supervisor that runs, in the user's private runtime folder.
[[nodiscard]] std::string knockingPath(const std::string& runtimeFolder);

// Tells the supervisor that runs already of a later start, and hands over a text:
// the right to come to the front. True if it has heard, or will as soon as it has time; false if
// there is none, or it is on its way out. Needs no toolkit, so a later start is over before it has
// loaded anything. Waits a second at the most.
[[nodiscard]] bool knock(const std::string& runtimeFolder, const std::string& text);

} // namespace varnhold
