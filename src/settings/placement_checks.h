#pragma once

#include <optional>
#include <string>

#include "settings/settings_fields.h"
#include "settings/target_list.h"

// Whether a model that comes fresh from the library may enter a chain.
//
// Two checks refuse, and nothing warns: the provider must be connected, and a Cerebras model can
// serve two chains only. Pure reading of the state; main thread. Nothing here can fail.
namespace varnhold {

// Whom the model is reached through: "claude", "openrouter", "local", or whatever its record says;
// "unknown" where it doesn't.
[[nodiscard]] std::string providerOf(const AIModelItem& item);

// True if the model can be used with the credentials that are known now. A provider that isn't
// known needs none. All comparisons are exact, also in case.
[[nodiscard]] bool checkAuthFor(const SettingsFields& settings, const AIModelItem& item);

// What the user is told, or nothing if the model may enter.
[[nodiscard]] std::optional<std::string> placementRefusal(const SettingsFields& settings,
                                                          const AIModelItem& item, TargetList list);

} // namespace varnhold
