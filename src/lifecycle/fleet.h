#pragma once

#include <functional>
#include <string>
#include <vector>

#include "lifecycle/fleet_context.h"
#include "records/bots.h"

// Operations on the whole fleet: start, full restart, and what Quit ends.
//
// Child processes run strictly one after another on the calling thread, which is held up for all of
// it. Nothing guards two operations against each other; their calls interleave. Failures are
// silent.
namespace varnhold {

// Puts every failover chain back to its first position; a program for the interpreter.
[[nodiscard]] std::string chainResetScript(const std::string& daemonResources);

// Loads every agent that isn't paused, in file order, each from a fresh property list. Agents that
// are loaded already stay as they are.
void startAll(const FleetContext& context);

// Records that starts and restarts take part in: those that are not paused, in file order.
[[nodiscard]] std::vector<BotConfig> activeBots(const Constants& constants);

// Takes the agents down, kills and sweeps what is left, resets the chains and brings the agents up
// again with the keys of that moment. `onStep` is called after each step that the display can show.
// Takes 1.2 seconds and 0.3 more for each agent, beside the running time of the children.
void restartAll(const FleetContext& context, const std::vector<BotConfig>& bots,
                const std::function<void()>& onStep);

// Unloads every agent of the bots file, paused ones included, then kills every daemon process that
// is left. A daemon whose job isn't in the file stays loaded and is started again.
void shutDownAll(const FleetContext& context);

} // namespace varnhold
