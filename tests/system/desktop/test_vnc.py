"""The status item on a desktop that is seen and steered from afar.

Each test runs in a sandbox and a process of its own: test_vnc.py BUILD_FOLDER TEST_NAME
"""

import os
import sys
import unittest

from desktop import wait_until
from panel_steps import QUIET, PanelSteps
from panels import Xfce
from vnc import SeenFromAfar, Viewer


class XfceFromAfar(Xfce, SeenFromAfar):
    pass


class VncTest(PanelSteps):
    def test_vnc_shows_the_icon_and_marks_a_crash(self):
        self.shows_and_marks(XfceFromAfar)

    def test_vnc_menu_is_chosen_from(self):
        self.menu_is_chosen_from(XfceFromAfar)

    def test_vnc_window_opens_on_the_screen(self):
        self.window_opens(XfceFromAfar)

    def test_vnc_popover_is_placed(self):
        self.popover_is_placed(XfceFromAfar)

    def test_vnc_panel_comes_and_goes(self):
        self.panel_comes_and_goes(XfceFromAfar)

    def test_vnc_session_ends(self):
        self.session_ends(XfceFromAfar)

    def with_strip(self):
        self.d = desktop = SeenFromAfar(self.build, manager=True)
        self.addCleanup(desktop.end)
        desktop.set_fleet(QUIET)
        desktop.start()
        strip = desktop.strip()
        desktop.await_launched()
        return desktop, strip

    def test_vnc_viewer_comes_and_goes_unnoticed(self):
        desktop, strip = self.with_strip()
        place = desktop.geometry(strip)
        desktop.viewer.leave()
        polls = len(desktop.calls("list"))
        wait_until("a poll", lambda: len(desktop.calls("list")) > polls)
        desktop.viewer = Viewer()
        self.assertEqual(desktop.geometry(strip), place)
        desktop.click_window(strip)
        wait_until("the menu", desktop.menus)
        self.assertIsNone(desktop.supervisor.poll())
        self.assertEqual(desktop.calls("bootout"), [])

    def test_vnc_viewer_makes_the_screen_smaller_under_strip_and_window(self):
        desktop, strip = self.with_strip()
        desktop.run_second()
        window = wait_until("the window", lambda: desktop.windows("^Varnhold$"))[0]
        desktop.viewer.set_screens((0, 0, 1000, 700))
        for each in (strip, window):
            def is_seen(each=each):
                left, top, width, height = desktop.geometry(each)
                return left >= 0 and top >= 0 and left + width <= 1000 and top + height <= 700
            wait_until("it is on the screen", is_seen)


if __name__ == "__main__":
    if os.getpid() > 1000 or os.environ.get("XDG_RUNTIME_DIR") != "/tmp/runtime":
        sys.exit("Only runs inside tests/system/in-sandbox: it starts and ends the supervisor.")
    PanelSteps.build = sys.argv.pop(1)
    unittest.main()
