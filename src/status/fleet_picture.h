#pragma once

#include <map>
#include <string>
#include <vector>

#include "lifecycle/fleet_context.h"
#include "records/bots.h"
#include "status/job_list.h"
#include "status/menu.h"

namespace varnhold {

class GovernorCatalog;

// What one poll finds out about the fleet: a value, so that it can be found on one thread and shown
// on another.
struct FleetPicture {
    std::vector<ReauthAlert> alerts;
    std::vector<BotConfig> bots;
    StatusMap statuses;                        // every job of the service manager, by label
    std::map<std::string, std::string> models; // role to the model last used
    std::vector<MenuGroup> groups;
};

// One poll's half that waits: asks the service manager and the event database and reads each file
// once. Any thread, as long as no other uses the catalogue. What can't be had is empty.
[[nodiscard]] FleetPicture gather(const FleetContext& context, GovernorCatalog& catalog);

} // namespace varnhold
