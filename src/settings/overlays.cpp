#include "settings/overlays.h"

#include <algorithm>
#include <array>

namespace varnhold {

namespace {

constexpr std::array allOverlays{Overlay::alert,       Overlay::promptEditor, Overlay::tokenSheet,
                                 Overlay::welcome,     Overlay::addModel,     Overlay::libraryTip,
                                 Overlay::manageGroups};

} // namespace

std::string_view name(Overlay overlay) {
    switch (overlay) {
    case Overlay::none:
        break;
    case Overlay::alert:
        return "alert";
    case Overlay::promptEditor:
        return "promptEditor";
    case Overlay::tokenSheet:
        return "tokenSheet";
    case Overlay::welcome:
        return "welcome";
    case Overlay::addModel:
        return "addModel";
    case Overlay::libraryTip:
        return "libraryTip";
    case Overlay::manageGroups:
        return "manageGroups";
    }
    return "";
}

bool isWanted(const SettingsFields& fields, Overlay overlay) {
    switch (overlay) {
    case Overlay::none:
        break;
    case Overlay::alert:
        return fields.showAlert;
    case Overlay::promptEditor:
        return fields.editingBot.has_value();
    case Overlay::tokenSheet:
        return fields.tokenSheetBot.has_value();
    case Overlay::welcome:
        return fields.showWelcome;
    case Overlay::addModel:
        return fields.showAddModelSheet;
    case Overlay::libraryTip:
        return fields.showLibraryTip;
    case Overlay::manageGroups:
        return fields.showManageGroupsSheet;
    }
    return false;
}

Overlay nextOverlay(const SettingsFields& fields, Overlay standing) {
    if (isWanted(fields, standing)) {
        return standing;
    }
    const auto* const next =
        std::find_if(allOverlays.begin(), allOverlays.end(),
                     [&fields](Overlay overlay) { return isWanted(fields, overlay); });
    return next == allOverlays.end() ? Overlay::none : *next;
}

} // namespace varnhold
