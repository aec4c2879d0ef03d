#pragma once

#include <vector>

#include "doctor/bot_state.h"
#include "doctor/finding.h"
#include "doctor/property_list_check.h"

namespace varnhold::doctor {

// Everything that there is to say of one bot by itself. Reads its property list and its logs.
[[nodiscard]] std::vector<Finding> findingsAbout(const BotConfig& bot, const BotState& state,
                                                 const Surroundings& surroundings);

} // namespace varnhold::doctor
