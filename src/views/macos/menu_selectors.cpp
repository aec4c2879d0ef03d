#include "views/macos/menu_selectors.h"

namespace varnhold {

const char* standardSelector(MainMenuAction action) {
    switch (action) {
    case MainMenuAction::orderFrontStandardAboutPanel:
        return "orderFrontStandardAboutPanel:";
    case MainMenuAction::hide:
        return "hide:";
    case MainMenuAction::hideOtherApplications:
        return "hideOtherApplications:";
    case MainMenuAction::unhideAllApplications:
        return "unhideAllApplications:";
    case MainMenuAction::performClose:
        return "performClose:";
    case MainMenuAction::undo:
        return "undo:";
    case MainMenuAction::redo:
        return "redo:";
    case MainMenuAction::cut:
        return "cut:";
    case MainMenuAction::copy:
        return "copy:";
    case MainMenuAction::paste:
        return "paste:";
    case MainMenuAction::selectAll:
        return "selectAll:";
    case MainMenuAction::none:
    case MainMenuAction::openModelSelector:
    case MainMenuAction::closePrefsWindow:
    case MainMenuAction::terminate:
    case MainMenuAction::openManageCustomGroups:
        break;
    }
    return nullptr;
}

} // namespace varnhold
