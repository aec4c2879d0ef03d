"""Dragging on a real display with a real pointer, out of a page and from another program, with and
without a window manager.

Each test runs in a sandbox and a process of its own: test_dragging.py BUILD_FOLDER TEST_NAME
"""

import os
import queue
import subprocess
import sys
import threading
import unittest

from desktop import DISPLAY, Desktop
from pointer_sign import forbids
from session import wait_until

STEPS = 12


class Guest:
    """A program on the display that says line by line what it hears, and first where its things are."""

    def __init__(self, desktop, *words):
        environment = dict(desktop.environment, QT_QPA_PLATFORM="xcb", QT_QUICK_BACKEND="software")
        self.process = subprocess.Popen([desktop.build / "tests/show_dragging_board", *words],
                                        env=environment, stdout=subprocess.PIPE, text=True)
        desktop.started.append(self.process)
        self.lines = queue.Queue()
        threading.Thread(target=self.read, daemon=True).start()
        self.places = {}
        told = [line.split() for line in self.hear_until("ready")]
        for _, name, x, y in (words for words in told if words[0] == "at"):
            self.places[name] = (int(x), int(y))

    def read(self):
        with self.process.stdout as lines:
            for line in lines:
                self.lines.put(line.rstrip("\n"))

    def hear_until(self, wanted):
        heard = []
        while not heard or heard[-1] != wanted:
            try:
                heard.append(self.lines.get(timeout=20))
            except queue.Empty:
                raise AssertionError(f"waited for {wanted!r}, heard {heard}") from None
        return heard


class DraggingTest(unittest.TestCase):
    def each_way(self, *manner):
        """A page on a bare display, then one under a window manager."""
        for manager in (False, True):
            with self.subTest(manager=manager):
                self.desktop = Desktop(BUILD, manager=manager)
                try:
                    self.page = Guest(self.desktop, *manner)
                    window = self.desktop.windows("^Board$")[0]
                    self.desktop.tool("xdotool", "windowfocus", "--sync", window)
                    yield
                finally:
                    self.desktop.end()
                    self.desktop.reset()

    # -- the pointer ----------------------------------------------------------------------------

    def jump(self, place):
        self.pointer = place
        self.desktop.tool("xdotool", "mousemove", "--sync", *place)

    def go(self, place):
        """Moves there by and by, as a hand does."""
        x, y = self.pointer
        for step in range(1, STEPS + 1):
            self.desktop.tool("xdotool", "mousemove", x + (place[0] - x) * step // STEPS,
                              y + (place[1] - y) * step // STEPS)
        self.pointer = place

    def press(self, place):
        self.jump(place)
        self.desktop.tool("xdotool", "mousedown", 1)

    def release(self):
        self.desktop.tool("xdotool", "mouseup", 1)

    def lift(self, name):
        x, y = self.page.places[name]
        self.press((x, y))
        self.go((x + 14, y))
        self.page.hear_until("carried")

    def drop(self, name, payload):
        """Drops there; what the page has told meanwhile."""
        self.go(self.page.places[name])
        self.release()
        told = self.page.hear_until(f"finished {payload} taken")
        return told[:-1]

    # -- what is dragged ------------------------------------------------------------------------

    def test_a_row_is_dropped_on_a_zone_time_and_again(self):
        for _ in self.each_way():
            for _ in range(3):
                self.lift("library0")
                self.assertEqual(self.drop("free", "l0")[-1], "First zone l0")

    def test_a_row_keeps_what_is_dropped_on_it(self):
        for _ in self.each_way():
            self.lift("library0")
            self.assertEqual(self.drop("first1", "l0")[-1], "First row b")

    def test_rows_change_places_under_the_pointer(self):
        for _ in self.each_way():
            self.lift("first0")
            told = self.drop("first2", "a")
            self.assertIn("First entered b", told)
            self.assertIn("First entered c", told)
            self.assertEqual(told[-1], "First row a")

    def test_what_a_zone_does_not_take_is_left(self):
        for _ in self.each_way():
            self.lift("bot")
            self.go(self.page.places["free"])
            self.release()
            self.assertEqual(self.page.hear_until("finished com.example.bot left"),
                             ["finished com.example.bot left"])
            self.lift("bot")
            self.assertEqual(self.drop("bots", "com.example.bot"), ["Bots zone com.example.bot"])

    def test_a_drag_out_of_the_window_is_left(self):
        for _ in self.each_way():
            self.lift("library0")
            self.go((1200, 700))
            self.release()
            self.page.hear_until("finished l0 left")
            self.lift("library0")
            self.assertEqual(self.drop("free", "l0")[-1], "First zone l0")

    def test_the_pointer_forbids_where_a_drop_does_nothing(self):
        for _ in self.each_way():
            self.lift("library0")
            for place, forbidden in (("first1", True), ("free", False), ("first2", True),
                                     ("bots", True), ("free", False)):
                self.go(self.page.places[place])
                wait_until(f"the pointer over {place}", lambda: forbids(DISPLAY) == forbidden)
            self.go((1200, 700))
            wait_until("the pointer over nothing", lambda: forbids(DISPLAY))
            # It is a drop all the same, and whoever it is for is told.
            self.assertEqual(self.drop("first1", "l0")[-1], "First row b")
            wait_until("a pointer as ever", lambda: not forbids(DISPLAY))
            self.lift("first0")
            self.go(self.page.places["first2"])
            wait_until("rows that change places", lambda: not forbids(DISPLAY))
            self.release()

    def test_escape_ends_a_drag(self):
        for _ in self.each_way():
            self.lift("library0")
            self.go(self.page.places["free"])
            self.desktop.key("Escape")
            self.page.hear_until("finished l0 left")
            self.release()
            self.lift("library0")
            self.assertEqual(self.drop("free", "l0")[-1], "First zone l0")

    def test_a_drag_outlives_its_row(self):
        for _ in self.each_way("forgetful"):
            self.lift("first0")
            self.assertEqual(self.drop("free", "a")[-1], "First zone a")

    def test_a_pointer_that_rests_near_an_edge_scrolls(self):
        for _ in self.each_way("low"):
            self.lift("library0")
            self.go(self.page.places["edge"])
            self.page.hear_until("Second entered y")
            self.page.hear_until("Second hovered")
            self.release()
            self.assertEqual(self.page.hear_until("finished l0 taken")[-2], "Second zone l0")

    def test_text_of_another_program_is_taken(self):
        for _ in self.each_way():
            outsider = Guest(self.desktop, "outside", "some text\n")
            self.press(outsider.places["text"])
            self.go(self.page.places["bots"])
            outsider.hear_until("welcome")
            self.release()
            self.page.hear_until("Bots zone some text")

    def test_a_row_is_moved_by_keys_alone(self):
        for _ in self.each_way():
            self.desktop.key("Tab", "space", "Tab", "Return")
            told = self.page.hear_until("First zone l0")
            self.assertEqual(set(told[:-1]) - {"First hovered"}, {"began l0"})


if __name__ == "__main__":
    if os.getpid() > 1000 or os.environ.get("XDG_RUNTIME_DIR") != "/tmp/runtime":
        sys.exit("Only runs inside tests/system/in-sandbox: its display is numbered as everyone's.")
    BUILD = sys.argv.pop(1)
    unittest.main()
