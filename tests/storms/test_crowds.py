"""Many agents at once: killed together, crashing together, and with their managers killed under them.

Each storm runs in a sandbox of its own: test_crowds.py BUILD_FOLDER TEST_NAME
"""

import random
import time

from storm import StormCase, main, only, processes, send, wait_until
from storm_measure import figure, measure

THROTTLE = 10  # seconds from one start to the next
MANAGERS_OF_S6 = ("s6-svscan", "s6-supervise")


class CrowdsTest(StormCase):
    def kill_every(self, *programs):
        for pid, words in processes().items():
            if words[0].rpartition("/")[2] in programs:
                self.kill(pid)

    @staticmethod
    def kill(pid):
        try:
            send(pid)
        except ProcessLookupError:
            pass

    def test_agents_that_are_killed_at_once_all_come_back_and_none_twice(self):
        jobs = self.load_many(measure(20, 200))
        time.sleep(THROTTLE)  # so that nothing but the machine holds up the next start
        before = self.agents()
        killed = time.monotonic()
        for pid in before:
            send(pid)
        wait_until("all are back", lambda: not before & self.agents() and self.are_up(jobs), 180)
        figure(f"{len(jobs)} agents killed at once, all back after", time.monotonic() - killed, "s")
        self.assert_one_agent_each(jobs)
        self.assertEqual({len(job.starts()) for job in jobs}, {2})
        self.unload_all(jobs)

    def test_crash_loops_keep_their_pace_and_hold_up_no_listing(self):
        jobs = [self.job(f"com.example.{number}") for number in range(measure(10, 100))]
        for job in jobs:
            job.ask("exit", "7")
        self.assertEqual(self.bootstrap(*jobs).code, 0)
        began = time.monotonic()
        longest = 0
        while time.monotonic() - began < measure(12, 65):
            asked = time.monotonic()
            self.assertEqual(set(self.jobs()), {job.label for job in jobs})
            longest = max(longest, time.monotonic() - asked)
            time.sleep(0.1)
        took = time.monotonic() - began
        for job in jobs:
            times = [start["time"] for start in job.starts()]
            self.assertGreater(len(times), 1)
            for first, second in zip(times, times[1:]):
                # The agent's own note comes after the start that is counted, later on a busy machine.
                self.assertGreater(second - first, THROTTLE - 2)
        starts = sum(len(job.starts()) for job in jobs)
        figure(f"{len(jobs)} crash loops, starts a second", starts / took, "")
        figure(f"{len(jobs)} crash loops, longest listing", longest, "s")
        self.unload_all(jobs)

    @only("s6", "systemd has one process for all jobs")
    def test_supervisors_and_scanners_that_are_killed_again_and_again_double_nothing(self):
        jobs = self.load_many(measure(10, 50))
        dice = random.Random(7)
        for _ in range(measure(10, 100)):
            pids = [pid for pid, words in processes().items()
                    if words[0].rpartition("/")[2] in MANAGERS_OF_S6]
            for pid in dice.sample(pids, min(len(pids), dice.randint(1, 5))):
                self.kill(pid)
            self.assertLessEqual(self.most_agents_of_one_job(), 1)
            self.assertIn(self.bootstrap(dice.choice(jobs)).code, (0, 5))
        for job in jobs:  # one whose scanner and supervisor were both killed is forgotten
            self.assertIn(self.bootstrap(job).code, (0, 5))
        self.await_all_up(jobs)
        self.unload_all(jobs)

    def test_managers_that_are_killed_with_all_that_is_theirs_leave_a_fleet_that_loads_anew(self):
        jobs = self.load_many(measure(10, 100))
        for _ in range(measure(1, 5)):
            if self.manager == "systemd":
                self.systemd.kill()
                self.systemd.wait()
            else:
                wait_until("none is left", lambda: self.kill_every(*MANAGERS_OF_S6, "sh", "agent-exec")
                           or not any(words[0].rpartition("/")[2] in MANAGERS_OF_S6
                                      for words in processes().values()))
            for pid in self.agents():  # as the end of a session does
                self.kill(pid)
            if self.manager == "systemd":
                self.start_systemd()
            self.assertEqual(self.jobs(), {})
            began = time.monotonic()
            self.assertEqual(self.bootstrap(*jobs).code, 0)
            self.await_all_up(jobs)
            figure(f"{len(jobs)} agents loaded after the manager's end, up after",
                   time.monotonic() - began, "s")
        self.unload_all(jobs)


if __name__ == "__main__":
    main()
