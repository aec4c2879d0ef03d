"""The status item on whole desktops, too heavy to be installed for every run: script/desktops runs these.

Each test runs in a sandbox and a process of its own: test_whole_desktops.py BUILD_FOLDER TEST_NAME
"""

import os
import sys
import unittest

from desktop import wait_until
from heavy_panels import Plasma, PlasmaWayland
from panel_steps import PanelSteps


class WholeDesktopsTest(PanelSteps):
    def test_plasma_shows_the_icon_and_marks_a_crash(self):
        self.shows_and_marks(Plasma)

    def test_plasma_menu_is_chosen_from(self):
        self.menu_is_chosen_from(Plasma)

    def test_plasma_left_button_drops_our_menu(self):
        desktop = self.launch(Plasma)
        desktop.click(*desktop.icon())
        wait_until("the menu", desktop.menus)
        desktop.click(100, 100)
        wait_until("the menu is gone", lambda: not desktop.menus())

    def test_plasma_window_opens_on_the_screen(self):
        self.window_opens(Plasma)

    def test_plasma_panel_comes_and_goes(self):
        self.panel_comes_and_goes(Plasma)

    def test_plasma_session_ends(self):
        self.session_ends(Plasma)

    def test_plasma_on_wayland_shows_the_icon_and_marks_a_crash(self):
        self.shows_and_marks(PlasmaWayland)

    def test_plasma_on_wayland_menu_is_chosen_from(self):
        self.menu_is_chosen_from(PlasmaWayland)

    def test_plasma_on_wayland_window_opens_on_the_screen(self):
        self.window_opens(PlasmaWayland)

    def test_plasma_on_wayland_panel_comes_and_goes(self):
        self.panel_comes_and_goes(PlasmaWayland)

    def test_plasma_on_wayland_session_ends(self):
        self.session_ends(PlasmaWayland)


if __name__ == "__main__":
    if os.getpid() > 1000 or os.environ.get("XDG_RUNTIME_DIR") != "/tmp/runtime":
        sys.exit("Only runs inside tests/system/in-sandbox: it starts and ends the supervisor.")
    PanelSteps.build = sys.argv.pop(1)
    unittest.main()
