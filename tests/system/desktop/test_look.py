"""Strip, menu and settings window as a desktop's wishes for their look change.

Each test runs in a sandbox and a process of its own: test_look.py BUILD_FOLDER TEST_NAME
"""

import collections
import os
import signal
import subprocess
import sys
import time
import unittest

from desktop import Desktop, wait_until
from panels import OnX

WIDTH, HEIGHT = 1920, 1200
FLEET = {"planner": "running", "builder": "running", "fire_drill": "crashed"}

BLACK, WHITE = (0, 0, 0), (255, 255, 255)


class Managed(OnX, Desktop):
    pass


class LookTest(unittest.TestCase):
    def setUp(self):
        self.d = Managed(BUILD, bus=True, manager=True, screen=f"{WIDTH}x{HEIGHT}x24")
        self.addCleanup(self.d.end)
        self.d.set_fleet(FLEET)
        self.portal = self.d.start_portal()

    def start_with_window(self):
        self.d.start()
        self.strip = self.d.strip()
        self.d.run_second()
        self.window = wait_until("the window", lambda: self.d.windows("^Varnhold$"))[0]

    def ground(self, window):
        """The colour that most of a window is of."""
        pixels = self.d.pixels(window)
        return collections.Counter(pixels).most_common(1)[0][0] if pixels else None

    def await_ground(self, window, what, is_wanted):
        def is_so():
            self.d.key("Escape")  # sheets of a first start dim the window
            return is_wanted(self.ground(window))
        wait_until(f"{what} on its ground", is_so)

    def await_look(self, ground, text):
        for what, window in (("the strip", self.strip), ("the window", self.window)):
            self.await_ground(window, what, lambda colour: colour == ground)
            self.assertIn(text, self.d.pixels(window))

    def test_everything_follows_the_wish_for_contrast(self):
        self.start_with_window()
        for key, on, off in (("contrast", 1, 0), ("high-contrast", "true", "false")):
            with self.subTest(key=key):
                for scheme, ground, text in ((2, WHITE, BLACK), (1, BLACK, WHITE)):
                    self.d.set_wish(self.portal, "color-scheme", scheme)
                    self.d.set_wish(self.portal, key, on)
                    self.await_look(ground, text)
                self.d.set_wish(self.portal, key, off)
                for what, window in (("the strip", self.strip), ("the window", self.window)):
                    self.await_ground(window, what, lambda colour: max(colour or WHITE) in range(20, 80))

    def test_a_start_finds_the_wish_for_contrast(self):
        self.d.set_wish(self.portal, "color-scheme", 1)
        self.d.set_wish(self.portal, "high-contrast", "true")
        self.start_with_window()
        self.await_look(BLACK, WHITE)
        self.d.click_window(self.strip)
        menu = wait_until("the menu", self.d.menus)[0]
        wait_until("the menu is black", lambda: self.ground(menu) == BLACK)

    # -- text size ------------------------------------------------------------------------------

    def start_settings(self, dots_per_inch):
        """Tells X11 programs how large the desktop wants its texts, as a desktop's daemon does."""
        self.file = self.d.home / "xsettings"
        self.write_settings(dots_per_inch)
        self.settings = subprocess.Popen(["xsettingsd", "-c", self.file], env=self.d.environment,
                                         stderr=subprocess.PIPE, text=True)
        self.d.started.append(self.settings)
        while "Took ownership" not in (line := self.settings.stderr.readline()):
            self.assertTrue(line, "no settings daemon")
        self.addCleanup(self.settings.stderr.close)

    def write_settings(self, dots_per_inch):
        self.file.write_text(f"Xft/DPI {dots_per_inch * 1024}\n")

    def change_settings(self, dots_per_inch):
        self.write_settings(dots_per_inch)
        self.settings.send_signal(signal.SIGHUP)

    def without_sheets(self):
        """Strip and window, once nothing more goes at the key that closes sheets."""
        pictures = [], []
        def is_settled():
            nonlocal pictures
            former = pictures
            self.d.key("Escape")
            time.sleep(0.3)  # or a sheet that is only coming would count as none
            pictures = self.d.pixels(self.strip), self.d.pixels(self.window)
            return all(pictures) and former == pictures
        wait_until("no sheet is open", is_settled)
        return pictures

    def are_alike(self, some, others):
        """But for letters that stand a pixel beside their place."""
        for one, other in zip(some, others):
            differences = sum(map(tuple.__ne__, one, other))
            if len(one) != len(other) or differences > len(one) * 0.04:
                return False
        return True

    def are_on_screen(self):
        return all(left >= 0 and top >= 0 and left + width <= WIDTH and top + height <= HEIGHT
                   for left, top, width, height in (self.d.geometry(self.strip), self.d.framed_window()))

    def test_everything_follows_the_desktops_text_size(self):
        self.start_settings(96)
        self.start_with_window()
        self.d.strip("2 of 4 bots running")
        self.without_sheets()
        # The first is too large for the screen, the others not.
        for dots_per_inch, strip_height, width in ((144, 42, 1800), (96, 28, 1200), (120, 35, 1500)):
            self.change_settings(dots_per_inch)
            wait_until(f"the strip is of {dots_per_inch} dots per inch",
                       lambda: self.d.geometry(self.strip)[3] == strip_height)
            wait_until("the window, too", lambda: self.d.geometry(self.window)[2] == width)
            wait_until("all is on the screen", self.are_on_screen)
            live = self.without_sheets()
        self.d.supervisor.terminate()
        self.d.supervisor.wait()
        self.start_with_window()
        self.d.strip("2 of 4 bots running")
        wait_until("all looks as after a start with that size",
                   lambda: self.are_alike(live, self.without_sheets()))


if __name__ == "__main__":
    if os.getpid() > 1000 or os.environ.get("XDG_RUNTIME_DIR") != "/tmp/runtime":
        sys.exit("Only runs inside tests/system/in-sandbox: it starts and ends the supervisor.")
    BUILD = sys.argv.pop(1)
    unittest.main()
