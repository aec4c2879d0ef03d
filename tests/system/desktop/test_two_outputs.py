"""The settings window beside a Wayland compositor with two screens, one at twice the other's scale.

Each test runs in a sandbox and a process of its own: test_two_outputs.py BUILD_FOLDER TEST_NAME
"""

import os
import sys
import unittest

from compositor import WaylandDesktop
from desktop import wait_until

# Left, top, width and height in points.
PLAIN, FINE = (0, 0, 1280, 800), (1280, 0, 1000, 600)
TITLE = 25  # points, of sway's title bar
NAMES = {PLAIN: "HEADLESS-1", FINE: "HEADLESS-2"}


class TwoOutputs(WaylandDesktop):
    def __init__(self, build, native):
        super().__init__(build, native=native, bus=True,
                         more="output HEADLESS-1 position 0 0\n"
                              "output HEADLESS-2 mode 2000x1200 position 1280 0 scale 2\n"
                              "for_window [title=\"^Varnhold$\"] floating enable\n")

    def start_display(self, screen):
        self.environment["WLR_HEADLESS_OUTPUTS"] = "2"
        return super().start_display(screen)


class TwoOutputsTest(unittest.TestCase):
    def launch(self, native):
        self.d = TwoOutputs(BUILD, native)
        self.addCleanup(self.d.end)
        self.d.set_fleet({"planner": "stopped", "builder": "stopped"})
        self.d.start()
        self.d.await_launched()
        return self.d

    def window(self):
        """Left, top, width and height with the title bar."""
        return next(((rect["x"], rect["y"] - TITLE, rect["width"], rect["height"] + TITLE) for rect in (
            node["rect"] for node in self.d.nodes() if node["name"] == "Varnhold")), None)

    def fits(self, area):
        _, _, width, height = self.window() or (0, 0, 9999, 9999)
        return width <= area[2] and height <= area[3]

    def is_put(self, area):
        """Told again until it is so: what comes while the window takes its size may be lost."""
        self.d.order('[title="^Varnhold$"]', "move", "container", "to", "output", NAMES[area])
        left = self.window()[0]
        return area[0] <= left < area[0] + area[2]

    def fits_wherever_it_is_put(self, native):
        desktop = self.launch(native)
        desktop.order("focus", "output", NAMES[FINE])
        desktop.run_second()
        wait_until("the window", self.window)
        # Until it is painted anew for a finer screen, it is half as large there.
        wait_until("it fits, and is as large as can be",
                   lambda: self.fits(FINE) and self.window()[2] > 800)
        for area in (PLAIN, FINE):
            wait_until("it is there", lambda area=area: self.is_put(area))
            wait_until("it still fits", lambda: self.fits(FINE) and self.window()[2] > 800)

    def test_native_window_fits_the_smaller_screen_too(self):
        self.fits_wherever_it_is_put(native=True)

    def test_window_beside_x_fits_the_smaller_screen_too(self):
        self.fits_wherever_it_is_put(native=False)


if __name__ == "__main__":
    if os.getpid() > 1000 or os.environ.get("XDG_RUNTIME_DIR") != "/tmp/runtime":
        sys.exit("Only runs inside tests/system/in-sandbox: it starts and ends the supervisor.")
    BUILD = sys.argv.pop(1)
    unittest.main()
