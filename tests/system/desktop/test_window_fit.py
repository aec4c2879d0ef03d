"""The settings window on screens that are small or finely drawn, with the frames of real window managers.

Each test runs in a sandbox and a process of its own: test_window_fit.py BUILD_FOLDER TEST_NAME
"""

import os
import pathlib
import re
import sys
import unittest

from desktop import Desktop, wait_until
from panels import OnX, Xfce

# Width, height and the toolkit's scale.
SCREENS = ((1366, 768, 1), (1280, 800, 1), (1440, 900, 1), (1920, 1080, 1.5))


class Managed(OnX, Desktop):
    def __init__(self, build, width, height):
        super().__init__(build, bus=True, screen=f"{width}x{height}x24")
        self.spawn(*self.manager)
        wait_until("the window manager", lambda: "window id" in self.tool(
            "xprop", "-root", "_NET_SUPPORTING_WM_CHECK").stdout)


class Openbox(Managed):
    manager = ("openbox",)


class Xfwm(Managed):
    manager = ("xfwm4", "--compositor=off")


class Tiling(Managed):
    """It gives every window a size of its own, whatever the window asks for."""

    manager = ("i3",)

    def __init__(self, build, width, height):
        file = pathlib.Path(os.environ["HOME"]) / ".config/i3/config"
        file.parent.mkdir(parents=True)
        file.write_text("# i3 config file (v4)\nfont pango:DejaVu Sans 10\n")
        super().__init__(build, width, height)


class XfceWithPanel(Xfce):
    def __init__(self, build, width, height):
        super().__init__(build, f"{width}x{height}x24")
        self.start_panel()


class WindowFitTest(unittest.TestCase):
    def free_area(self):
        """What panels leave: left, top, width and height."""
        said = self.d.tool("xprop", "-root", "_NET_WORKAREA").stdout
        return tuple(int(each) for each in re.findall(r"\d+", said.split("=")[1])[:4])

    def fits(self, kind):
        for width, height, scale in SCREENS:
            with self.subTest(width=width, height=height, scale=scale):
                self.d = kind(BUILD, width, height)
                try:
                    self.d.set_fleet({"planner": "running"})
                    self.d.start(QT_SCALE_FACTOR=str(scale))
                    self.d.await_launched()
                    self.d.run_second()
                    wait_until("the window with its frame", self.d.framed_window)
                    wait_until(f"it is inside {self.free_area()}", self.is_inside)
                    self.assertGreater(self.title_height(), 8)
                finally:
                    self.d.end()
                    self.d.reset()

    def is_inside(self):
        left, top, width, height = self.d.framed_window() or (-1, -1, 0, 0)
        free_left, free_top, free_width, free_height = self.free_area()
        return (left >= free_left and top >= free_top and width > 600 and height > 450
                and left + width <= free_left + free_width and top + height <= free_top + free_height)

    def title_height(self):
        return self.d.geometry(self.d.windows("^Varnhold$")[0])[1] - self.d.framed_window()[1]

    def test_window_fits_with_openbox(self):
        self.fits(Openbox)

    def test_window_fits_with_xfwm(self):
        self.fits(Xfwm)

    def test_window_fits_beside_the_panel_of_xfce(self):
        self.fits(XfceWithPanel)

    def test_window_fills_the_tile_that_it_is_given(self):
        self.d = Tiling(BUILD, 1600, 900)
        self.addCleanup(self.d.end)
        self.d.set_fleet({"planner": "running"})
        self.d.start()
        self.d.await_launched()
        self.d.run_second()
        window = wait_until("the window", lambda: self.d.windows("^Varnhold$"))[0]
        wait_until("it has its tile", lambda: self.d.geometry(window)[2] > 1590)
        width = self.d.geometry(window)[2]
        def middle_of_the_welcome():
            """By its one button, which is blue."""
            blue = sorted(i % width for i, (red, _, blue) in enumerate(self.d.pixels(window))
                          if red < 60 and blue > 180)
            return blue[len(blue) // 2] if len(blue) > 2000 else -1
        wait_until("the welcome is in the middle",
                   lambda: abs(middle_of_the_welcome() - width // 2) < 20)


if __name__ == "__main__":
    if os.getpid() > 1000 or os.environ.get("XDG_RUNTIME_DIR") != "/tmp/runtime":
        sys.exit("Only runs inside tests/system/in-sandbox: it starts and ends the supervisor.")
    BUILD = sys.argv.pop(1)
    unittest.main()
