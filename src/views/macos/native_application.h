#pragma once

#include <functional>
#include <string>
#include <vector>

#include "status/main_menu.h"
#include "status/presentation.h"

// The application as a Mac sees it. Main thread.
namespace varnhold {

struct ApplicationEvents {
    // Somebody has started the bundle once more, or clicked its icon.
    std::function<void(bool hasVisibleWindows)> onReopened;
    // The system is about to end the program, as at the end of a session; it does so as soon as
    // this returns.
    std::function<void()> onTerminating;
};

// Before the toolkit's application object is made: that one passes on what it doesn't answer
// itself.
void watchApplication(ApplicationEvents events);

// Menus stay enabled as a whole. `choose`: false for what the system's own responders are to do.
void installNativeMainMenu(const std::vector<MainMenu>& menus,
                           std::function<bool(MainMenuAction action)> choose);

// With the regular policy come an icon in the Dock and the program's name.
void setNativeActivationPolicy(ActivationPolicy policy);
void setNativeApplicationIcon(const std::string& path);
[[nodiscard]] bool isNativeImage(const std::string& path);
void activateNatively();

} // namespace varnhold
