#pragma once

#include <string>

#include "base/result.h"

namespace varnhold::services {

// Opens a log for appending and gives its descriptor, or the reason with the path in it.
//
// Logs stand in folders that everybody can write to, so only a file of the user's own is taken, and
// none that somebody may have led to another of his: no link is followed, and no file that has a
// second name is written to. One that is made is for the user alone, whatever the mask says. A pipe
// is taken only while somebody reads from it.
[[nodiscard]] Result<int> openLog(const std::string& path);

} // namespace varnhold::services
