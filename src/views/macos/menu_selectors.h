#pragma once

#include "status/main_menu.h"

namespace varnhold {

// The message by which a Mac's own responders do what a row of the main menu says, such as "copy:";
// none for what is the program's own business. Pure.
[[nodiscard]] const char* standardSelector(MainMenuAction action);

} // namespace varnhold
