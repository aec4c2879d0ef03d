#pragma once

#include <map>
#include <optional>
#include <string>

#include "base/json_fwd.h"
#include "lifecycle/fleet_context.h"
#include "lifecycle/property_list.h"
#include "records/bots.h"
#include "shell/daemon_code.h"

// How one agent is started: its property list, made whole from its record and the sign-in file each
// time it is about to be started, and never read back.
//
// Keys and tokens stand in the file in clear text, since that is how they reach the agent.
// Functions keep no state and take no lock; two calls for one agent race on one file with the same
// content.
namespace varnhold {

// Only labels with this ending belong to agents that can be started.
inline constexpr const char* startableSuffix = ".telegramd";

[[nodiscard]] bool isStartable(const BotConfig& bot);
[[nodiscard]] std::string propertyListPath(const Constants& constants, const std::string& label);

// Path of an agent's log; the daemon writes activity markers into it.
[[nodiscard]] std::string logPath(const std::string& role);
[[nodiscard]] std::string errorLogPath(const std::string& role);

// Provider keys and OAuth tokens of the sign-in document, as environment variables. Anything that
// isn't a non-empty text is left out; so are all tokens if one of them isn't text.
[[nodiscard]] std::map<std::string, std::string> signInVariables(const json::Value& authConfig);

// What the agent's property list would say if it were written now: reads the sign-in file and looks
// for the interpreter and the daemon code.
[[nodiscard]] PropertyList agentDefinition(const Constants& constants,
                                           const std::string& bundlePath, const PathTest& exists,
                                           const BotConfig& bot);

// Writes the agent's property list and gives its path, also when writing failed: whatever is on
// disk is then loaded. None, and nothing written, for a record that can't be started or whose texts
// no property list can carry.
std::optional<std::string> generatePlist(const FleetContext& context, const BotConfig& bot);

// Writes the property lists of all agents that aren't paused.
void regenerateAllPlists(const FleetContext& context);

} // namespace varnhold
