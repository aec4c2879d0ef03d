"""At the scales that desktops set, what is seen after a change is what painting everything anew gives.

The same is asked of every change in tests/views, without a display; here it is the built program and a real one.
Some minutes long: script/desktops runs these. Each test runs in a sandbox and a process of its own: test_scales.py BUILD_FOLDER TEST_NAME
"""

import os
import subprocess
import sys
import unittest

from desktop import Desktop, wait_until

FLEET = {"planner": "running", "builder": "running", "watcher": "running", "writer": "stopped"}
LOOKS = 3  # the same so often, and nothing moves any more
AFTER_POINTING = 20  # a tool tip may come
AFTER_SAVING = 40  # what tells of it goes by itself


class Scaled(Desktop):
    """Told of its scale as desktops tell it, by the dots of an inch."""

    def __init__(self, build, scale):
        self.scale = scale
        # Wherever it is within a twentieth of 1, nothing is drawn any larger.
        self.factor = 1 if scale < 1.05 else scale
        # Without a window manager, which would keep strip and menu from another size.
        super().__init__(build, screen=f"{self.dots(1300)}x{self.dots(980)}x24")
        subprocess.run(["xrdb", "-nocpp", "-merge"], input=f"Xft.dpi: {96 * scale:.0f}\n", text=True,
                       env=self.environment, check=True)

    def dots(self, points):
        return round(points * self.factor)

    def looks(self, window):
        return subprocess.run(["import", "-window", window, "-depth", "8", "rgb:-"],
                              env=self.environment, capture_output=True, check=False).stdout

    def at_rest(self, window, looks=LOOKS):
        """What a window shows once nothing moves."""
        last = [b"", 0]
        def rests():
            now = self.looks(window)
            last[:] = [now, last[1] + 1 if now == last[0] else 0]
            return now and last[1] >= looks
        wait_until("a still picture", rests)
        return last[0]

    def paint_anew(self, window):
        """By another size for a moment: all of it has to be laid out and painted."""
        _, _, width, height = self.geometry(window)
        for wider in (2, 0):
            self.tool("xdotool", "windowsize", window, width + wider, height + wider)
            wait_until("its size", lambda wider=wider: self.geometry(window)[2:] == (
                width + wider, height + wider))
            self.at_rest(window)

    def point_at(self, window, x, y, *more):
        """At points from a window's corner; what is done there follows."""
        left, top, _, _ = self.geometry(window)
        self.tool("xdotool", "mousemove", "--sync", left + self.dots(x), top + self.dots(y), *more)


class ScalesTest(unittest.TestCase):
    def at_scale(self, scale):
        self.d = Scaled(BUILD, scale)
        self.addCleanup(self.d.end)
        self.d.set_fleet(FLEET)
        self.d.start()
        self.d.await_launched()
        self.strip_stays_whole()
        self.menu_stays_whole()
        self.window_stays_whole()

    def assert_whole(self, window, change, looks=LOOKS):
        shown = self.d.at_rest(window, looks)
        self.d.paint_anew(window)
        anew = self.d.looks(window)
        wrong = sum(a != b for a, b in zip(shown, anew)) + abs(len(shown) - len(anew))
        self.assertEqual(wrong, 0, f"{change}, at {self.d.scale}")

    def strip_stays_whole(self):
        strip = self.d.strip("^Varnhold, 3 of 4")
        self.assertEqual(self.d.geometry(strip)[3], self.d.dots(28))
        for states, words in (({**FLEET, "watcher": "crashed"}, "2 of 4 bots running, 1 crashed"),
                              ({**FLEET, "another": "running"}, "4 of 5"), (FLEET, "3 of 4")):
            self.d.set_fleet(states)
            self.assert_whole(self.d.strip(words), words)
        flat = self.d.coloured(strip)
        def lifted():
            self.d.burst("planner")
            return self.d.coloured(strip) > flat + 10
        wait_until("the bar is lifted", lifted)
        self.d.burst("builder")
        wait_until("the bars are flat again", lambda: self.d.coloured(strip) == flat)
        self.assert_whole(strip, "bars rise and sink")

    def menu_stays_whole(self):
        self.d.click_window(self.d.strip())
        menu = wait_until("the menu", self.d.menus)[0]
        for row in range(4):
            self.d.key("Down")
            self.assert_whole(menu, f"row {row}")
        self.d.key("Escape")
        wait_until("the menu is gone", lambda: not self.d.menus())

    def window_stays_whole(self):
        self.d.run_second()
        window = wait_until("the window", lambda: self.d.windows("^Varnhold$"))[0]
        self.d.tool("xdotool", "windowfocus", "--sync", window)
        self.assert_whole(window, "the welcome", AFTER_SAVING)
        self.d.key("Escape")
        self.assert_whole(window, "the next sheet")
        self.d.key("Escape")
        self.assert_whole(window, "no sheet")
        for name, x, y in (("a bot", 70, 151), ("its button", 186, 187), ("a tool", 100, 326),
                           ("a stepper", 410, 510), ("Reset", 321, 858)):
            self.d.point_at(window, x, y)
            self.assert_whole(window, name, AFTER_POINTING)
        self.d.point_at(window, 620, 650, "click", 5, "click", 5)
        self.assert_whole(window, "an area that was scrolled", AFTER_POINTING)
        self.d.point_at(window, 620, 650, "click", 4, "click", 4)
        self.drag(window, (70, 151), (510, 595))
        self.d.point_at(window, 950, 560)
        self.assert_whole(window, "a bot that was dragged to a chain", AFTER_SAVING)
        self.d.point_at(window, 256, 272, "click", 1)
        self.assert_whole(window, "a sheet", AFTER_POINTING)
        self.d.key("Escape")
        self.assert_whole(window, "the sheet is gone")

    def drag(self, window, start, end):
        """By and by, as a hand does."""
        self.d.point_at(window, *start, "mousedown", 1)
        for step in range(1, 11):
            self.d.point_at(window, *(a + (b - a) * step // 10 for a, b in zip(start, end)),
                            "sleep", "0.05")
        self.d.point_at(window, *end, "mouseup", 1)

    def test_at_scale_1_nothing_is_left_behind(self):
        self.at_scale(1)

    def test_at_scale_1_04_nothing_is_left_behind(self):
        self.at_scale(1.04)

    def test_at_scale_1_25_nothing_is_left_behind(self):
        self.at_scale(1.25)

    def test_at_scale_1_5_nothing_is_left_behind(self):
        self.at_scale(1.5)

    def test_at_scale_1_75_nothing_is_left_behind(self):
        self.at_scale(1.75)


if __name__ == "__main__":
    if os.getpid() > 1000 or os.environ.get("XDG_RUNTIME_DIR") != "/tmp/runtime":
        sys.exit("Only runs inside tests/system/in-sandbox: it starts and ends the supervisor.")
    BUILD = sys.argv.pop(1)
    unittest.main()
