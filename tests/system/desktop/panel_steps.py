"""What a user does with the status item on any panel, as steps of tests."""

import unittest

from desktop import label_of, wait_until
from panels import HEIGHT, WIDTH

QUIET = {"planner": "running", "builder": "running", "watcher": "stopped"}
CRASHED = {**QUIET, "watcher": "crashed"}


class PanelSteps(unittest.TestCase):
    build = None  # folder, set by whoever runs the tests

    def launch(self, kind, fleet=None):
        self.d = kind(self.build)
        self.addCleanup(self.d.end)
        self.d.set_fleet(fleet or QUIET)
        self.d.start_panel()
        self.d.start()
        self.d.await_launched()
        return self.d

    def shows_and_marks(self, kind):
        desktop = self.launch(kind, CRASHED)
        wait_until("the mark", lambda: desktop.red_places() > 10)
        self.assertTrue(desktop.says("2/3 🔴1"))
        desktop.set_fleet(QUIET)
        wait_until("no mark", lambda: desktop.red_places() == 0)

    def menu_is_chosen_from(self, kind):
        desktop = self.launch(kind)
        for button in kind.draws_menu_at:
            is_open = desktop.open_panels_menu(button)
            if button == kind.draws_menu_at[0]:  # through a poll that would change the rows
                desktop.set_fleet({**QUIET, "another": "running"})
                wait_until("the poll", lambda: desktop.says("3/4"))
                self.assertTrue(is_open())
            unloaded = len(desktop.calls("bootout"))
            desktop.choose_first_bot()
            wait_until("the bot is unloaded",
                       lambda unloaded=unloaded: len(desktop.calls("bootout")) > unloaded)
            self.assertTrue(desktop.calls("bootout")[-1].endswith(label_of("planner")))
            desktop.point_at(100, HEIGHT - 100)  # or a tooltip comes
            wait_until("the menu is gone", lambda is_open=is_open: not is_open())

    def window_opens(self, kind):
        desktop = self.launch(kind)
        desktop.cover()
        desktop.open_panels_menu(3)
        desktop.choose_preferences()
        left, top, width, height = wait_until("the window", desktop.framed_window)
        self.assertGreaterEqual(left, 0)
        self.assertGreaterEqual(top, 0)
        self.assertLessEqual(left + width, WIDTH)
        self.assertLessEqual(top + height, HEIGHT)
        wait_until("it is in front, with the keyboard", desktop.window_is_in_front)

    def popover_is_placed(self, kind):
        """Beside the panel, near its icons, and whole."""
        desktop = self.launch(kind)
        x, y = desktop.icon()
        desktop.notify(("Opus was installed.", True))
        popover = wait_until("the popover", lambda: desktop.windows("^New AI model"))[0]
        left, top, width, height = desktop.geometry(popover)
        _, bar_top, _, bar = desktop.icons_area()
        self.assertGreaterEqual(left, 0)
        self.assertLessEqual(left + width, WIDTH)
        if y < HEIGHT // 2:
            self.assertGreaterEqual(top, bar_top + bar - desktop.slack)
            self.assertLess(top - y, 60)
        else:
            self.assertLessEqual(top + height, bar_top + desktop.slack)
            self.assertLess(y - top - height, 60)
        self.assertLess(abs(left + width // 2 - x), 400)
        desktop.click(100, HEIGHT // 2)
        wait_until("it is gone", lambda: not desktop.windows("^New AI model"))

    def panel_comes_and_goes(self, kind):
        desktop = self.launch(kind)
        for _ in range(2):
            desktop.kill_panel()
            wait_until("the strip", desktop.strip_is_shown)
            desktop.start_panel()
            desktop.icon()
            wait_until("no strip", lambda: not desktop.strip_is_shown())
        self.assertIsNone(desktop.supervisor.poll())
        self.assertEqual(desktop.calls("bootout"), [])

    def session_ends(self, kind):
        desktop = self.launch(kind)
        desktop.icon()
        desktop.screen.terminate()
        wait_until("the fleet is down", lambda: len(desktop.calls("bootout")) == len(QUIET))
