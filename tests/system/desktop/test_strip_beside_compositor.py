"""The strip and its menu beside a Wayland compositor, as a window of its own and by way of an X server.

Each test runs in a sandbox and a process of its own: test_strip_beside_compositor.py BUILD_FOLDER TEST_NAME
"""

import os
import sys
import unittest

from compositor import WaylandDesktop
from desktop import label_of, wait_until
from panels import HEIGHT, WIDTH, Driven

FLEET = {"planner": "running", "builder": "running", "watcher": "crashed"}


class Bare(Driven, WaylandDesktop):
    """A compositor without any bar, in a window of an X server."""

    def __init__(self, build, native):
        super().__init__(build, native=native, bus=True, screen=f"{WIDTH}x{HEIGHT}x24", inside=True)


def changed_area(before, after):
    """Left, top, right and bottom of what differs between two pictures of the screen."""
    rows, columns = set(), set()
    line = WIDTH * 3
    for y in range(HEIGHT):
        one, other = before[y * line:(y + 1) * line], after[y * line:(y + 1) * line]
        if one != other:
            rows.add(y)
            columns.update(i // 3 for i in range(line) if one[i] != other[i])
    return (min(columns), min(rows), max(columns) + 1, max(rows) + 1) if rows else None


class StripTest(unittest.TestCase):
    def launch(self, native):
        self.d = Bare(BUILD, native)
        self.addCleanup(self.d.end)
        self.d.set_fleet(FLEET)
        self.d.start()
        self.d.await_launched()
        return self.d

    def strip_node(self):
        return wait_until("the strip", lambda: next(
            (node["rect"] for node in self.d.nodes() if node["name"].startswith("Varnhold, 2 of 3")),
            None))

    def at_rest(self):
        """What is seen once two looks show the same."""
        last = [b""]
        def same():
            before, last[0] = last[0], self.d.seen()
            return before == last[0] and last[0]
        return wait_until("a still picture", same)

    def test_native_menu_drops_from_the_strip_and_is_chosen_from(self):
        desktop = self.launch(native=True)
        strip = self.strip_node()
        self.assertEqual(strip["height"], 28)
        self.assertLess(strip["width"], 200)
        x, y = strip["x"] + strip["width"] // 2, strip["y"] + strip["height"] // 2
        desktop.point_at(x, y)
        before = self.at_rest()
        desktop.click(x, y)
        wait_until("the menu", lambda: bytes_of_change(before, desktop.seen()) > 30000)
        left, top, right, bottom = changed_area(before, self.at_rest())
        self.assertLess(abs(left - strip["x"]), 12)
        self.assertLess(abs(top - strip["y"] - strip["height"]), 12)
        self.assertGreater(right - left, 150)
        desktop.click(left + 40, bottom - 110)  # in the rows of bots
        wait_until("a bot is acted on", lambda: desktop.calls("bootout"))
        self.assertIn(desktop.calls("bootout")[0].split("/")[-1], map(label_of, FLEET))

    def test_native_menu_is_closed_by_a_press_elsewhere(self):
        desktop = self.launch(native=True)
        strip = self.strip_node()
        x, y = strip["x"] + strip["width"] // 2, strip["y"] + strip["height"] // 2
        desktop.point_at(x, y)
        before = self.at_rest()
        desktop.click(x, y)
        wait_until("the menu", lambda: bytes_of_change(before, desktop.seen()) > 30000)
        desktop.click(60, HEIGHT - 60)
        wait_until("no menu", lambda: bytes_of_change(before, desktop.seen()) < 3000)
        self.assertEqual(desktop.calls("bootout"), [])
        self.assertIsNone(desktop.supervisor.poll())

    def test_strip_beside_x_takes_no_focus_and_keeps_to_its_corner(self):
        desktop = self.launch(native=False)
        left, top, width, height = desktop.geometry(desktop.strip())
        self.assertEqual((left + width, top + height), (WIDTH - 8, HEIGHT - 8))
        self.assertEqual(desktop.nodes(), [])


def bytes_of_change(one, other):
    return sum(a != b for a, b in zip(one, other))


if __name__ == "__main__":
    if os.getpid() > 1000 or os.environ.get("XDG_RUNTIME_DIR") != "/tmp/runtime":
        sys.exit("Only runs inside tests/system/in-sandbox: it starts and ends the supervisor.")
    BUILD = sys.argv.pop(1)
    unittest.main()
