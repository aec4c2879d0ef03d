"""Two hundred agents under each service manager: the built supervisor brings them up and takes them down.

Each test runs in a sandbox and a process of its own: test_large_fleet.py BUILD_FOLDER TEST_NAME
"""

import os
import signal
import subprocess
import sys
import unittest

from session import Session, agents, send, wait_until

COUNT = 200
LONG = 180  # seconds; two hundred interpreters start on whatever machine this is


class LargeFleetTest(unittest.TestCase):
    def setUp(self):
        self.session = Session(BUILD, COUNT)
        self.addCleanup(self.session.end)

    def running(self):
        return [pid for pid, _ in self.session.jobs().values() if pid]

    def failed_units(self):
        return subprocess.run(["systemctl", "--user", "list-units", "--failed", "--plain", "--no-legend"],
                              check=True, capture_output=True, text=True).stdout

    def test_two_hundred_agents_start_at_launch_and_end_at_quit(self):
        self.session.start()
        wait_until("all agents run", lambda: len(self.running()) == COUNT, LONG)
        wait_until("the strip says so", lambda: self.session.windows(f"{COUNT} of {COUNT} bots running"), LONG)
        self.assertEqual(len(agents()), COUNT)
        if self.session.is_under_systemd:
            self.assertEqual(self.failed_units(), "")
        send(self.session.supervisor.pid, signal.SIGTERM)
        self.assertEqual(self.session.supervisor.wait(LONG), 0)
        wait_until("all agents have ended", lambda: not agents())
        self.assertEqual(self.session.jobs(), {})


if __name__ == "__main__":
    if os.getpid() > 1000 or os.environ.get("XDG_RUNTIME_DIR") != "/tmp/runtime":
        sys.exit("Only runs inside tests/system/in-sandbox: it ends processes by their names.")
    BUILD = sys.argv.pop(1)
    unittest.main()
