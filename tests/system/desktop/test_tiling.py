"""The status item beside window managers that give each window a tile: i3, whose bar takes icons in, and dwm.

Each test runs in a sandbox and a process of its own: test_tiling.py BUILD_FOLDER TEST_NAME
"""

import os
import sys
import unittest

from desktop import wait_until
from panel_steps import PanelSteps
from tiling import I3, Dwm


class TilingTest(PanelSteps):
    def test_i3_shows_the_icon_and_marks_a_crash(self):
        self.shows_and_marks(I3)

    def test_i3_menu_is_chosen_from(self):
        self.menu_is_chosen_from(I3)

    def test_i3_window_opens_on_the_screen(self):
        self.window_opens(I3)

    def test_i3_popover_is_placed(self):
        self.popover_is_placed(I3)

    def test_i3_bar_comes_and_goes(self):
        self.panel_comes_and_goes(I3)

    def test_i3_session_ends(self):
        self.session_ends(I3)

    def test_dwm_has_the_strip_which_marks_a_crash(self):
        self.shows_and_marks(Dwm)

    def test_dwm_menu_is_chosen_from(self):
        self.menu_is_chosen_from(Dwm)

    def test_dwm_strip_keeps_its_size_and_the_corner(self):
        desktop = self.launch(Dwm)
        left, top, width, height = desktop.geometry(desktop.item())
        self.assertEqual((left + width, top + height, height), (1280 - 8, 800 - 8, 28))
        self.assertLess(width, 100)
        desktop.spawn("xev")
        wait_until("another's tile", lambda: desktop.windows("Event Tester"))
        self.assertEqual(desktop.geometry(desktop.item()), (left, top, width, height))

    def test_dwm_window_opens_on_the_screen(self):
        self.window_opens(Dwm)

    def test_dwm_popover_is_placed(self):
        self.popover_is_placed(Dwm)

    def test_dwm_session_ends(self):
        self.session_ends(Dwm)


if __name__ == "__main__":
    if os.getpid() > 1000 or os.environ.get("XDG_RUNTIME_DIR") != "/tmp/runtime":
        sys.exit("Only runs inside tests/system/in-sandbox: it starts and ends the supervisor.")
    PanelSteps.build = sys.argv.pop(1)
    unittest.main()
