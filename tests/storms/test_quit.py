"""The supervisor asked to quit and killed at any moment, under each service manager.

Each storm runs in a sandbox and a process of its own: test_quit.py BUILD_FOLDER TEST_NAME
"""

import os
import pathlib
import random
import signal
import sys
import time
import unittest

HERE = pathlib.Path(__file__).resolve().parent
sys.path.append(str(HERE.parent / "system/program"))
from session import Session, agents, send, wait_until  # noqa: E402
from storm_measure import measure  # noqa: E402

ROW_RESTART = 4


class QuitTest(unittest.TestCase):
    def setUp(self):
        self.session = Session(BUILD)
        self.addCleanup(self.session.end)

    def assert_fleet_is_down(self):
        wait_until("the fleet is down", lambda: not agents())
        self.assertEqual(self.session.jobs(), {})

    def test_quit_at_any_moment_of_a_restart_leaves_no_agent_and_no_job(self):
        dice = random.Random(31)
        for _ in range(measure(2, 20)):
            self.session.start()
            self.session.await_title("of 6 bots running")
            wait_until("the fleet is up", lambda: len(agents()) >= 5)
            self.session.choose(ROW_RESTART)
            time.sleep(dice.uniform(0, 2))
            send(self.session.supervisor.pid, signal.SIGTERM)
            self.assertEqual(self.session.supervisor.wait(60), 0)
            self.assert_fleet_is_down()

    def test_a_supervisor_that_is_killed_again_and_again_finds_its_fleet_as_it_was(self):
        self.session.start()
        wait_until("the fleet is up", lambda: len(agents()) >= 5)
        calm = [role for role in ("planner", "researcher", "builder")]
        before = {role: self.session.await_up(role) for role in calm}
        for _ in range(measure(3, 30)):
            self.session.supervisor.kill()
            self.session.supervisor.wait()
            self.session.start()
            self.session.await_title("of 6 bots running")
            self.assertEqual({role: self.session.pid_of(role) for role in calm}, before)
        send(self.session.supervisor.pid, signal.SIGTERM)
        self.assertEqual(self.session.supervisor.wait(60), 0)
        self.assert_fleet_is_down()


if __name__ == "__main__":
    if os.getpid() > 1000 or os.environ.get("XDG_RUNTIME_DIR") != "/tmp/runtime":
        sys.exit("Only runs inside tests/system/in-sandbox: it ends processes by their names.")
    BUILD = sys.argv.pop(1)
    unittest.main()
