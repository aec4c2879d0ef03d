#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"

// chain_bot_assignments.json: which bots are assigned to which chain.
//
// Values only; any thread. A decoder refuses the whole file for one bad entry.
namespace varnhold {

// Chain key to launchd labels, in the order of assignment. A chain may be missing, and a label may
// belong to no bot.
using ChainBotAssignments = std::map<std::string, std::vector<std::string>>;

[[nodiscard]] Result<ChainBotAssignments> decodeAssignments(std::string_view text);
[[nodiscard]] std::string encodeAssignments(const ChainBotAssignments& assignments);
[[nodiscard]] Result<ChainBotAssignments> readAssignments(const std::string& path);

} // namespace varnhold
