#pragma once

#include <chrono>
#include <string>
#include <string_view>

#include "lifecycle/fleet_context.h"

// One agent at a time, through the service manager's command-line tool as a child process.
//
// Failures are silent: a tool that can't be launched or exits with an error leaves no trace but the
// status that the next poll shows. Any thread; nothing here takes a lock.
namespace varnhold {

// How long a listing may take. One that takes longer counts as empty: pollers go on, and a service
// manager that hangs keeps no thread of ours for ever.
inline constexpr std::chrono::seconds listingDeadline{8};

// What the service manager prints of all its jobs; see parseJobList in status/. Empty if it can't
// be had. Blocks until the tool has exited.
[[nodiscard]] std::string listJobs(const FleetContext& context);

// "gui/501": the domain of one user's agents, for loading.
[[nodiscard]] std::string domainTarget(const FleetContext& context);

// "gui/501/com.example.agent": one job, for unloading and kicking.
[[nodiscard]] std::string serviceTarget(const FleetContext& context, const std::string& label);

// Loads the property list at the path and starts its job. Blocks until the tool has exited. A job
// that is loaded already is left as it is, also if the file has changed.
void bootstrap(const FleetContext& context, const std::string& path);

// Unloads the job and ends its process. Blocks until the tool has exited.
void bootout(const FleetContext& context, const std::string& label);

// Whether the property-style listing of one job names a living process: the first line that starts
// with "PID" in quotes and holds a number decides.
[[nodiscard]] bool listsLivingProcess(std::string_view listing);

// Asks the service manager about one label. Blocks until the tool has exited.
[[nodiscard]] bool isDaemonOnline(const FleetContext& context, const std::string& label);

// Ends the running instance and starts it anew, with the property list that is loaded. Doesn't
// wait.
void restartDaemon(const FleetContext& context, const std::string& label);

// Ends the process of a job that stays loaded, so that it is started again. Doesn't wait.
void stopDaemon(const FleetContext& context, const std::string& label);

// What choosing an agent in the menu does: unloads it if it was running, and otherwise loads it,
// from a fresh property list where the bots file still has the label. Blocks until the tool has
// exited.
void toggleDaemon(const FleetContext& context, const std::string& label, bool running);

} // namespace varnhold
