#pragma once

#include "doctor/finding.h"
#include "doctor/surroundings.h"
#include "settings/settings_fields.h"

namespace varnhold::doctor {

// Each chain: whether its bots are asked to keep the prompt cache warm, and if not, why. Reads the
// moments of the last requests.
[[nodiscard]] Section checkKeepalive(const SettingsFields& fields,
                                     const Surroundings& surroundings);

} // namespace varnhold::doctor
