"""The supervisor itself in storms: floods of log lines, and files that are far too large.

Each storm runs in a sandbox and a process of its own: test_program.py BUILD_FOLDER TEST_NAME
"""

import json
import os
import pathlib
import re
import signal
import sys
import threading
import time
import unittest

HERE = pathlib.Path(__file__).resolve().parent
sys.path.append(str(HERE.parent / "system/program"))
from session import Session, agents, send, wait_until  # noqa: E402
from storm_measure import figure, measure  # noqa: E402

LINES_A_SECOND = 100_000
LINE = "12:00:00 turn: answered the message of somebody, as on every day of the week\n"
LARGEST_LOG = 4 << 20
MOST_MEMORY = 400  # megabytes; a fleet of 300 bots with its menu takes half


class ProgramTest(unittest.TestCase):
    def begin(self, bots=None):
        self.session = Session(BUILD, bots)
        self.addCleanup(self.session.end)

    def memory(self, name="VmRSS"):
        status = pathlib.Path(f"/proc/{self.session.supervisor.pid}/status").read_text()
        return int(re.search(rf"{name}:\s+(\d+)", status)[1]) / 1024

    def open_and_close_menu(self):
        """Seconds from the press to the menu, tools of the test included."""
        strip = wait_until("the strip", lambda: self.session.windows("^Varnhold, "))[0]
        before = set(self.session.all_windows())
        self.session.tool("xdotool", "mousemove", "--window", strip, "20", "14")
        pressed = time.monotonic()
        self.session.tool("xdotool", "click", "1")
        wait_until("the menu", lambda: set(self.session.all_windows()) - before)
        took = time.monotonic() - pressed
        self.session.tool("xdotool", "key", "Escape")
        wait_until("no menu", lambda: not set(self.session.all_windows()) - before)
        return took

    def assert_fleet_is_down(self):
        wait_until("the fleet is down", lambda: not agents())
        self.assertEqual(self.session.jobs(), {})

    # -- logs --------------------------------------------------------------------------------------------

    def flood(self, logs, calm):
        """Writes that many lines a second to all logs, in turns, and takes long ones down to nothing."""
        each = LINES_A_SECOND // len(logs) + 1
        files = [open(log, "ab", buffering=0) for log in logs]
        while not calm.is_set():
            began = time.monotonic()
            for file in files:
                file.write(LINE.encode() * each)
                if file.tell() > LARGEST_LOG:
                    file.truncate(0)
            calm.wait(max(0, 1 - (time.monotonic() - began)))
        for file in files:
            file.close()

    def test_the_menu_opens_each_time_under_a_flood_of_log_lines(self):
        count = measure(12, 300)
        self.begin(count)
        self.session.start()
        wait_until("the fleet is up", lambda: self.session.windows(f"{count} of {count} bots running"), 300)
        self.open_and_close_menu()
        at_first = self.memory()
        logs = [f"/tmp/vh-{bot['role']}.log" for bot in self.session.bots()]
        calm = threading.Event()
        flood = threading.Thread(target=self.flood, args=(logs, calm))
        flood.start()
        try:
            times = sorted(self.open_and_close_menu() for _ in range(measure(5, 66)))
        finally:
            calm.set()
            flood.join()
        figure(f"menu of {count} bots under the flood, opened in the middle", times[len(times) // 2], "s")
        figure(f"menu of {count} bots under the flood, opened at worst", times[-1], "s")
        figure(f"memory with {count} bots, menu opened once", at_first, "MB")
        figure(f"memory with {count} bots, after {len(times)} openings under the flood", self.memory(), "MB")
        self.assertLess(self.memory("VmHWM"), MOST_MEMORY)
        send(self.session.supervisor.pid, signal.SIGTERM)
        self.assertEqual(self.session.supervisor.wait(180), 0)
        self.assert_fleet_is_down()

    # -- files -------------------------------------------------------------------------------------------

    def hostile_files(self):
        """What is out of all measure, to the file's name and what makes it."""
        def sparse(path):
            with open(path, "wb") as file:
                file.truncate(500 << 20)
        notices = [{"message": "m", "in_chain": True}] * 100_000
        return {
            "a notice of 5 MB": ("pending_model_notices.json", lambda path: path.write_text(
                json.dumps([{"message": "long " * 1_000_000, "in_chain": True}]))),
            "100,000 notices": ("pending_model_notices.json", lambda path: path.write_text(
                json.dumps(notices))),
            "notices of 500 MB": ("pending_model_notices.json", sparse),
            "alerts without end": ("reauth_alerts.json", lambda path: path.symlink_to("/dev/zero")),
            "alerts of 5 MB": ("reauth_alerts.json", lambda path: path.write_text(
                json.dumps({"x" * 5_000_000: {"provider": "y" * 100}}))),
            "50,000 alerts": ("reauth_alerts.json", lambda path: path.write_text(
                json.dumps({f"provider {number}": {"since": "2026-01-01"} for number in range(50_000)}))),
            "a pipe for alerts": ("reauth_alerts.json", os.mkfifo),
            "groups of 500 MB": ("custom_groups.json", sparse),
            "bots of 500 MB": ("bots.json", sparse),
            "bots without end": ("bots.json", lambda path: path.symlink_to("/dev/zero")),
            "a bot with a name of 5 MB": ("bots.json", self.write_long_name),
        }

    def write_long_name(self, path):
        bots = json.loads(self.bots)
        bots[0]["title"] = "long name " * 500_000
        path.write_text(json.dumps(bots))

    def test_files_out_of_all_measure_neither_end_nor_hold_up_the_program(self):
        self.begin()
        self.bots = (self.session.support / "bots.json").read_text()
        self.session.start()
        wait_until("the fleet is up", lambda: len(agents()) >= 5)
        worst = 0
        for what, (name, make) in self.hostile_files().items():
            with self.subTest(what=what):
                path = self.session.support / name
                before = path.read_bytes() if path.exists() else None
                path.unlink(missing_ok=True)
                make(path)
                time.sleep(9)  # each timer has looked once
                worst = max(worst, self.open_and_close_menu())
                self.assertIsNone(self.session.supervisor.poll())
                self.assertLess(self.memory("VmHWM"), MOST_MEMORY)
                path.unlink(missing_ok=True)
                if before is not None:
                    path.write_bytes(before)
        figure("menu beside files out of all measure, opened at worst", worst, "s")
        figure("memory at most, beside files out of all measure", self.memory("VmHWM"), "MB")
        send(self.session.supervisor.pid, signal.SIGTERM)
        self.assertEqual(self.session.supervisor.wait(60), 0)
        self.assert_fleet_is_down()

    def write_long_names(self):
        """Of whatever has a name in the window."""
        name = "long name " * 500_000
        for file, entry, key in (("bots.json", 0, "title"), ("architect_preferences.json", 0, "name"),
                                 ("custom_groups.json", 0, "name")):
            path = self.session.support / file
            content = json.loads(path.read_text())
            content[entry][key] = name
            path.write_text(json.dumps(content))
        path = self.session.support / "model_library.json"
        library = json.loads(path.read_text())
        library["models"][0]["name"] = name
        path.write_text(json.dumps(library))

    def test_names_out_of_all_measure_hold_up_neither_window_nor_menu(self):
        self.begin()
        self.write_long_names()
        self.session.start()
        wait_until("the fleet is up", lambda: len(agents()) >= 5)
        began = time.monotonic()
        self.session.tool(self.session.prefix / "bin/varnhold")
        wait_until("the window", lambda: self.session.windows("^Varnhold$"))
        self.open_and_close_menu()  # which the window's own work would hold up
        figure("window with names of 5 MB, shown and the menu opened after", time.monotonic() - began, "s")
        figure("memory at most, with names of 5 MB in the window", self.memory("VmHWM"), "MB")
        self.assertLess(self.memory("VmHWM"), MOST_MEMORY)
        send(self.session.supervisor.pid, signal.SIGTERM)
        self.assertEqual(self.session.supervisor.wait(60), 0)
        self.assert_fleet_is_down()

    def test_settings_out_of_all_measure_keep_it_from_starting_no_fleet_but_that(self):
        self.begin()
        for name in ("custom_groups.json", "model_library.json", "chain_bot_assignments.json"):
            path = self.session.support / name
            path.unlink(missing_ok=True)
            path.symlink_to("/dev/zero")
        with open(self.session.support / "reauth_alerts.json", "wb") as file:
            file.truncate(500 << 20)
        self.session.start()
        wait_until("the fleet is up", lambda: len(agents()) >= 5)
        self.session.await_title("of 6 bots running")
        self.session.tool(self.session.prefix / "bin/varnhold")
        wait_until("the window", lambda: self.session.windows("^Varnhold$"))
        self.assertLess(self.memory("VmHWM"), MOST_MEMORY)
        send(self.session.supervisor.pid, signal.SIGTERM)
        self.assertEqual(self.session.supervisor.wait(60), 0)
        self.assert_fleet_is_down()


if __name__ == "__main__":
    if os.getpid() > 1000 or os.environ.get("XDG_RUNTIME_DIR") != "/tmp/runtime":
        sys.exit("Only runs inside tests/system/in-sandbox: it ends processes by their names.")
    BUILD = sys.argv.pop(1)
    unittest.main()
