"""The status item on whole desktops, too heavy to be installed for every run: script/desktops runs these.

Each test runs in a sandbox and a process of its own: test_whole_desktops.py BUILD_FOLDER TEST_NAME
"""

import os
import sys
import unittest

from desktop import wait_until
from heavy_panels import Budgie, Cinnamon, Mate, Plasma, PlasmaWayland
from panel_steps import PanelSteps


class WholeDesktopsTest(PanelSteps):
    def test_plasma_shows_the_icon_and_marks_a_crash(self):
        self.shows_and_marks(Plasma)

    def test_plasma_menu_is_chosen_from(self):
        self.menu_is_chosen_from(Plasma)

    def test_plasma_window_opens_on_the_screen(self):
        self.window_opens(Plasma)

    def test_plasma_popover_is_placed(self):
        self.popover_is_placed(Plasma)

    def test_plasma_panel_comes_and_goes(self):
        self.panel_comes_and_goes(Plasma)

    def test_plasma_session_ends(self):
        self.session_ends(Plasma)

    def test_plasma_left_button_drops_our_menu(self):
        desktop = self.launch(Plasma)
        desktop.click(*desktop.icon())
        wait_until("the menu", desktop.menus)
        desktop.click(100, 100)
        wait_until("the menu is gone", lambda: not desktop.menus())

    def test_plasma_on_wayland_shows_the_icon_and_marks_a_crash(self):
        self.shows_and_marks(PlasmaWayland)

    def test_plasma_on_wayland_menu_is_chosen_from(self):
        self.menu_is_chosen_from(PlasmaWayland)

    def test_plasma_on_wayland_window_opens_on_the_screen(self):
        self.window_opens(PlasmaWayland)

    def test_plasma_on_wayland_popover_is_placed(self):
        self.popover_is_placed(PlasmaWayland)

    def test_plasma_on_wayland_panel_comes_and_goes(self):
        self.panel_comes_and_goes(PlasmaWayland)

    def test_plasma_on_wayland_session_ends(self):
        self.session_ends(PlasmaWayland)

    def test_mate_shows_the_icon_and_marks_a_crash(self):
        self.shows_and_marks(Mate)

    def test_mate_menu_is_chosen_from(self):
        self.menu_is_chosen_from(Mate)

    def test_mate_window_opens_on_the_screen(self):
        self.window_opens(Mate)

    def test_mate_popover_is_placed(self):
        self.popover_is_placed(Mate)

    def test_mate_panel_comes_and_goes(self):
        self.panel_comes_and_goes(Mate)

    def test_mate_session_ends(self):
        self.session_ends(Mate)

    def test_cinnamon_shows_the_icon_and_marks_a_crash(self):
        self.shows_and_marks(Cinnamon)

    def test_cinnamon_menu_is_chosen_from(self):
        self.menu_is_chosen_from(Cinnamon)

    def test_cinnamon_window_opens_on_the_screen(self):
        self.window_opens(Cinnamon)

    def test_cinnamon_popover_is_placed(self):
        self.popover_is_placed(Cinnamon)

    def test_cinnamon_panel_comes_and_goes(self):
        self.panel_comes_and_goes(Cinnamon)

    def test_cinnamon_session_ends(self):
        self.session_ends(Cinnamon)

    def test_budgie_shows_the_icon_and_marks_a_crash(self):
        self.shows_and_marks(Budgie)

    def test_budgie_menu_is_chosen_from(self):
        self.menu_is_chosen_from(Budgie)

    def test_budgie_window_opens_on_the_screen(self):
        self.window_opens(Budgie)

    def test_budgie_popover_is_placed(self):
        self.popover_is_placed(Budgie)

    def test_budgie_panel_comes_and_goes(self):
        self.panel_comes_and_goes(Budgie)

    def test_budgie_session_ends(self):
        self.session_ends(Budgie)

    def test_budgie_icon_stands_on_the_panels_own_ground(self):
        desktop = self.launch(Budgie)
        icon = desktop.item()
        left, top, width, height = desktop.geometry(icon)
        def is_even():
            """Along its upper edge, where no bar is, and beside it."""
            raw = desktop.seen(f"{width + 16}x1+{left - 8}+{top}")
            return len({raw[i:i + 3] for i in range(0, len(raw), 3)}) == 1
        wait_until("one ground", is_even)


if __name__ == "__main__":
    if os.getpid() > 1000 or os.environ.get("XDG_RUNTIME_DIR") != "/tmp/runtime":
        sys.exit("Only runs inside tests/system/in-sandbox: it starts and ends the supervisor.")
    PanelSteps.build = sys.argv.pop(1)
    unittest.main()
