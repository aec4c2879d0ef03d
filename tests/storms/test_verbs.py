"""Verbs by many at a time, and verbs that are killed on their way.

Each storm runs in a sandbox of its own: test_verbs.py BUILD_FOLDER TEST_NAME
"""

import concurrent.futures
import random
import subprocess
import threading
import time

from history import Call, has_valid_order
from storm import DOMAIN, StormCase, is_alive, kill_after, main, wait_until
from storm_measure import figure, measure

AT_A_TIME = 20
BY_ITSELF = 8  # seconds in which an agent that nobody lists ends


class VerbsTest(StormCase):
    def words(self, verb, job):
        return {
            "bootstrap": ("bootstrap", DOMAIN, job.path),
            "bootout": ("bootout", job.target),
            "kickstart": ("kickstart", "-k", job.target),
            "stop": ("stop", job.label),
            "list": ("list", job.label),
        }[verb]

    def test_an_order_that_could_not_have_been_is_told_from_one_that_could(self):
        load, look = Call(0, 1, "bootstrap", 0), Call(2, 3, "list", 113)
        self.assertTrue(has_valid_order([load, Call(2, 3, "list", 0), Call(4, 5, "bootout", 0)]))
        self.assertFalse(has_valid_order([load, look, Call(4, 5, "bootout", 0)]))
        self.assertTrue(has_valid_order([load, look, Call(2, 5, "bootout", 0)]))
        self.assertFalse(has_valid_order([load, Call(0.5, 2, "bootstrap", 0)]))
        self.assertTrue(has_valid_order([load, Call(0.5, 2, "bootstrap", 5)]))

    def test_verbs_by_many_at_a_time_answer_in_an_order_that_could_have_been(self):
        jobs = [self.job(f"com.example.{number}") for number in range(10)]
        histories = {job.label: [] for job in jobs}
        failures = []

        def call(verb, job):
            begun = time.monotonic()
            done = subprocess.run(self.command(*self.words(verb, job)), stdin=subprocess.DEVNULL,
                                  capture_output=True, text=True, check=False)
            if done.returncode == 69:
                failures.append(done.stderr)
            else:
                histories[job.label].append(Call(begun, time.monotonic(), verb, done.returncode))

        dice = random.Random(11)
        chosen = [(dice.choice(("bootstrap", "bootstrap", "bootout", "kickstart", "stop", "list")),
                   dice.choice(jobs)) for _ in range(measure(200, 2000))]
        began = time.monotonic()
        with concurrent.futures.ThreadPoolExecutor(AT_A_TIME) as pool:
            for done in [pool.submit(call, *each) for each in chosen]:
                done.result()
        figure(f"{len(chosen)} verbs by {AT_A_TIME} at a time, a second",
               len(chosen) / (time.monotonic() - began), "")
        self.assertEqual(failures, [])
        rows = self.jobs()
        for job in jobs:
            call("list", job)
            self.assertTrue(has_valid_order(histories[job.label]), sorted(histories[job.label]))
        loaded = [job for job in jobs if job.label in rows]
        self.await_all_up(loaded)
        self.unload_all(jobs)

    def assert_is_listed_at_every_moment(self, job, times, start_again):
        over = threading.Event()
        answers = []

        def look():
            while not over.is_set():
                answers.append(self.launchctl("list", job.label).code)

        with concurrent.futures.ThreadPoolExecutor(4) as pool:
            lookers = [pool.submit(look) for _ in range(4)]
            for _ in range(times):
                pid = self.await_up(job)
                start_again()
                self.await_up(job, other_than=pid)
            over.set()
            for looker in lookers:
                looker.result()
        figure("looks at a job whose agent came and went", len(answers), "")
        self.assertEqual(set(answers), {0}, f"{len(answers) - answers.count(0)} of {len(answers)}")
        self.unload_all([job])

    def test_a_job_whose_agent_comes_and_goes_is_listed_at_every_moment(self):
        job = self.load()
        self.assert_is_listed_at_every_moment(job, measure(8, 100), lambda: self.launchctl(
            "kickstart", "-k", job.target))

    def test_a_job_that_only_runs_when_asked_to_is_listed_at_every_moment(self):
        job = self.job(KeepAlive=False)
        job.ask("exit-on-term", "0")
        self.assertEqual(self.bootstrap(job).code, 0)

        def end_well_and_start_again():
            self.assertEqual(self.launchctl("stop", job.label).code, 0)
            self.await_row(job, (None, 0))
            self.assertEqual(self.launchctl("kickstart", job.target).code, 0)

        self.assert_is_listed_at_every_moment(job, measure(30, 300), end_well_and_start_again)

    def test_verbs_that_are_killed_on_their_way_leave_no_agent_that_is_not_listed(self):
        jobs = [self.job(f"com.example.{number}") for number in range(5)]
        dice = random.Random(13)
        longest = 0
        for _ in range(measure(30, 300)):
            verb = dice.choice(("bootstrap", "bootout", "kickstart", "stop"))
            kill_after(dice.uniform(0, 0.04), self.begin(*self.words(verb, dice.choice(jobs))))
            killed = time.monotonic()
            wait_until("all that runs is listed", self.is_all_listed, BY_ITSELF)
            longest = max(longest, time.monotonic() - killed)
            self.assertLessEqual(self.most_agents_of_one_job(), 1)
        figure("after a verb was killed, all is listed or gone within", longest, "s")
        for job in jobs:
            self.assertIn(self.bootstrap(job).code, (0, 5))
        self.await_all_up(jobs)
        self.unload_all(jobs)

    def is_all_listed(self):
        running = self.agents()
        listed = {pid for pid, _ in self.jobs().values()}
        return all(pid in listed or not is_alive(pid) for pid in running)


if __name__ == "__main__":
    main()
