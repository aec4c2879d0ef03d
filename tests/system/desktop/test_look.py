"""Strip, menu and settings window as a desktop's wishes for their look change.

Each test runs in a sandbox and a process of its own: test_look.py BUILD_FOLDER TEST_NAME
"""

import collections
import os
import sys
import unittest

from desktop import Desktop, wait_until

FLEET = {"planner": "running", "builder": "running", "fire_drill": "crashed"}

BLACK, WHITE = (0, 0, 0), (255, 255, 255)


class LookTest(unittest.TestCase):
    def setUp(self):
        self.d = Desktop(BUILD, bus=True, manager=True)
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


if __name__ == "__main__":
    if os.getpid() > 1000 or os.environ.get("XDG_RUNTIME_DIR") != "/tmp/runtime":
        sys.exit("Only runs inside tests/system/in-sandbox: it starts and ends the supervisor.")
    BUILD = sys.argv.pop(1)
    unittest.main()
