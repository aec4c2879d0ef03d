#include "status/fleet_picture.h"

#include "lifecycle/service_control.h"
#include "status/governor_catalog.h"

namespace varnhold {

FleetPicture gather(const FleetContext& context, GovernorCatalog& catalog) {
    FleetPicture picture;
    picture.statuses = parseJobList(listJobs(context));
    picture.models = lastModels(catalog);
    picture.bots = loadBots(context.constants);
    picture.alerts = loadReauthAlerts(context.constants);
    picture.groups = loadMenuGroups(context.constants);
    return picture;
}

} // namespace varnhold
