"""The status item on GNOME, whose shell is too heavy to be installed for every run: script/desktops runs these.

Each test runs in a sandbox and a process of its own: test_gnome.py BUILD_FOLDER TEST_NAME
"""

import os
import sys
import unittest

from desktop import wait_until
from gnome import Gnome, GnomeWayland, GnomeWithIcons
from panel_steps import QUIET, PanelSteps
from panels import HEIGHT, WIDTH


class GnomeTest(PanelSteps):
    def test_gnome_with_icons_menu_is_chosen_from(self):
        self.menu_is_chosen_from(GnomeWithIcons)

    def test_gnome_with_icons_window_opens_on_the_screen(self):
        self.window_opens(GnomeWithIcons)

    def with_strip(self, kind):
        self.d = kind(self.build)
        self.addCleanup(self.d.end)
        self.d.set_fleet(QUIET)
        self.d.start()
        return self.d.strip()

    def test_gnome_on_x_has_the_strip_where_it_hears_of_presses(self):
        strip = self.with_strip(Gnome)
        left, top, width, height = self.d.geometry(strip)
        self.assertEqual((left + width, top + height), (WIDTH - 8, HEIGHT - 8))
        self.d.click_window(strip)
        wait_until("the menu", self.d.menus)
        self.d.click(200, 600)
        wait_until("the menu is gone", lambda: not self.d.menus())

    def test_gnome_on_wayland_has_the_strip_in_its_bar(self):
        strip = self.with_strip(GnomeWayland)
        left, top, width, height = self.d.geometry(strip)
        self.assertEqual(left + width, WIDTH * 3 // 4)
        self.assertGreaterEqual(top, 0)
        self.assertLessEqual(top + height, self.d.bar + 2)
        wait_until("it is seen over the bar", self.d.coloured_places)
        self.d.click(left + width // 2, top + height // 2)
        wait_until("the menu", self.d.menus)
        self.d.click(left + width // 2, top + height // 2)
        wait_until("the menu is gone", lambda: not self.d.menus())

    def test_gnome_on_wayland_has_no_strip_over_what_takes_the_whole_screen(self):
        self.with_strip(GnomeWayland)
        self.d.spawn("xev", "-geometry", "400x300+100+100")
        other = wait_until("another program's window", lambda: self.d.windows("Event Tester"))[0]
        wait_until("it has the keyboard", lambda: self.d.focused() == other)
        self.d.tool("wmctrl", "-i", "-r", other, "-b", "add,fullscreen")
        wait_until("no strip", lambda: not self.d.strip_is_shown())
        self.d.tool("wmctrl", "-i", "-r", other, "-b", "remove,fullscreen")
        wait_until("the strip again", self.d.strip_is_shown)
        self.assertEqual(self.d.focused(), other)

    def upper_right(self, strip):
        left, top, width, _ = self.d.geometry(strip)
        return left + width, top

    def test_gnome_on_wayland_leaves_the_strip_where_it_was_put(self):
        strip = self.with_strip(GnomeWayland)
        right, top = self.upper_right(strip)
        def is_dragged():
            """By as much as the pointer has gone since the shell has noticed the press."""
            x, y = self.upper_right(strip)[0] - 20, top + 14
            self.d.input("mousemove", x, y, "sleep", "0.1", "mousedown", 1, "sleep", "0.1",
                         "mousemove", x - 100, y, "sleep", "0.1", "mouseup", 1)
            return self.upper_right(strip) != (right, top)
        wait_until("it follows the pointer", is_dragged)
        right, top = self.upper_right(strip)
        self.d.supervisor.terminate()
        self.d.supervisor.wait(60)
        self.d.start()
        strip = self.d.strip()
        wait_until("it is there again", lambda: self.upper_right(strip) == (right, top))


if __name__ == "__main__":
    if os.getpid() > 1000 or os.environ.get("XDG_RUNTIME_DIR") != "/tmp/runtime":
        sys.exit("Only runs inside tests/system/in-sandbox: it starts and ends the supervisor.")
    PanelSteps.build = sys.argv.pop(1)
    unittest.main()
