"""The status item on GNOME, whose shell is too heavy to be installed for every run: script/desktops runs these.

Each test runs in a sandbox and a process of its own: test_gnome.py BUILD_FOLDER TEST_NAME
"""

import os
import sys
import unittest

from desktop import wait_until
from panel_steps import QUIET, PanelSteps
from panels import HEIGHT, WIDTH, Gnome, GnomeWithIcons


class GnomeTest(PanelSteps):
    def test_gnome_with_icons_menu_is_chosen_from(self):
        self.menu_is_chosen_from(GnomeWithIcons)

    def test_gnome_with_icons_window_opens_on_the_screen(self):
        self.window_opens(GnomeWithIcons)

    def test_gnome_without_icons_has_the_strip(self):
        self.d = Gnome(self.build)
        self.addCleanup(self.d.end)
        self.d.set_fleet(QUIET)
        self.d.start()
        strip = self.d.strip()
        left, top, width, height = self.d.geometry(strip)
        self.assertEqual((left + width, top + height), (WIDTH - 8, HEIGHT - 8))
        self.d.click_window(strip)
        wait_until("the menu", self.d.menus)
        self.d.click(200, 600)
        wait_until("the menu is gone", lambda: not self.d.menus())


if __name__ == "__main__":
    if os.getpid() > 1000 or os.environ.get("XDG_RUNTIME_DIR") != "/tmp/runtime":
        sys.exit("Only runs inside tests/system/in-sandbox: it starts and ends the supervisor.")
    PanelSteps.build = sys.argv.pop(1)
    unittest.main()
