#include "status/fleet_picture.h"

#include "status/governor_catalog.h"

namespace varnhold {

namespace {

StatusMap jobs(platform::Platform& platform) {
    const platform::ProcessResult listing =
        platform.processes.run({.program = platform.system.launchctlPath(),
                                .arguments = {"list"},
                                .standardOutput = platform::Stream::captured});
    return parseJobList(listing.standardOutput);
}

} // namespace

FleetPicture gather(const FleetContext& context, GovernorCatalog& catalog) {
    FleetPicture picture;
    picture.statuses = jobs(context.platform);
    picture.models = lastModels(catalog);
    picture.bots = loadBots(context.constants);
    picture.alerts = loadReauthAlerts(context.constants);
    picture.groups = loadMenuGroups(context.constants);
    return picture;
}

} // namespace varnhold
