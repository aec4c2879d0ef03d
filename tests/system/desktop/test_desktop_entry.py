"""What the desktop entry promises: its actions, and the start by the bus.

Each test runs in a sandbox and a process of its own: test_desktop_entry.py BUILD_FOLDER TEST_NAME
"""

import configparser
import os
import pathlib
import shlex
import sys
import unittest

from desktop import Desktop, NAME, SOURCE, wait_until

ENTRY = SOURCE / "packaging/com.ostrelleai.Varnhold.desktop"
FLEET = {"planner": "running", "builder": "running"}


class DesktopEntryTest(unittest.TestCase):
    def setUp(self):
        home = pathlib.Path(os.environ["HOME"])
        services = home / ".local/share/dbus-1/services"  # read by the bus as it starts
        services.mkdir(parents=True)
        os.environ["XDG_DATA_HOME"] = str(home / ".local/share")  # it knows only root's own home
        (services / f"{NAME}.service").write_text(
            f"[D-BUS Service]\nName={NAME}\nExec={home}/.local/bin/varnhold\n")
        self.d = Desktop(BUILD, bus=True)
        self.addCleanup(self.d.end)
        self.d.set_fleet(FLEET)
        self.entry = configparser.ConfigParser(interpolation=None)
        self.entry.optionxform = str
        self.entry.read(ENTRY, encoding="utf-8")

    def start(self):
        self.d.start()
        self.d.strip()
        self.d.await_launched()

    def perform(self, action):
        command = shlex.split(self.entry[f"Desktop Action {action}"]["Exec"])
        done = self.d.tool(*command)
        self.assertEqual(done.returncode, 0, done.stderr)

    def call(self, method, *words):
        done = self.d.tool("busctl", "--user", "call", NAME, "/com/ostrelleai/Varnhold",
                           "org.freedesktop.Application", method, *words)
        self.assertEqual(done.returncode, 0, done.stderr)

    def window(self):
        return self.d.windows("^Varnhold$")

    def test_the_entry_lists_the_actions_that_it_describes(self):
        listed = self.entry["Desktop Entry"]["Actions"].strip(";").split(";")
        described = [name.removeprefix("Desktop Action ") for name in self.entry.sections()
                     if name.startswith("Desktop Action ")]
        self.assertEqual(listed, described)

    def test_preferences_opens_the_settings_window(self):
        self.start()
        self.perform("preferences")
        wait_until("the settings window", self.window)

    def test_restart_ends_every_agent_and_starts_it_again(self):
        self.start()
        before = len(self.d.calls("bootstrap"))
        self.perform("restart-all-agents")
        wait_until("the fleet's return", lambda: len(self.d.calls("bootstrap")) >= before + len(FLEET))
        self.assertEqual(len(self.d.calls("bootout")), len(FLEET))

    def test_quit_takes_the_fleet_down(self):
        self.start()
        self.perform("quit")
        self.assertEqual(self.d.supervisor.wait(timeout=60), 0)
        self.assertEqual(len(self.d.calls("bootout")), len(FLEET))

    def test_an_unknown_action_is_left_alone(self):
        self.start()
        before = self.d.calls("")
        self.call("ActivateAction", "sava{sv}", "dance", "0", "0")
        self.call("Activate", "a{sv}", "0")  # answered after the other
        wait_until("the settings window", self.window)
        for verb in ("bootout", "bootstrap"):
            self.assertEqual(sum(verb in call for call in before), len(self.d.calls(verb)))

    def test_a_start_by_the_bus_shows_no_window_and_a_later_call_does(self):
        self.call("Activate", "a{sv}", "0")
        self.d.strip()
        self.d.await_launched()
        self.assertEqual(self.window(), [])
        self.call("Activate", "a{sv}", "0")
        wait_until("the settings window", self.window)
        pid, = self.d.instances()
        environment = pathlib.Path(f"/proc/{pid}/environ").read_text(encoding="utf-8")
        self.assertIn("DBUS_STARTER_BUS_TYPE=session", environment)


if __name__ == "__main__":
    if os.getpid() > 1000 or os.environ.get("XDG_RUNTIME_DIR") != "/tmp/runtime":
        sys.exit("Only runs inside tests/system/in-sandbox: it starts and ends the supervisor.")
    BUILD = pathlib.Path(sys.argv.pop(1))
    unittest.main()
