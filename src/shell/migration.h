#pragma once

#include "shell/constants.h"

namespace varnhold {

// Copies the settings of an old installation, which shared one folder with other programs, into the
// program's own folder. Does nothing once there is a bots file there. Never overwrites a file and
// never touches the old folder; a copy that fails is passed over and tried again at the next
// launch, as long as the bots file is missing. Called once at launch, before anything else uses the
// files.
void migrateFromLegacyPathIfNeeded(const Constants& constants);

} // namespace varnhold
