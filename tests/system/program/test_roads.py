"""How what one agent does comes to be seen: real agents, the built supervisor, a real display.

Each test runs in a sandbox and a process of its own: test_roads.py BUILD_FOLDER TEST_NAME
"""

import os
import re
import sys
import unittest

from session import Session, wait_until

# Pixels at the strip's left edge, where the first bot's bar stands. It is red; what else is red in the
# strip stands further right.
FIRST_BAR = 20


class RoadTest(unittest.TestCase):
    def setUp(self):
        self.session = Session(BUILD)
        self.addCleanup(self.session.end)
        self.first = self.session.bots()[0]["role"]

    def bar_height(self):
        """Rows of the strip, as it is on screen, that have the first bot's colour. 0 if it isn't there."""
        strips = self.session.windows("^Varnhold, ")
        if not strips:
            return 0
        picture = self.session.tool("import", "-window", strips[0], "-depth", "8", "txt:-").stdout
        pixels = re.findall(r"^(\d+),(\d+): \((\d+),(\d+),(\d+)", picture, re.MULTILINE)
        rows = {y for x, y, red, green, blue in pixels
                if int(x) < FIRST_BAR and int(red) - max(int(green), int(blue)) > 60}
        return len(rows)

    def test_a_burst_of_an_agent_lifts_its_bar_which_sinks_afterwards(self):
        self.session.control(self.first, "silent")
        self.session.start()
        self.session.await_up(self.first)
        self.session.await_title("[45] of 6 bots running")
        flat = wait_until("the bar is drawn", self.bar_height)
        wait_until("the bar lies flat", lambda: 0 < self.bar_height() <= 3)
        self.session.control(self.first, "burst", "40")
        (self.session.support / "data" / self.first / "silent").unlink()
        wait_until("the burst lifts the bar", lambda: self.bar_height() >= 10)
        self.session.control(self.first, "silent")
        wait_until("the bar sinks again", lambda: 0 < self.bar_height() <= flat)


if __name__ == "__main__":
    if os.getpid() > 1000 or os.environ.get("XDG_RUNTIME_DIR") != "/tmp/runtime":
        sys.exit("Only runs inside tests/system/in-sandbox: it ends processes by their names.")
    BUILD = sys.argv.pop(1)
    unittest.main()
