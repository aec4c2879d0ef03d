"""The status item on the panels that people have, driven by pointer and keys and judged by what is seen.

Each test runs in a sandbox and a process of its own: test_panels.py BUILD_FOLDER TEST_NAME
"""

import os
import sys
import unittest

from desktop import BUS, NAME, wait_until
from panel_steps import PanelSteps
from panels import HEIGHT, WIDTH, Lxqt, Waybar, WaybarBesideX, Xfce


class PanelsTest(PanelSteps):
    def test_xfce_shows_the_icon_and_marks_a_crash(self):
        self.shows_and_marks(Xfce)

    def test_xfce_menu_is_chosen_from(self):
        self.menu_is_chosen_from(Xfce)

    def test_xfce_window_opens_on_the_screen(self):
        self.window_opens(Xfce)

    def test_xfce_popover_is_placed(self):
        self.popover_is_placed(Xfce)

    def test_xfce_panel_comes_and_goes(self):
        self.panel_comes_and_goes(Xfce)

    def test_xfce_session_ends(self):
        self.session_ends(Xfce)

    def test_lxqt_shows_the_icon_and_marks_a_crash(self):
        self.shows_and_marks(Lxqt)

    def test_lxqt_menu_is_chosen_from(self):
        self.menu_is_chosen_from(Lxqt)

    def test_lxqt_left_button_drops_our_menu_under_the_icon(self):
        desktop = self.launch(Lxqt)
        x, y = desktop.icon()
        desktop.click(x, y)
        menu = wait_until("the menu", desktop.menus)[0]
        left, top, width, _ = desktop.geometry(menu)
        self.assertLess(top, y + 40)
        self.assertLess(abs(min(x, WIDTH - width) - left), 40)
        desktop.click(100, HEIGHT - 100)
        wait_until("the menu is gone", lambda: not desktop.menus())

    def test_lxqt_window_opens_on_the_screen(self):
        self.window_opens(Lxqt)

    def test_lxqt_popover_is_placed(self):
        self.popover_is_placed(Lxqt)

    def test_lxqt_panel_comes_and_goes(self):
        self.panel_comes_and_goes(Lxqt)

    def test_lxqt_session_ends(self):
        self.session_ends(Lxqt)

    def test_waybar_shows_the_icon_and_marks_a_crash(self):
        self.shows_and_marks(Waybar)

    def test_waybar_menu_is_chosen_from(self):
        self.menu_is_chosen_from(Waybar)

    def test_waybar_beside_x_menu_is_chosen_from(self):
        self.menu_is_chosen_from(WaybarBesideX)

    def test_wayland_panel_that_asks_us_for_a_menu_is_told_to_show_its_own(self):
        for kind in (Waybar, WaybarBesideX):
            with self.subTest(kind=kind.__name__):
                desktop = self.launch(kind)
                desktop.icon()
                for method in ("Activate", "SecondaryActivate", "ContextMenu"):
                    asked = desktop.tool("busctl", f"--address={BUS}", "call", desktop.notifier(),
                                         "/StatusNotifierItem", "org.kde.StatusNotifierItem",
                                         method, "ii", "0", "0")
                    self.assertIn("The item is its menu", asked.stderr)
                self.assertFalse(desktop.menus() if kind is WaybarBesideX else desktop.nodes())
                desktop.end()
                desktop.reset()

    def test_waybar_window_opens_on_the_screen(self):
        self.window_opens(Waybar)

    def test_waybar_beside_x_window_opens_on_the_screen(self):
        self.window_opens(WaybarBesideX)

    def test_waybar_beside_x_shows_the_icon_and_marks_a_crash(self):
        self.shows_and_marks(WaybarBesideX)

    def test_waybar_beside_x_popover_is_placed(self):
        self.popover_is_placed(WaybarBesideX)

    def test_waybar_comes_and_goes(self):
        self.panel_comes_and_goes(Waybar)

    def test_waybar_beside_x_comes_and_goes(self):
        self.panel_comes_and_goes(WaybarBesideX)

    def test_wayland_without_a_place_for_the_popover_gets_a_notification(self):
        desktop = self.launch(Waybar)
        desktop.spawn(desktop.build / "tests/fake_desktop", "notifications")
        service = "org.freedesktop.Notifications"
        wait_until("the service", lambda: service in desktop.bus_names())
        def shown():
            return desktop.ask("get-property", service, "/org/freedesktop/Notifications", service,
                               "Shown")
        desktop.notify(("Opus was installed.", True))
        wait_until("the notification", lambda: shown() == [
            "Varnhold", NAME, "New AI model installed",
            "Opus was installed.\n⚠️ This affects a chain you use — re-check it.", NAME, "14000"])
        wait_until("it is taken back", lambda: shown() == [])

    def test_waybar_session_ends(self):
        self.session_ends(Waybar)

    def test_waybar_beside_x_session_ends(self):
        self.session_ends(WaybarBesideX)


if __name__ == "__main__":
    if os.getpid() > 1000 or os.environ.get("XDG_RUNTIME_DIR") != "/tmp/runtime":
        sys.exit("Only runs inside tests/system/in-sandbox: it starts and ends the supervisor.")
    PanelSteps.build = sys.argv.pop(1)
    unittest.main()
