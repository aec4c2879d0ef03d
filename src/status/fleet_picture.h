#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "lifecycle/fleet_context.h"
#include "records/bots.h"
#include "status/job_list.h"
#include "status/last_models.h"
#include "status/menu_groups.h"
#include "status/reauth_alerts.h"

namespace varnhold {

// What polls ask, with what each remembers of its last answer.
struct FleetSources {
    LastModels models;
    KnownBots bots;

    explicit FleetSources(const Constants& constants) : models(constants.governorDBPath) {}
};

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
// once. Any thread, as long as no other uses `sources`. What can't be had is empty. `onListed` is
// called as soon as the service manager has been asked.
[[nodiscard]] FleetPicture gather(const FleetContext& context, FleetSources& sources,
                                  const std::function<void()>& onListed = nullptr);

// The picture before anybody has been asked: what the files say, with every agent stopped.
[[nodiscard]] FleetPicture pictureOfFiles(const Constants& constants);

} // namespace varnhold
