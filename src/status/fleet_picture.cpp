#include "status/fleet_picture.h"

#include <utility>

#include "lifecycle/service_control.h"

namespace varnhold {

FleetPicture gather(const FleetContext& context, FleetSources& sources,
                    const std::function<void()>& onListed) {
    StatusMap statuses = parseJobList(listJobs(context));
    if (onListed) {
        onListed();
    }
    auto models = sources.models.read();
    auto alerts = loadReauthAlerts(context.constants);
    return {.alerts = std::move(alerts),
            .bots = sources.bots.load(context.constants),
            .statuses = std::move(statuses),
            .models = std::move(models),
            .groups = loadMenuGroups(context.constants)};
}

FleetPicture pictureOfFiles(const Constants& constants) {
    return {.alerts = loadReauthAlerts(constants),
            .bots = loadBots(constants),
            .statuses = {},
            .models = {},
            .groups = loadMenuGroups(constants)};
}

} // namespace varnhold
