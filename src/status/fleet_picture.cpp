#include "status/fleet_picture.h"

#include <utility>

#include "lifecycle/service_control.h"
#include "status/last_models.h"

namespace varnhold {

FleetPicture gather(const FleetContext& context, LastModels& catalog,
                    const std::function<void()>& onListed) {
    StatusMap statuses = parseJobList(listJobs(context));
    if (onListed) {
        onListed();
    }
    auto models = catalog.read();
    FleetPicture picture = pictureOfFiles(context.constants);
    picture.statuses = std::move(statuses);
    picture.models = std::move(models);
    return picture;
}

FleetPicture pictureOfFiles(const Constants& constants) {
    return {.alerts = loadReauthAlerts(constants),
            .bots = loadBots(constants),
            .statuses = {},
            .models = {},
            .groups = loadMenuGroups(constants)};
}

} // namespace varnhold
