#include "status/main_menu.h"

namespace varnhold {

std::vector<MainMenu> mainMenus() {
    using Action = MainMenuAction;
    const MainMenuRow separator;
    return {
        {"Varnhold",
         {{"About Varnhold", "", Action::orderFrontStandardAboutPanel},
          separator,
          {"Preferences…", ",", Action::openModelSelector},
          separator,
          {"Hide Varnhold", "h", Action::hide},
          {.title = "Hide Others",
           .key = "h",
           .action = Action::hideOtherApplications,
           .option = true},
          {"Show All", "", Action::unhideAllApplications},
          separator,
          {"Close Preferences Window", "q", Action::closePrefsWindow},
          {.title = "Quit Varnhold (Stop All Agents)",
           .key = "q",
           .action = Action::terminate,
           .shift = true}}},
        {"File",
         {{.title = "Custom Groups…",
           .key = "g",
           .action = Action::openManageCustomGroups,
           .shift = true},
          separator,
          {"Close Window", "w", Action::performClose}}},
        {"Edit",
         {{"Undo", "z", Action::undo},
          {.title = "Redo", .key = "Z", .action = Action::redo},
          separator,
          {"Cut", "x", Action::cut},
          {"Copy", "c", Action::copy},
          {"Paste", "v", Action::paste},
          {"Select All", "a", Action::selectAll}}},
    };
}

} // namespace varnhold
