#pragma once

#include <string>

#include "doctor/finding.h"
#include "settings/settings_fields.h"

namespace varnhold::doctor {

// Each chain and each group: which of its models can answer and why the others can't, what hangs on
// one provider, and which bots and models in it exist no more. Of bots that can't be read nobody
// knows that. Pure reading of the state and of what is attached to groups.
[[nodiscard]] Section checkChains(const SettingsFields& fields, bool botsAreKnown = true);

// Who answers for each chain, group and bot while one provider fails.
[[nodiscard]] Section checkWithout(const SettingsFields& fields, const std::string& provider);

} // namespace varnhold::doctor
