"""What the doctor learns from the machine itself: displays, trays, disks and processes.

Each test runs in a sandbox of its own: test_surroundings.py BUILD_FOLDER TEST_NAME
"""

import json
import os
import pathlib
import socket
import sqlite3
import struct
import subprocess
import sys
import unittest

sys.path.append(str(pathlib.Path(__file__).resolve().parents[1] / "services"))
from harness import BUILD, main, wait_until  # noqa: E402

import homes  # noqa: E402

DISPLAY = ":98"
BUS = "unix:path=/tmp/runtime/bus"


class SurroundingsTest(unittest.TestCase):
    def setUp(self):
        homes.lay(homes.sample)
        self.environment = dict(os.environ)

    def spawn(self, *command):
        child = subprocess.Popen(command, env=self.environment, stdout=subprocess.DEVNULL,
                                 stderr=subprocess.DEVNULL)
        self.addCleanup(child.wait)
        self.addCleanup(child.kill)
        return child

    def answers(self, *command):
        return subprocess.run(command, env=self.environment, capture_output=True,
                              check=False).returncode == 0

    def check(self, name, *before):
        """One check of the report, by way of another command if one is given."""
        said = subprocess.run([*before, BUILD / "bin/varnhold-doctor", "--json", name], text=True,
                              check=False, capture_output=True, stdin=subprocess.DEVNULL,
                              env=self.environment)
        return json.loads(said.stdout)["checks"][0]

    def system(self):
        check = self.check("system")
        self.found = [finding["id"] for finding in check["findings"]]
        return {fact["name"]: fact["value"] for fact in check["facts"]}

    def start_display(self):
        self.environment["DISPLAY"] = DISPLAY
        self.spawn("Xvfb", DISPLAY, "-screen", "0", "640x480x24", "-nolisten", "tcp", "-noreset")
        wait_until("the display", lambda: self.answers("xdpyinfo"))

    # -- displays and trays -----------------------------------------------------------------------

    def test_a_session_without_display_is_noted(self):
        facts = self.system()
        self.assertEqual((facts["Display"], facts["Status item"]),
                         ("none", "none, for want of a display"))
        self.assertIn("display-missing", self.found)

    def test_a_display_that_nobody_serves_is_told(self):
        self.environment["DISPLAY"] = DISPLAY
        facts = self.system()
        self.assertEqual(facts["Display"], ":98 (doesn't answer)")
        self.assertIn("display-silent", self.found)

    def test_a_display_that_hangs_holds_nobody_up(self):
        self.environment["DISPLAY"] = DISPLAY
        folder = pathlib.Path("/tmp/.X11-unix")
        folder.mkdir()
        with socket.socket(socket.AF_UNIX) as silent:
            silent.bind(str(folder / "X98"))
            silent.listen()
            self.assertEqual(self.system()["Display"], ":98 (doesn't answer)")

    def test_a_tray_that_takes_windows_in_is_seen(self):
        self.start_display()
        self.assertEqual(self.system()["Status item"],
                         "a strip of its own, since there is no tray")
        self.spawn("trayer", "--edge", "bottom")
        wait_until("the tray", lambda: self.system()["Status item"] == "in the tray (XEmbed)")
        self.assertNotIn("display-silent", self.found)

    def test_a_tray_over_the_bus_counts_while_somebody_shows_it(self):
        self.start_display()
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = BUS
        self.spawn("dbus-daemon", "--session", "--nofork", f"--address={BUS}")
        wait_until("the bus", lambda: self.answers("busctl", f"--address={BUS}", "list"))
        self.assertEqual(self.system()["Session bus"], "answers")
        panel = self.spawn(BUILD / "tests/fake_desktop", "panel")
        wait_until("the tray",
                   lambda: self.system()["Status item"] == "in the tray (StatusNotifierItem)")
        panel.kill()
        wait_until("no tray", lambda: self.system()["Status item"].startswith("a strip"))

    # -- disks ------------------------------------------------------------------------------------

    def without(self, *changes):
        """A command before another that then sees the machine with these changes."""
        return ["bwrap", "--dev-bind", "/", "/", *map(str, changes), "--"]

    def test_a_file_that_takes_no_change_is_told(self):
        file = homes.DATA / "bots.json"
        found = self.check("files", *self.without("--ro-bind", file, file))["findings"]
        self.assertEqual([each["place"]["file"] for each in found
                          if each["id"] == "file-not-writable"], [str(file)])

    def test_logs_that_have_grown_large_are_told(self):
        self.assertNotIn("logs-large", self.system() and self.found)
        with open("/tmp/vh-planner.log", "wb") as log:
            log.truncate(1_000_000_001)
        self.assertIn("logs-large", self.system() and self.found)

    def test_a_quota_that_is_nearly_used_up_is_told(self):
        """The system's own answer is replaced, as few systems let a test set up quotas."""
        def with_quota(limit, used):
            answer = struct.pack("<8QI4x", limit, 0, used, 0, 0, 1, 0, 0, 0x3f).hex()
            return self.check("files", "strace", "-f", "-o", "/tmp/trace", "-e",
                              f"inject=quotactl_fd:retval=0:poke_exit=@arg4={answer}")
        roomy = with_quota(1 << 20, 4096)  # in blocks of 1 KiB, and in bytes
        self.assertEqual(roomy["findings"], self.check("files")["findings"])
        self.assertRegex(pathlib.Path("/tmp/trace").read_text(),
                         r"quotactl_fd\(\d+, QCMD\(Q_GETQUOTA, USRQUOTA\), 0, ")
        short = with_quota(100, 100 * 1024 - 512)
        self.assertEqual(short["bytesFree"], 512)
        found = [each for each in short["findings"] if each["id"] == "disk-nearly-full"]
        self.assertEqual([each["subject"] for each in found], ["quota"])
        over = with_quota(100, 200 * 1024)
        self.assertEqual(over["bytesFree"], 0)
        unlimited = with_quota(0, 200 * 1024)
        self.assertGreater(unlimited["bytesFree"], 1 << 20)

    # -- the daemons' surroundings ----------------------------------------------------------------

    def test_a_machine_without_interpreter_is_told(self):
        self.assertNotIn("interpreter-missing", self.system() and self.found)
        found = self.check("system", *self.without("--tmpfs", "/usr/bin"))["findings"]
        self.assertIn("interpreter-missing", [each["id"] for each in found])

    def test_a_tool_that_has_lost_its_daemon_is_told(self):
        self.assertNotIn("orphan-tool", self.system() and self.found)
        subprocess.run(["setsid", "bash", "-c",
                        "(exec -a /opt/homebrew/bin/codex sleep 1000) >/dev/null 2>&1 &"],
                       check=True)
        wait_until("the orphan", lambda: "orphan-tool" in (self.system() and self.found))

    def test_an_event_database_that_is_none_is_told(self):
        homes.write("governor.db", "no database at all, but long enough to be looked at\n" * 20)
        self.assertIn("events-unreadable", self.system() and self.found)

    def test_an_event_database_that_answers_slowly_is_told(self):
        database = homes.DATA / "governor.db"
        with sqlite3.connect(database) as connection:
            connection.execute(
                "CREATE TABLE agent_events (id INTEGER PRIMARY KEY, dept TEXT, model TEXT)")
            connection.executemany("INSERT INTO agent_events (dept, model) VALUES (?, 'm')",
                                   [(f"role-{i}",) for i in range(2000)])
        self.assertNotIn("events-slow", self.system() and self.found)
        found = self.check("system", "strace", "-f", "-o", "/dev/null", "-P", database, "-e",
                           "inject=pread64:delay_enter=300000")["findings"]
        self.assertIn("events-slow", [each["id"] for each in found])


if __name__ == "__main__":
    main()
