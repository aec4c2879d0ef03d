"""Quit of the built supervisor in the midst of its work, under each service manager.

Each test runs in a sandbox and a process of its own: test_quit.py BUILD_FOLDER TEST_NAME
"""

import os
import signal
import sys
import unittest

from session import DISPLAY, Session, agents, label_of, send, start_user_manager, wait_until

CRASHING = "fire-drill"
RUNNING = ("planner", "researcher", "builder", "customer-desk", CRASHING)
ROW_RESTART = 4


class QuitTest(unittest.TestCase):
    def setUp(self):
        self.session = Session(BUILD)
        self.addCleanup(self.session.end)
        (self.session.support / "data" / CRASHING / "crash-at-start").unlink()

    def launch(self):
        self.session.start()
        for role in RUNNING:
            self.session.await_up(role)
        self.session.await_title("5 of 6 bots running$")

    def quit_once(self, has_come_so_far):
        wait_until("it has come so far", has_come_so_far)
        send(self.session.supervisor.pid, signal.SIGTERM)
        self.assertEqual(self.session.supervisor.wait(60), 0)
        wait_until("the fleet is down", lambda: not agents())
        self.assertEqual(self.session.jobs(), {})

    def quit_while_restarting(self, has_come_so_far):
        self.launch()
        self.session.choose(ROW_RESTART)
        self.quit_once(has_come_so_far)

    def test_quit_while_a_restart_takes_agents_down_leaves_none(self):
        self.quit_while_restarting(lambda: len(self.session.jobs()) < len(RUNNING))

    def test_quit_while_a_restart_brings_agents_up_leaves_none(self):
        wait = {"down": False}

        def coming_up():
            jobs = self.session.jobs()
            wait["down"] = wait["down"] or not jobs
            return wait["down"] and jobs
        self.quit_while_restarting(coming_up)

    def test_quit_right_after_the_launch_leaves_none(self):
        self.session.start()
        self.quit_once(lambda: label_of("planner") in self.session.jobs())

    @unittest.skipUnless(os.environ.get("SERVICE_MANAGER") == "systemd", "s6 starts no supervisor")
    def test_end_of_the_user_manager_that_runs_it_leaves_none(self):
        """As the login manager ends all that is a user's when the machine is turned off."""
        ended = self.session.home / "ended"
        self.session.tool("systemd-run", "--user", f"--setenv=DISPLAY={DISPLAY}",
                          f"--property=ExecStopPost=sh -c 'echo $EXIT_CODE $EXIT_STATUS >{ended}'",
                          self.session.prefix / "bin/varnhold")
        for role in RUNNING:
            self.session.await_up(role)
        self.session.await_title("5 of 6 bots running$")
        self.session.tool("systemctl", "--user", "exit")
        self.session.user_manager.wait(60)
        self.assertEqual(ended.read_text(), "exited 0\n")
        self.assertEqual(agents(), {})
        self.session.user_manager = start_user_manager()
        self.assertEqual(self.session.jobs(), {})


if __name__ == "__main__":
    if os.getpid() > 1000 or os.environ.get("XDG_RUNTIME_DIR") != "/tmp/runtime":
        sys.exit("Only runs inside tests/system/in-sandbox: it ends processes by their names.")
    BUILD = sys.argv.pop(1)
    unittest.main()
