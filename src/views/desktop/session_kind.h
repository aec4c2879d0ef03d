#pragma once

// What kind of desktop this is. Main thread, after the application object has been made.
namespace varnhold {

// Whether the desktop is a Wayland compositor's, though our own windows may be those of an X server
// beside it. Such a server knows where the pointer is, and hears of presses, only while they are
// over windows of its own.
[[nodiscard]] bool desktopIsWayland();

// Whether its windows are managed by somebody who neither tiles or frames a small window that asks
// for neither, nor gives it the keyboard as it appears.
[[nodiscard]] bool utilityWindowsAreLeftAlone();

// Whether the bar at the screen's top is the shell's own (GNOME), which keeps to the left end, the
// middle and the right end of it, and lets windows that nobody manages stand above it. On X11 it
// does so too, but takes every press on its bar for itself.
[[nodiscard]] bool stripMayStandInTopBar();

// Whether a tray that wishes for windows with an alpha channel shows them. Cinnamon's own wishes
// for them and shows nothing of ours.
[[nodiscard]] bool trayShowsWindowsWithAlpha();

} // namespace varnhold
