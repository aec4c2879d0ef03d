#pragma once

#include <string>

#include "doctor/surroundings.h"
#include "platform/platform.h"

namespace varnhold::doctor {

// Runs the tool with the one argument "list" and waits for it, ten seconds at most; one that takes
// longer is ended. The only process that the doctor ever starts.
[[nodiscard]] ListingRun runListing(platform::Processes& processes, const std::string& launchctl);

} // namespace varnhold::doctor
