"""The real strip, tray icon, menu and popover on real displays, driven by pointer and keyboard.

Each test runs in a sandbox and a process of its own: test_desktop.py BUILD_FOLDER TEST_NAME
"""

import fcntl
import os
import pathlib
import signal
import subprocess
import sys
import time
import unittest

from desktop import Desktop, WATCHER, label_of, wait_until

FLEET = {"planner": "running", "builder": "running", "fire_drill": "crashed"}

# Rows of the menu that can be chosen, counted from the top, without alerts.
ROW_PREFERENCES, ROW_START, ROW_RESTART, ROW_FIRST_BOT = 1, 2, 3, 4


class DesktopTest(unittest.TestCase):
    def desktop(self, fleet=None, **pieces):
        self.d = Desktop(BUILD, **pieces)
        self.addCleanup(self.d.end)
        self.d.set_fleet(FLEET if fleet is None else fleet)
        return self.d

    def with_strip(self, **pieces):
        desktop = self.desktop(**pieces)
        desktop.start()
        return desktop, desktop.strip()

    def open_menu(self, window):
        self.d.click_window(window)
        return wait_until("the menu", self.d.menus)

    def assert_runs(self):
        self.assertIsNone(self.d.supervisor.poll())

    # -- the strip ------------------------------------------------------------------------------

    def test_strip_says_what_the_fleet_does(self):
        desktop, _ = self.with_strip()
        desktop.strip("^Varnhold, 2 of 3 bots running, 1 crashed$")
        desktop.set_fleet({"planner": "running"})
        desktop.strip("^Varnhold, 1 of 1 bots running$")

    def test_strip_opens_its_menu_at_a_click_and_closes_it_at_the_next(self):
        for manager in (False, True):
            with self.subTest(manager=manager):
                desktop, strip = self.with_strip(manager=manager)
                menu = self.open_menu(strip)[0]
                left, top, width, height = desktop.geometry(menu)
                self.assertEqual(top + height, desktop.geometry(strip)[1] - 2)
                self.assertEqual(left + width, 1280 - 4)
                desktop.click_window(strip)
                wait_until("the menu is gone", lambda: not desktop.menus())
                # What comes next proves that the second click is over and has opened nothing.
                desktop.notify(("m", False))
                wait_until("the popover", lambda: desktop.windows("^New AI model"))
                self.assertEqual(desktop.menus(), [])
                desktop.end()
                desktop.reset()

    def test_menu_is_chosen_from_by_keyboard_alone(self):
        desktop, strip = self.with_strip()
        desktop.tool("xdotool", "windowfocus", "--sync", strip)
        desktop.key("Return")
        wait_until("the menu", desktop.menus)
        desktop.key(*["Down"] * ROW_FIRST_BOT, "Return")
        wait_until("the bot is unloaded",
                   lambda: desktop.calls(f"bootout gui/{os.getuid()}/{label_of('planner')}"))
        self.assertEqual(desktop.menus(), [])

    def test_menu_stays_open_and_usable_through_a_poll(self):
        desktop, strip = self.with_strip()
        menu = self.open_menu(strip)
        (desktop.support / "reauth_alerts.json").write_text('{"gemini": {"since": "2026-03-04"}}')
        desktop.set_fleet({"planner": "running", "builder": "stopped"})
        desktop.strip("^Varnhold, 1 of 2 bots running$")
        self.assertEqual(desktop.menus(), menu)
        before = len(desktop.calls("kickstart")) + len(desktop.calls("bootstrap"))
        desktop.key(*["Down"] * ROW_START, "Return")  # with the alert's row it would be another
        wait_until("the fleet is started", lambda: len(desktop.calls("kickstart")) +
                   len(desktop.calls("bootstrap")) > before)
        wait_until("the menu is gone", lambda: not desktop.menus())
        height = desktop.geometry(self.open_menu(strip)[0])[3]
        self.assertGreater(height, 0)
        desktop.key(*["Down"] * (ROW_PREFERENCES + 1))
        desktop.key("Escape")

    def test_strip_lifts_the_bar_of_a_busy_bot_and_lets_it_sink_again(self):
        desktop, strip = self.with_strip(fleet={"planner": "running", "builder": "running"})
        flat = desktop.coloured(strip)
        self.assertGreater(flat, 0)
        # The first sample only takes stock, and how far the program is can't be seen from here.
        def lifted():
            desktop.burst("planner")
            return desktop.coloured(strip) > flat + 10
        wait_until("the bar is lifted", lifted)
        wait_until("the bar is flat again", lambda: desktop.coloured(strip) == flat)

    def test_strip_can_be_moved_and_stays_where_it_was_put(self):
        for manager in (False, True):
            with self.subTest(manager=manager):
                desktop, strip = self.with_strip(manager=manager)
                x, y, width, height = desktop.geometry(strip)
                desktop.tool("xdotool", "mousemove", x + 20, y + 10, "mousedown", "1")
                for step in range(1, 11):
                    desktop.tool("xdotool", "mousemove", x + 20 - 40 * step, y + 10 - 20 * step)
                desktop.tool("xdotool", "mouseup", "1")
                wait_until("the strip has moved", lambda: desktop.geometry(strip)[0] < x - 300)
                self.assertEqual(desktop.menus(), [])
                right = sum(desktop.geometry(strip)[0::2])
                desktop.set_fleet({f"bot{i}": "running" for i in range(12)})
                desktop.strip("12 of 12")
                wait_until("the strip has grown at its left",
                           lambda: desktop.geometry(strip)[2] > width and
                           sum(desktop.geometry(strip)[0::2]) == right)
                top = desktop.geometry(strip)[1]
                desktop.supervisor.terminate()
                desktop.supervisor.wait(60)
                desktop.start()
                strip = desktop.strip("12 of 12")
                wait_until("it is found where it was put",
                           lambda strip=strip, right=right, top=top:
                           (sum(desktop.geometry(strip)[0::2]), desktop.geometry(strip)[1]) ==
                           (right, top))
                desktop.end()
                desktop.reset()

    def test_strip_is_above_others_on_every_workspace_and_in_no_task_bar(self):
        desktop, strip = self.with_strip(manager=True)
        wait_until("the window manager knows", lambda: all(
            word in desktop.tool("xprop", "-id", strip, "_NET_WM_STATE").stdout
            for word in ("ABOVE", "SKIP_TASKBAR", "SKIP_PAGER")))
        self.assertIn("4294967295", desktop.tool("xprop", "-id", strip, "_NET_WM_DESKTOP").stdout)

    def test_strip_comes_back_when_the_screen_shrinks_under_it(self):
        desktop, strip = self.with_strip()
        self.assertGreater(desktop.geometry(strip)[0], 1000)
        desktop.set_screen(800, 600)
        wait_until("the strip is on the screen", lambda: sum(desktop.geometry(strip)[0::2]) == 792)

    def test_strip_follows_the_desktops_wish_for_dark(self):
        desktop = self.desktop(bus=True)
        portal = desktop.start_portal()
        desktop.start()
        strip = desktop.strip()
        wait_until("the strip is light", lambda: desktop.pixels(strip) and
                   not desktop.is_dark(strip))
        desktop.set_wish(portal, "color-scheme", 1)
        wait_until("the strip is dark", lambda: desktop.is_dark(strip))
        desktop.set_wish(portal, "color-scheme", 0)
        wait_until("the strip is light again", lambda: not desktop.is_dark(strip))

    # -- notices --------------------------------------------------------------------------------

    def popover(self):
        return wait_until("the popover", lambda: self.d.windows("^New AI model"))[0]

    def await_no_popover(self):
        wait_until("the popover is gone", lambda: not self.d.windows("^New AI model"))

    def test_popover_closes_at_a_click_elsewhere_which_is_not_lost(self):
        desktop, strip = self.with_strip()
        desktop.notify(("Opus was installed.", True))
        self.popover()
        self.open_menu(strip)  # one click for both
        self.await_no_popover()
        self.assertEqual(len(desktop.menus()), 1)

    def test_popover_stays_at_a_click_on_itself(self):
        desktop, strip = self.with_strip()
        desktop.notify(("Opus was installed.", False))
        popover = self.popover()
        desktop.click_window(popover)
        desktop.set_fleet({"planner": "running"})
        desktop.burst("planner")
        self.assertEqual(self.popover(), popover)
        desktop.click(100, 700)
        self.await_no_popover()
        self.assertEqual(desktop.strip(), strip)

    def test_popover_closes_on_escape_under_the_pointer(self):
        desktop, _ = self.with_strip()
        desktop.notify(("Opus was installed.", False))
        x, y, _, _ = desktop.geometry(self.popover())
        desktop.tool("xdotool", "mousemove", x + 20, y + 20)
        desktop.key("Escape")
        self.await_no_popover()

    def test_popover_stands_beside_the_strip_and_is_replaced_by_a_newer_one(self):
        desktop, strip = self.with_strip()
        desktop.notify(("Opus was installed.", False))
        first = self.popover()
        self.assertEqual(desktop.geometry(first)[2:], (320, 110))
        self.assertLess(desktop.geometry(first)[1] + 110, desktop.geometry(strip)[1])
        desktop.notify(("Qwen was installed.", False), ("Mistral was installed.", True))
        second = wait_until("the next popover", lambda: self.d.windows("^New AI models installed"))
        self.assertEqual(desktop.geometry(second[0])[2:], (320, 156))
        wait_until("the first one is gone", lambda: self.d.windows("^New AI model") == second)

    def test_popover_leaves_the_keyboard_to_whoever_has_it(self):
        desktop, strip = self.with_strip(manager=True)
        desktop.tool(desktop.prefix / "bin/varnhold")  # the settings window, to type into
        window = wait_until("the window", lambda: desktop.windows("^Varnhold$"))[0]
        wait_until("the window has the keyboard", lambda: desktop.focused() == window)
        desktop.notify(("Opus was installed.", False))
        self.popover()
        self.assertEqual(desktop.focused(), window)
        self.assertEqual(desktop.strip(), strip)

    # -- trays ----------------------------------------------------------------------------------

    def tray_icon(self):
        """The icon's window inside the tray."""
        return wait_until("the icon in the tray", lambda: [
            window for window in self.d.our_windows()
            if self.d.geometry(window)[2:] == (22, 22)])[0]

    def await_no_strip(self):
        wait_until("the strip is gone", lambda: not self.d.windows("^Varnhold, "))

    def test_tray_that_is_there_from_the_start_gets_the_icon_and_no_strip_appears(self):
        for manager in (False, True):
            with self.subTest(manager=manager):
                desktop = self.desktop(manager=manager)
                desktop.start_tray()
                desktop.start()
                icon = self.tray_icon()
                self.assertEqual(desktop.windows("^Varnhold, "), [])
                wait_until("the bars", lambda: desktop.coloured(icon) > 5)
                desktop.end()
                desktop.reset()

    def test_tray_that_appears_takes_the_item_and_gives_it_back_when_it_goes(self):
        desktop, _ = self.with_strip()
        for _ in range(2):
            tray = desktop.start_tray()
            self.await_no_strip()
            self.tray_icon()
            tray.kill()
            tray.wait()
            desktop.strip("^Varnhold, 2 of 3")
        self.assert_runs()
        self.assertEqual(desktop.calls("bootout"), [])

    def test_tray_icon_drops_the_menu_at_either_button_and_anchors_the_popover(self):
        desktop = self.desktop()
        desktop.start_tray()
        desktop.start()
        icon = self.tray_icon()
        for button in (1, 3):
            desktop.click_window(icon, button)
            menu = wait_until("the menu", desktop.menus)[0]
            x, y, width, height = desktop.geometry(menu)
            self.assertLessEqual(y + height, desktop.geometry(icon)[1])
            desktop.key("Escape")
            wait_until("the menu is gone", lambda: not desktop.menus())
        desktop.notify(("Opus was installed.", False))
        x, y, width, height = desktop.geometry(self.popover())
        self.assertLessEqual(y + height, desktop.geometry(icon)[1])
        self.assertGreater(x + width, 1200)

    def test_tray_that_goes_under_an_open_menu_leaves_the_menu_usable(self):
        desktop = self.desktop()
        tray = desktop.start_tray()
        desktop.start()
        self.open_menu(self.tray_icon())
        tray.kill()
        tray.wait()
        desktop.key(*["Down"] * ROW_FIRST_BOT, "Return")
        wait_until("the bot is unloaded", lambda: desktop.calls("bootout"))
        desktop.strip()
        self.assert_runs()

    # -- trays over the bus ---------------------------------------------------------------------

    def with_panel(self, **more):
        desktop = self.desktop(bus=True, **more)
        panel = desktop.start_panel()
        desktop.start()
        wait_until("the poll", lambda: desktop.notifier_property("ToolTip"))
        return desktop, panel

    def test_notifier_has_the_text_as_its_tooltip_and_an_icon_of_every_size(self):
        desktop, _ = self.with_panel()
        self.assertEqual(desktop.notifier_property("ToolTip")[2],
                         "2/3 🔴1\nVarnhold, 2 of 3 bots running, 1 crashed")
        sizes = [(width, height) for width, height, _ in desktop.notifier_property("IconPixmap")]
        self.assertEqual(sizes, [(side, side) for side in (16, 22, 24, 32, 48)])
        self.assertEqual(desktop.windows("^Varnhold, "), [])
        said = {name: desktop.notifier_property(name) for name in (
            "Status", "ItemIsMenu", "XAyatanaLabel", "IconAccessibleDesc", "Category", "Id")}
        self.assertEqual(said, {
            "Status": "NeedsAttention", "ItemIsMenu": True, "XAyatanaLabel": "2/3 🔴1",
            "IconAccessibleDesc": "Varnhold, 2 of 3 bots running, 1 crashed",
            "Category": "ApplicationStatus", "Id": "varnhold"})
        desktop.set_fleet({"planner": "running"})
        wait_until("nothing needs attention",
                   lambda: desktop.notifier_property("Status") == "Active")

    def test_notifier_exports_every_row_as_typed(self):
        desktop, _ = self.with_panel(fleet={"a_b": "running", "x&y&z": "stopped"})
        wait_until("the rows", lambda: desktop.exported_labels() == [
            "⚙️ Preferences...", "-", "Start All Agents", "🔄 Restart All Agents", "-",
            "── Bots ──", "🤖 A__b (Idle)", "🤖 X&y&z (Idle)", "-", "Quit"])
        for _, row in desktop.exported_rows():
            self.assertNotIn("shortcut", row)
            self.assertEqual("icon-data" in row, row.get("label", "")[:1] in ("🤖", "S"))

    def test_notifier_keeps_its_rows_while_the_panel_shows_them(self):
        desktop, _ = self.with_panel()
        before = desktop.exported_rows()
        desktop.menu_call("AboutToShow", "i", "0")
        desktop.set_fleet({"planner": "running"})
        wait_until("the poll", lambda: "1/1" in desktop.notifier_property("ToolTip")[2])
        self.assertEqual(desktop.exported_rows(), before)
        chosen = next(number for number, row in before if "Preferences" in row.get("label", ""))
        desktop.menu_call("EventGroup", "a(isvu)", "2", "0", "closed", "s", "", "0",
                          str(chosen), "clicked", "s", "", "0")  # in the order of some panels
        wait_until("the window", lambda: desktop.windows("^Varnhold$"))
        wait_until("the new rows", lambda: len(desktop.exported_rows()) < len(before))

    def test_notifier_that_is_struck_off_the_list_announces_itself_again(self):
        desktop, _ = self.with_panel()
        item = desktop.notifier()
        desktop.ask("call", WATCHER, "/StatusNotifierWatcher", WATCHER, "Forget")
        self.assertEqual(desktop.notifier(), item)  # which waits until there is one

    def test_notifier_row_that_is_chosen_acts_on_its_bot(self):
        desktop, _ = self.with_panel()
        wait_until("the rows", lambda: len(desktop.exported_rows()) > 8)
        desktop.click_exported("🤖 Builder (Idle)")
        wait_until("the bot is unloaded",
                   lambda: desktop.calls(f"bootout gui/{os.getuid()}/{label_of('builder')}"))

    def test_notifier_key_of_quit_does_not_end_the_program(self):
        desktop, _ = self.with_panel(manager=True)
        wait_until("the rows", lambda: len(desktop.exported_rows()) > 8)
        desktop.click_exported("⚙️ Preferences...")
        window = wait_until("the window", lambda: desktop.windows("^Varnhold$"))[0]
        wait_until("the window has the keyboard", lambda: desktop.focused() == window)
        desktop.key("ctrl+q")
        wait_until("the window is closed", lambda: not desktop.windows("^Varnhold$"))
        self.assert_runs()
        self.assertEqual(desktop.calls("bootout"), [])

    def test_notifier_that_is_pressed_drops_the_menu(self):
        desktop, _ = self.with_panel()
        desktop.ask("call", desktop.notifier(), "/StatusNotifierItem",
                    "org.kde.StatusNotifierItem", "Activate", "ii", "0", "0")
        wait_until("the menu", desktop.menus)

    def test_notifier_whose_panel_goes_becomes_the_strip_and_comes_back_with_it(self):
        desktop, panel = self.with_panel()
        for _ in range(2):
            panel.kill()
            panel.wait()
            desktop.strip("^Varnhold, 2 of 3")
            panel = desktop.start_panel()
            self.await_no_strip()
            wait_until("the rows", lambda: len(desktop.exported_rows()) > 8)
        self.assert_runs()

    def test_notifier_whose_panel_hangs_becomes_the_strip_until_it_answers_again(self):
        desktop, panel = self.with_panel()
        for _ in range(2):
            panel.send_signal(signal.SIGSTOP)
            desktop.strip("^Varnhold, 2 of 3")
            panel.send_signal(signal.SIGCONT)
            self.await_no_strip()
            wait_until("the rows", lambda: len(desktop.exported_rows()) > 8)

    def test_host_that_is_listed_and_dead_is_none(self):
        desktop, _ = self.with_panel()
        host = desktop.start_host()
        wait_until("the icon is shown", lambda: not desktop.windows("^Varnhold, "))
        host.send_signal(signal.SIGSTOP)  # the list still has it, and so has the bus
        desktop.strip("^Varnhold, 2 of 3")
        host.send_signal(signal.SIGCONT)
        self.await_no_strip()
        host.kill()
        host.wait()

    def test_list_that_nobody_shows_is_no_tray(self):
        desktop, _ = self.with_strip(bus=True)
        desktop.start_list()
        for _ in range(2):
            host = desktop.start_host()
            self.await_no_strip()
            host.kill()
            host.wait()
            desktop.strip("^Varnhold, 2 of 3")

    def test_both_kinds_of_tray_come_and_go(self):
        desktop, _ = self.with_strip(bus=True)
        for _ in range(2):
            tray = desktop.start_tray()
            self.await_no_strip()
            self.tray_icon()
            panel = desktop.start_panel()
            wait_until("the rows", lambda: len(desktop.exported_rows()) > 8)
            wait_until("the icon has left the tray", lambda: desktop.our_windows() == [])
            panel.kill()
            panel.wait()
            self.tray_icon()
            tray.kill()
            tray.wait()
            desktop.strip("^Varnhold, 2 of 3")
        self.assert_runs()

    def test_tray_that_is_replaced_gets_the_icon_anew(self):
        desktop = self.desktop()
        tray = desktop.start_tray()
        desktop.start()
        self.tray_icon()
        tray.kill()
        tray.wait()
        desktop.spawn("trayer", "--edge", "top", "--align", "left", "--widthtype", "request")
        wait_until("the icon is in the upper left", lambda: not desktop.windows("^Varnhold, ") and any(
            x < 200 and y < 60 and width < 60 for x, y, width, _ in
            map(desktop.geometry, desktop.our_windows())))

    # -- one instance, and the end --------------------------------------------------------------

    def second_start(self, desktop, **environment):
        desktop.await_launched()
        self.start_again(desktop, **environment)

    def start_again(self, desktop, **environment):
        before = desktop.calls("")
        second = desktop.run_second(**environment)
        self.assertEqual(second.returncode, 0)
        wait_until("the window", lambda: desktop.windows("^Varnhold$"))
        # A child of the first bears its name until it has become another program.
        wait_until("there is one instance", lambda: len(desktop.instances()) == 1)
        # Polls and the window's look after each agent go on; nothing is started, stopped or loaded.
        new = {call.split()[0] for call in desktop.calls("")[len(before):]}
        self.assertLessEqual(new, {"list"})

    def test_second_start_shows_the_window_of_the_first_through_the_socket(self):
        desktop, _ = self.with_strip()
        self.second_start(desktop)

    def test_second_start_shows_the_window_of_the_first_over_the_bus(self):
        desktop, _ = self.with_strip(bus=True)
        self.assertIn("com.ostrelleai.Varnhold", desktop.bus_names())
        # A runtime folder of its own: only the bus is common to both.
        self.second_start(desktop, XDG_RUNTIME_DIR="/tmp/other")

    def test_right_to_come_to_the_front_is_left_to_no_child(self):
        desktop = self.desktop(bus=True)
        desktop.start(XDG_ACTIVATION_TOKEN="of-the-first")
        desktop.strip()
        self.second_start(desktop, XDG_ACTIVATION_TOKEN="of-the-second")
        polls = len(desktop.calls("list"))
        wait_until("a poll", lambda: len(desktop.calls("list")) > polls)
        self.assertFalse((desktop.home / "inherited").exists())

    def test_second_start_brings_a_covered_window_forward_as_of_its_own_moment(self):
        desktop, _ = self.with_strip(manager=True, bus=True)
        self.second_start(desktop)
        window = desktop.windows("^Varnhold$")[0]
        wait_until("the window has the keyboard", lambda: desktop.focused() == window)
        desktop.spawn("xev", "-geometry", "1200x700+10+30")
        cover = wait_until("another program's window", lambda: desktop.windows("Event Tester"))[0]
        wait_until("it has the keyboard", lambda: desktop.focused() == cover)
        moment = time.monotonic_ns() // 1_000_000 & 0xffffffff  # on the X server's clock
        desktop.run_second(DESKTOP_STARTUP_ID=f"shell-1-here-varnhold-0_TIME{moment}")
        wait_until("the window is in front", lambda: desktop.focused() == window)
        said = desktop.tool("xprop", "-id", window, "_NET_WM_USER_TIME").stdout
        self.assertGreaterEqual(int(said.split()[-1]), moment)

    def test_second_start_hands_on_what_tells_no_time(self):
        """Only the window manager knows what such an id stands for: that of a compositor beside it."""
        desktop, _ = self.with_strip(manager=True, bus=True)
        self.second_start(desktop)
        window = desktop.windows("^Varnhold$")[0]
        for variable, words in (("DESKTOP_STARTUP_ID", "of-a-compositor_TIME0"),
                                ("XDG_ACTIVATION_TOKEN", "a-token")):
            desktop.run_second(**{variable: words})
            wait_until("the window bears it", lambda words=words: f'"{words}"' in desktop.tool(
                "xprop", "-id", window, "_NET_STARTUP_ID").stdout)

    def test_every_start_tells_the_launcher_that_it_is_over(self):
        desktop = self.desktop(bus=True)
        heard = desktop.home / "heard"
        with open(heard, "w", encoding="utf-8") as file:
            listener = subprocess.Popen(["stdbuf", "-oL", "xev", "-root", "-event", "property"],
                                        env=desktop.environment, stdout=file)
        self.addCleanup(listener.wait)
        self.addCleanup(listener.kill)
        def ends():
            return heard.read_text().count("_NET_STARTUP_INFO_BEGIN")
        def is_heard():
            desktop.tool("xsetroot", "-name", "ready")
            return "WM_NAME" in heard.read_text()
        wait_until("it listens", is_heard)
        desktop.start(DESKTOP_STARTUP_ID="shell-1-here-varnhold-0_TIME5")
        wait_until("the first has told it", lambda: ends() == 1)
        desktop.await_launched()
        desktop.run_second(DESKTOP_STARTUP_ID="shell-1-here-varnhold-1_TIME6")
        wait_until("the second's is over as well", lambda: ends() >= 2)

    def test_second_start_finds_a_first_that_has_no_bus(self):
        desktop = self.desktop(bus=True)
        desktop.start(DBUS_SESSION_BUS_ADDRESS="none:")
        desktop.strip()
        self.second_start(desktop)

    def test_second_start_touches_no_file(self):
        desktop, _ = self.with_strip()
        def stamps_after_a_poll():
            polls = len(desktop.calls("list"))
            wait_until("a poll", lambda: len(desktop.calls("list")) > polls)
            return {path: path.lstat().st_mtime_ns for path in desktop.support.rglob("*")}
        # The first opening of the window has its own reasons to save.
        self.second_start(desktop)
        before = stamps_after_a_poll()
        while (now := stamps_after_a_poll()) != before:
            before = now
        self.start_again(desktop)
        self.assertEqual(stamps_after_a_poll(), before)

    def test_start_after_a_crash_is_stopped_by_nothing_left_behind(self):
        for bus in (False, True):
            with self.subTest(bus=bus):
                desktop, _ = self.with_strip(bus=bus)
                desktop.supervisor.kill()
                desktop.supervisor.wait()
                wait_until("the strip is gone", lambda: not desktop.windows("^Varnhold, "))
                desktop.start()
                desktop.strip()
                self.second_start(desktop)
                desktop.end()
                desktop.reset()

    def test_start_while_the_first_takes_its_fleet_down_becomes_the_next(self):
        for bus in (False, True):
            with self.subTest(bus=bus):
                desktop, _ = self.with_strip(bus=bus)
                desktop.await_launched()
                stubborn = desktop.home / "stubborn"
                stubborn.touch()
                first = desktop.supervisor
                first.send_signal(signal.SIGTERM)
                wait_until("the first goes down", lambda: desktop.calls("bootout"))
                second = desktop.start()
                wait_until("the second has come to the lock",
                           lambda: desktop.has_open(second, "supervisor.lock"))
                stubborn.unlink()
                self.assertEqual(first.wait(60), 0)
                desktop.await_launched()
                self.assert_runs()
                desktop.strip()
                self.second_start(desktop)
                desktop.end()
                desktop.reset()

    def test_start_that_finds_the_name_of_a_dying_first_takes_it(self):
        desktop = self.desktop(bus=True)
        first = desktop.start_dying()
        desktop.start()
        desktop.strip()
        self.assertEqual(first.wait(60), 0)
        self.second_start(desktop, XDG_RUNTIME_DIR="/tmp/other")

    def test_lock_where_others_may_write_keeps_no_start_away(self):
        folder = pathlib.Path(os.environ["XDG_RUNTIME_DIR"]) / "varnhold"
        folder.mkdir()
        folder.chmod(0o777)
        with open(folder / "supervisor.lock", "w", encoding="utf-8") as lock:
            fcntl.flock(lock, fcntl.LOCK_EX)
            self.with_strip()
            self.assertFalse(self.d.has_open(self.d.supervisor, "supervisor.lock"))
            self.assertFalse((folder / "supervisor.socket").exists())

    def assert_fleet_is_taken_down(self, desktop):
        unloaded = [call.split("/")[-1] for call in desktop.calls("bootout")]
        self.assertEqual(unloaded, [label_of(role) for role in FLEET])

    def test_session_manager_that_ends_the_program_is_a_quit(self):
        for number in (signal.SIGTERM, signal.SIGHUP, signal.SIGINT):
            with self.subTest(signal=number):
                desktop, _ = self.with_strip()
                desktop.supervisor.send_signal(number)
                self.assertEqual(desktop.supervisor.wait(60), 0)
                self.assert_fleet_is_taken_down(desktop)
                desktop.end()
                desktop.reset()

    def test_program_that_is_to_outlive_its_terminal_does(self):
        desktop = self.desktop()
        desktop.start("nohup")
        desktop.await_launched()
        desktop.supervisor.send_signal(signal.SIGHUP)
        polls = len(desktop.calls("list"))
        wait_until("two polls", lambda: len(desktop.calls("list")) > polls + 1)
        self.assert_runs()
        self.assertEqual(desktop.calls("bootout"), [])
        desktop.supervisor.send_signal(signal.SIGTERM)
        self.assertEqual(desktop.supervisor.wait(60), 0)
        self.assert_fleet_is_taken_down(desktop)

    def test_display_that_goes_away_is_a_quit(self):
        for bus in (False, True):
            with self.subTest(bus=bus):
                desktop, _ = self.with_strip(bus=bus)
                desktop.screen.kill()
                desktop.supervisor.wait(60)
                self.assert_fleet_is_taken_down(desktop)
                desktop.end()
                desktop.reset()


if __name__ == "__main__":
    if os.getpid() > 1000 or os.environ.get("XDG_RUNTIME_DIR") != "/tmp/runtime":
        sys.exit("Only runs inside tests/system/in-sandbox: it starts and ends the supervisor.")
    BUILD = sys.argv.pop(1)
    unittest.main()
