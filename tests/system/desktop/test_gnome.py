"""The status item on GNOME, whose shell is too heavy to be installed for every run: script/desktops runs these.

Each test runs in a sandbox and a process of its own: test_gnome.py BUILD_FOLDER TEST_NAME
"""

import os
import pathlib
import sys
import unittest

from desktop import NAME, SESSIONS, SOURCE, label_of, wait_until
from gnome import (Gnome, GnomeNative, GnomeNativeWithIcons, GnomeWayland, GnomeWaylandWithIcons,
                   GnomeWithIcons)
from panel_steps import CRASHED, QUIET, PanelSteps
from panels import HEIGHT, WIDTH

LAUNCHER = SOURCE / "tests/system/desktop/launcher.py"


class GnomeTest(PanelSteps):
    # -- the icon in the bar --------------------------------------------------------------------

    def says_and_marks(self, kind):
        desktop = self.launch(kind, CRASHED)
        wait_until("the text in the bar", lambda: desktop.bar_says() == "2/3 🔴1")
        wait_until("the mark", lambda: desktop.red_places() > 10)
        desktop.set_fleet(QUIET)
        wait_until("no mark", lambda: desktop.red_places() == 0)
        wait_until("the new text", lambda: desktop.bar_says() == "2/3")

    def window_is_in_front(self, kind):
        """By way of the panel's menu; it keeps clear of the shell's bar."""
        self.window_opens(kind)
        wait_until("it has the keyboard", self.d.window_in_front)
        self.assertGreaterEqual(self.d.framed_window()[1], self.d.bar)

    def test_gnome_with_icons_says_and_marks_a_crash(self):
        self.says_and_marks(GnomeWithIcons)

    def test_gnome_with_icons_menu_is_chosen_from(self):
        self.menu_is_chosen_from(GnomeWithIcons)

    def test_gnome_with_icons_window_opens_in_front(self):
        self.window_is_in_front(GnomeWithIcons)

    def test_gnome_with_icons_loses_them_and_gets_them_back(self):
        self.panel_comes_and_goes(GnomeWithIcons)

    def test_gnome_with_icons_shell_dies_and_comes_back(self):
        desktop = self.launch(GnomeWithIcons)
        desktop.icon()
        desktop.shell.kill()
        desktop.shell.wait()
        wait_until("the strip", lambda: desktop.windows("^Varnhold, "))
        desktop.start_shell()
        desktop.icon()
        wait_until("no strip", lambda: not desktop.windows("^Varnhold, "))
        self.assertEqual(desktop.calls("bootout"), [])

    def test_gnome_with_icons_popover_hangs_from_the_bar(self):
        desktop = self.launch(GnomeWithIcons)
        desktop.icon()
        desktop.notify(("Opus was installed.", True))
        left, top, width, _ = wait_until("the popover",
                                         lambda: desktop.shown("^New AI model"))["place"]
        self.assertGreater(left, WIDTH // 2)
        self.assertLessEqual(left + width, WIDTH)
        self.assertLess(abs(top - desktop.bar), 12)

    def test_gnome_with_icons_session_ends(self):
        self.session_ends(GnomeWithIcons)

    def test_gnome_with_icons_on_wayland_says_and_marks_a_crash(self):
        self.says_and_marks(GnomeWaylandWithIcons)

    def test_gnome_with_icons_on_wayland_menu_is_chosen_from(self):
        self.menu_is_chosen_from(GnomeWaylandWithIcons)

    def test_gnome_with_icons_on_wayland_window_opens_in_front(self):
        self.window_is_in_front(GnomeWaylandWithIcons)

    def test_gnome_with_icons_on_wayland_loses_them_and_gets_them_back(self):
        self.panel_comes_and_goes(GnomeWaylandWithIcons)

    def test_gnome_with_icons_native_says_and_marks_a_crash(self):
        self.says_and_marks(GnomeNativeWithIcons)

    def test_gnome_with_icons_native_menu_is_chosen_from(self):
        self.menu_is_chosen_from(GnomeNativeWithIcons)

    def test_gnome_with_icons_native_window_opens_in_front(self):
        self.window_is_in_front(GnomeNativeWithIcons)

    def test_gnome_with_icons_native_menu_brings_the_covered_window_forward(self):
        self.window_is_in_front(GnomeNativeWithIcons)
        self.d.bring_forward("Event Tester")
        wait_until("it is covered", lambda: not self.d.window_in_front())
        self.d.open_panels_menu(3)
        self.d.choose_preferences()
        wait_until("it is in front again", self.d.window_in_front)

    def test_gnome_with_icons_native_loses_them_and_gets_them_back(self):
        self.panel_comes_and_goes(GnomeNativeWithIcons)

    # -- the strip ------------------------------------------------------------------------------

    def with_strip(self, kind):
        self.d = kind(self.build)
        self.addCleanup(self.d.end)
        self.d.set_fleet(QUIET)
        self.d.start()
        self.d.await_launched()
        return self.d.strip()

    def open_menu(self, button=1):
        self.d.click_strip(button)
        return wait_until("the menu", self.d.our_menu)

    def await_no_menu(self):
        wait_until("the menu is gone", lambda: not self.d.our_menu())

    def strip_menu_opens_and_closes(self, kind):
        """At either button; it goes in all ways that there are, lasts through a poll and is chosen from."""
        strip = self.with_strip(kind)
        ways = {"strip": self.d.click_strip, "press": lambda: self.d.click(300, 600),
                # The shell's own view of all windows, which takes the keyboard.
                "overview": lambda: self.d.key("super")}
        for number, way in enumerate(kind.strip_menu_goes_by):
            menu = self.open_menu(3 if number == 1 else 1)
            self.assertLess(abs(menu[1] - strip[1] - strip[3]) if strip[1] < HEIGHT // 2
                            else abs(menu[1] + menu[3] - strip[1]), 8)
            ways[way]()
            self.await_no_menu()
        self.d.leave_overview()
        self.open_menu()
        self.d.set_fleet(CRASHED)
        self.d.strip("1 crashed$")
        self.assertTrue(self.d.our_menu())
        self.d.choose_first_bot()
        wait_until("the bot is unloaded", lambda: self.d.calls("bootout"))
        self.assertTrue(self.d.calls("bootout")[0].endswith(label_of("planner")))
        self.await_no_menu()

    def strip_menu_opens_the_window(self, kind):
        self.with_strip(kind)
        self.open_menu()
        self.d.choose_preferences()
        wait_until("the window in front", self.d.window_in_front)
        left, top, width, height = self.d.framed_window()
        self.assertGreaterEqual(left, 0)
        self.assertGreaterEqual(top, self.d.bar)
        self.assertLessEqual(left + width, WIDTH)
        self.assertLessEqual(top + height, HEIGHT)

    def test_gnome_has_the_strip_where_it_hears_of_presses(self):
        left, top, width, height = self.with_strip(Gnome)
        self.assertEqual((left + width, top + height), (WIDTH - 8, HEIGHT - 8))

    def test_gnome_strip_menu_opens_and_closes(self):
        self.strip_menu_opens_and_closes(Gnome)

    def test_gnome_strip_menu_opens_the_window(self):
        self.strip_menu_opens_the_window(Gnome)

    def test_gnome_session_ends(self):
        self.with_strip(Gnome)
        self.d.screen.terminate()
        wait_until("the fleet is down", lambda: len(self.d.calls("bootout")) == len(QUIET))

    def test_gnome_on_wayland_has_the_strip_in_its_bar(self):
        left, top, width, height = self.with_strip(GnomeWayland)
        self.assertEqual(left + width, WIDTH * 3 // 4)
        self.assertGreaterEqual(top, 0)
        self.assertLessEqual(top + height, self.d.bar)
        wait_until("it is seen over the bar", self.d.coloured_places)

    def test_gnome_on_wayland_strip_menu_opens_and_closes(self):
        self.strip_menu_opens_and_closes(GnomeWayland)

    def test_gnome_on_wayland_strip_menu_opens_the_window(self):
        self.strip_menu_opens_the_window(GnomeWayland)

    def test_gnome_native_strip_menu_opens_and_closes(self):
        self.strip_menu_opens_and_closes(GnomeNative)

    def test_gnome_native_strip_menu_opens_the_window(self):
        self.strip_menu_opens_the_window(GnomeNative)

    def test_gnome_popover_stands_by_the_strip(self):
        strip = self.with_strip(Gnome)
        self.d.notify(("Opus was installed.", True))
        left, top, width, height = wait_until(
            "the popover", lambda: self.d.shown("^New AI model"))["place"]
        self.assertLess(strip[1] - top - height, 10)
        self.assertLessEqual(left + width, WIDTH)

    def test_gnome_on_wayland_popover_hangs_from_the_strip(self):
        strip = self.with_strip(GnomeWayland)
        self.d.notify(("Opus was installed.", True))
        left, top, width, _ = wait_until(
            "the popover", lambda: self.d.shown("^New AI model"))["place"]
        self.assertLess(abs(left + width // 2 - strip[0] - strip[2] // 2), 4)
        self.assertLess(abs(top - strip[1] - strip[3]), 12)

    def test_gnome_native_notice_is_one_of_the_shells(self):
        self.with_strip(GnomeNative)
        self.d.notify(("Opus <1> was installed.", True))
        wait_until("the notification", lambda: self.d.notifications() == [
            [f"{NAME}.desktop", "New AI model installed", "Opus &lt;1&gt; was installed.\n"
             "⚠️ This affects a chain you use — re-check it."]])

    def test_gnome_on_wayland_has_no_strip_over_what_takes_the_whole_screen(self):
        self.with_strip(GnomeWayland)
        self.d.spawn("xev", "-geometry", "400x300+100+100")
        other = wait_until("another program's window", lambda: self.d.windows("Event Tester"))[0]
        wait_until("it has the keyboard", lambda: self.d.focused() == other)
        self.d.tool("wmctrl", "-i", "-r", other, "-b", "add,fullscreen")
        wait_until("no strip", lambda: not self.d.strip_is_shown())
        self.d.tool("wmctrl", "-i", "-r", other, "-b", "remove,fullscreen")
        wait_until("the strip again", self.d.strip_is_shown)
        self.assertEqual(self.d.focused(), other)

    def upper_right(self):
        left, top, width, _ = self.d.strip()
        return left + width, top

    def test_gnome_on_wayland_leaves_the_strip_where_it_was_put(self):
        self.with_strip(GnomeWayland)
        right, top = self.upper_right()
        def is_dragged():
            """By as much as the pointer has gone since the shell has noticed the press."""
            x, y = self.upper_right()[0] - 20, top + 14
            self.d.input("mousemove", x, y, "sleep", "0.1", "mousedown", 1, "sleep", "0.1",
                         "mousemove", x - 100, y, "sleep", "0.1", "mouseup", 1)
            return self.upper_right() != (right, top)
        wait_until("it follows the pointer", is_dragged)
        right, top = self.upper_right()
        self.d.supervisor.terminate()
        self.d.supervisor.wait(60)
        self.d.start()
        self.d.strip()
        wait_until("it is there again", lambda: self.upper_right() == (right, top))

    # -- a frame of our own ---------------------------------------------------------------------

    def title_bar(self):
        """Brightness of its ground, and how much is written there, as what differs from the ground."""
        left, top, width, _ = wait_until("the window in front", self.d.window_in_front)["place"]
        raw = self.d.seen(f"{width - 8}x20+{left + 4}+{top + 6}")
        return raw[0], sum(abs(each - raw[0]) > 60 for each in raw)

    def test_gnome_native_window_has_title_and_buttons_in_light_and_dark(self):
        self.d = GnomeNative(self.build)
        self.addCleanup(self.d.end)
        self.d.set_fleet(QUIET)
        portal = self.d.start_portal()
        self.d.start()
        self.d.await_launched()
        self.d.run_second()
        for scheme, is_as_wished in ((0, lambda ground: ground > 180), (1, lambda ground: ground < 90)):
            self.d.set_wish(portal, "color-scheme", scheme)
            wait_until("its ground is as the desktop wishes",
                       lambda is_as_wished=is_as_wished: is_as_wished(self.title_bar()[0]))
            wait_until("title and buttons are seen on it", lambda: self.title_bar()[1] > 100)
        left, top, width, _ = self.d.framed_window()
        def is_closed():
            self.d.key("Escape")  # the welcome, and what comes after it
            self.d.click(left + width - 18, top + 15)
            return not self.d.framed_window()
        wait_until("it is closed", is_closed)
        self.assertIsNone(self.d.supervisor.poll())

    # -- coming to the front --------------------------------------------------------------------

    def entry(self, by_words):
        """The desktop entry as it is installed, or as one that knows no bus."""
        installed = pathlib.Path(self.d.environment["XDG_DATA_HOME"]) / f"applications/{NAME}.desktop"
        if not by_words:
            return installed
        other = self.d.home / "words.desktop"
        other.write_text(installed.read_text().replace("DBusActivatable=true\n", ""))
        return other

    def cover(self, by_words=False):
        """Another program's window over ours, which starts us at a press."""
        launcher = self.d.spawn("/usr/bin/python3", LAUNCHER, self.entry(by_words))
        def is_in_front():
            window = self.d.shown("^Launcher$")
            if window and not window["focused"]:
                self.d.bring_forward("Launcher")
            return window and window["focused"]
        wait_until("the launcher in front", is_in_front)
        self.assertIsNone(self.d.window_in_front())
        return launcher

    def comes_forward(self, kind):
        """At a start from another program's window, which covers ours: over the bus, and as a process."""
        self.with_strip(kind)
        self.d.run_second()
        wait_until("the window in front", self.d.window_in_front)
        for by_words in (False, True):
            with self.subTest(by_words=by_words):
                launcher = self.cover(by_words)
                self.d.click(WIDTH // 2, HEIGHT // 2)
                wait_until("the window in front", self.d.window_in_front)
                launcher.kill()
                launcher.wait()
                wait_until("no launcher", lambda: not self.d.shown("^Launcher$"))

    def is_found_by_the_shell(self, kind):
        """Its own search starts us: first for a window that isn't there, then for one that is covered."""
        self.with_strip(kind)
        for is_there in (False, True):
            if is_there:
                self.cover()
            self.d.key("super")
            self.d.input("type", "--delay", "40", "varnhold")
            def window_comes():
                self.d.key("Return")
                return self.d.window_in_front()
            wait_until("the window in front", window_comes)

    def test_gnome_start_brings_the_covered_window_forward(self):
        self.comes_forward(Gnome)

    def test_gnome_on_wayland_start_brings_the_covered_window_forward(self):
        self.comes_forward(GnomeWayland)

    def test_gnome_native_start_brings_the_covered_window_forward(self):
        self.comes_forward(GnomeNative)

    def test_gnome_search_brings_the_window_forward(self):
        self.is_found_by_the_shell(Gnome)

    def test_gnome_on_wayland_search_brings_the_window_forward(self):
        self.is_found_by_the_shell(GnomeWayland)

    def test_gnome_native_search_brings_the_window_forward(self):
        self.is_found_by_the_shell(GnomeNative)

    # -- the end --------------------------------------------------------------------------------

    def shell_ends(self, kind):
        """Under Wayland it is the display; both as it is asked to and as it dies."""
        for end in ("terminate", "kill"):
            with self.subTest(end=end):
                self.with_strip(kind)
                getattr(self.d.shell, end)()
                self.d.supervisor.wait(60)
                wait_until("the fleet is down", lambda: len(self.d.calls("bootout")) == len(QUIET))
                self.d.end()
                self.d.reset()

    def test_gnome_session_manager_waits_for_the_fleet(self):
        self.d = Gnome(self.build)
        self.addCleanup(self.d.end)
        sessions = pathlib.Path(self.d.environment["XDG_DATA_HOME"]) / "gnome-session/sessions"
        sessions.mkdir(parents=True)
        (sessions / "small.session").write_text("[GNOME Session]\nName=Small\nRequiredComponents=\n")
        self.d.set_fleet(QUIET)
        manager = self.d.spawn("/usr/libexec/gnome-session-binary", "--builtin", "--session=small",
                               "--disable-acceleration-check", f"--autostart={sessions}")
        wait_until("the session manager", lambda: SESSIONS in self.d.bus_names())
        self.d.start()
        self.d.await_launched()
        wait_until("it is known there", self.is_in_the_session)
        stubborn = self.d.home / "stubborn"
        stubborn.touch()
        self.d.tool("gnome-session-quit", "--logout", "--no-prompt")
        wait_until("the fleet goes down", lambda: self.d.calls("bootout"))
        self.assertIsNone(manager.poll())
        stubborn.unlink()
        self.assertEqual(self.d.supervisor.wait(60), 0)
        self.assertEqual(len(self.d.calls("bootout")), len(QUIET))
        manager.wait(60)

    def is_in_the_session(self):
        guests = self.d.ask("call", SESSIONS, "/org/gnome/SessionManager", SESSIONS, "GetClients")
        return any(self.d.ask("call", SESSIONS, guest, f"{SESSIONS}.Client", "GetAppId") == [NAME]
                   for guest in (guests or [[]])[0])

    def test_gnome_on_wayland_session_ends(self):
        self.shell_ends(GnomeWayland)

    def test_gnome_native_session_ends(self):
        self.shell_ends(GnomeNative)

    def test_gnome_with_icons_native_session_ends(self):
        desktop = self.launch(GnomeNativeWithIcons)
        desktop.icon()
        desktop.shell.terminate()
        wait_until("the fleet is down", lambda: len(desktop.calls("bootout")) == len(QUIET))

    def test_gnome_with_icons_on_wayland_session_ends(self):
        desktop = self.launch(GnomeWaylandWithIcons)
        desktop.icon()
        desktop.shell.terminate()
        wait_until("the fleet is down", lambda: len(desktop.calls("bootout")) == len(QUIET))


if __name__ == "__main__":
    if os.getpid() > 1000 or os.environ.get("XDG_RUNTIME_DIR") != "/tmp/runtime":
        sys.exit("Only runs inside tests/system/in-sandbox: it starts and ends the supervisor.")
    PanelSteps.build = sys.argv.pop(1)
    unittest.main()
