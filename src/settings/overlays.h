#pragma once

#include <string_view>

#include "settings/settings_fields.h"

// What stands over the settings window and has to be answered before the window goes on. Pure
// functions; main thread, as all that reads the record.
namespace varnhold {

// In the order in which they come up where several are wanted at once.
enum class Overlay {
    none,
    alert,
    promptEditor,
    tokenSheet,
    welcome,
    addModel,
    libraryTip,
    manageGroups,
};

// The name under which views know it; none is the empty text.
[[nodiscard]] std::string_view name(Overlay overlay);

[[nodiscard]] bool isWanted(const SettingsFields& fields, Overlay overlay);

// The one that stands now: whichever stood before, as long as it is wanted, and else the next.
[[nodiscard]] Overlay nextOverlay(const SettingsFields& fields, Overlay standing);

} // namespace varnhold
