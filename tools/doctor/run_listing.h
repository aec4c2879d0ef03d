#pragma once

#include <string>

#include "doctor/surroundings.h"

namespace varnhold::doctor {

// Runs the tool with the one argument "list" and waits for it, ten seconds at most; a tool that
// takes longer is left to itself. The only process that the doctor ever starts.
[[nodiscard]] ListingRun runListing(const std::string& launchctl);

} // namespace varnhold::doctor
