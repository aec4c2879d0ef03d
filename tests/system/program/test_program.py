"""The built supervisor with real agents: what a user does and sees, from outside.

Each test runs in a sandbox and a process of its own: test_program.py BUILD_FOLDER TEST_NAME
"""

import json
import os
import signal
import sys
import unittest

from session import Session, agents, command_lines, label_of, send, wait_until

STEADY = ("planner", "researcher", "builder", "customer-desk")
PAUSED = "night-watch"
CRASHING = "fire-drill"

# Rows of the status menu that can be chosen, counted from the top: preferences, one alert, start,
# restart, then a row for each bot that isn't paused, then Quit.
ROW_START, ROW_RESTART, ROW_FIRST_BOT, ROW_QUIT = 3, 4, 5, 10


class ProgramTest(unittest.TestCase):
    def setUp(self):
        self.session = Session(BUILD)
        self.addCleanup(self.session.end)

    def launch(self):
        """Starts a fleet in which nobody crashes by itself, and waits until it is up.

        A crash loop and the poll have the same period: a poll that sees the moment between start and crash
        may go on seeing it.
        """
        (self.session.support / "data" / CRASHING / "crash-at-start").unlink()
        self.session.start()
        self.pids = {role: self.session.await_up(role) for role in (*STEADY, CRASHING)}
        self.session.await_title("5 of 6 bots running$")

    def assert_everything_is_down(self):
        self.assertEqual(agents(), {})
        left = [line for line in command_lines().values() if "s6-" in line]
        self.assertEqual(left, [])
        self.assertEqual(self.session.jobs(), {})

    def test_launch_starts_every_agent_that_is_not_paused(self):
        self.session.start()
        for role in STEADY:
            self.session.await_up(role)
        self.session.await_title("[45] of 6 bots running")
        jobs = self.session.jobs()
        self.assertEqual(set(jobs), {label_of(role) for role in (*STEADY, CRASHING)})
        wait_until("the crash", lambda: self.session.jobs()[label_of(CRASHING)][1] == 1)
        self.assertIsNone(self.session.surroundings(PAUSED))

    def test_a_killed_agent_comes_back_and_the_count_follows(self):
        self.launch()
        # Down long enough for a poll to see it: an agent that crashes at once waits for its turn.
        self.session.control("planner", "crash-at-start", "7")
        send(self.pids["planner"])
        self.session.await_title("4 of 6 bots running, 1 crashed")
        (self.session.support / "data/planner/crash-at-start").unlink()
        self.session.await_up("planner", other_than=self.pids["planner"])
        self.session.await_title("5 of 6 bots running$")

    def test_choosing_a_bot_in_the_menu_unloads_it_and_choosing_it_again_loads_it(self):
        self.launch()
        self.session.choose(ROW_FIRST_BOT)
        self.session.await_title("4 of 6 bots running$")
        self.assertNotIn(label_of("planner"), self.session.jobs())
        self.assertNotIn(self.pids["planner"], agents())
        self.session.choose(ROW_FIRST_BOT)
        self.session.await_up("planner", other_than=self.pids["planner"])
        self.session.await_title("5 of 6 bots running$")

    def test_restart_gives_every_agent_a_new_process_with_the_keys_of_that_moment(self):
        self.launch()
        auth = self.session.support / "auth_config.json"
        keys = json.loads(auth.read_text())
        keys["anthropicKey"] = "key with blanks, 'quotes', \"more\", $HOME, %n, ü and\na line"
        auth.write_text(json.dumps(keys))
        self.session.choose(ROW_RESTART)
        for role in self.pids:
            self.session.await_up(role, other_than=self.pids[role])
            found = self.session.surroundings(role)["environment"]
            self.assertEqual(found["ANTHROPIC_API_KEY"], keys["anthropicKey"])
        resets = self.session.support / "data/chain_resets.log"
        self.assertEqual(len(resets.read_text().splitlines()), 1)
        self.session.await_title("5 of 6 bots running$")

    def test_quit_in_the_menu_leaves_no_agent_no_job_and_no_service_manager(self):
        self.launch()
        self.session.control("researcher", "ignore-sigterm")
        self.session.choose(ROW_QUIT)
        self.assertEqual(self.session.supervisor.wait(60), 0)
        wait_until("the fleet is down", lambda: not agents())
        self.assert_everything_is_down()

    def test_the_end_of_the_session_is_a_proper_quit(self):
        self.launch()
        send(self.session.supervisor.pid, signal.SIGTERM)
        self.assertEqual(self.session.supervisor.wait(60), 0)
        self.assert_everything_is_down()

    def test_removal_of_the_strip_ends_the_program_and_takes_the_fleet_down(self):
        self.launch()
        self.session.close_window(self.session.await_title("5 of 6")[0])
        self.assertEqual(self.session.supervisor.wait(60), 0)
        self.assert_everything_is_down()

    def test_a_bots_file_that_breaks_empties_the_display_and_comes_back_when_mended(self):
        self.launch()
        bots = self.session.support / "bots.json"
        good = bots.read_text()
        bots.write_text(good[:len(good) // 2])
        self.session.await_title("0 of 0 bots running")
        self.assertEqual(self.session.pid_of("planner"), self.pids["planner"])
        bots.write_text(good)
        self.session.await_title("5 of 6 bots running$")

    def test_agents_outlive_a_crash_of_the_supervisor_and_are_found_again(self):
        self.launch()
        send(self.session.supervisor.pid)
        self.session.supervisor.wait()
        self.assertEqual({role: self.session.pid_of(role) for role in self.pids}, self.pids)
        self.session.start()
        self.session.await_title("5 of 6 bots running$")
        self.assertEqual({role: self.session.pid_of(role) for role in self.pids}, self.pids)

    def test_a_second_start_shows_the_window_of_the_first_and_starts_nothing(self):
        self.launch()
        before = command_lines()
        second = self.session.tool(self.session.prefix / "bin/varnhold")
        self.assertEqual(second.returncode, 0)
        wait_until("the window", lambda: self.session.windows("^Varnhold$"))
        started = [line for line in command_lines().values() if "bin/varnhold" in line]
        self.assertEqual(len(started), 1)
        self.assertEqual({role: self.session.pid_of(role) for role in self.pids}, self.pids)
        self.assertIn(self.session.supervisor.pid, before)

    def test_a_second_start_is_over_before_it_needs_the_supervisors_program(self):
        self.launch()
        (self.session.prefix / "libexec/varnhold/supervisor").unlink()
        second = self.session.tool(self.session.prefix / "bin/varnhold")
        self.assertEqual((second.returncode, second.stdout, second.stderr), (0, "", ""))
        wait_until("the window", lambda: self.session.windows("^Varnhold$"))

    def test_an_agent_paused_while_it_ran_goes_on_until_quit(self):
        self.launch()
        bots = self.session.bots()
        bots[0]["isPaused"] = True
        (self.session.support / "bots.json").write_text(json.dumps(bots))
        self.session.await_title("5 of 6 bots running$")
        self.assertEqual(self.session.pid_of("planner"), self.pids["planner"])
        send(self.session.supervisor.pid, signal.SIGTERM)
        self.session.supervisor.wait(60)
        self.assert_everything_is_down()


if __name__ == "__main__":
    if os.getpid() > 1000 or os.environ.get("XDG_RUNTIME_DIR") != "/tmp/runtime":
        sys.exit("Only runs inside tests/system/in-sandbox: it ends processes by their names.")
    BUILD = sys.argv.pop(1)
    unittest.main()
