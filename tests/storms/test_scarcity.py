"""A runtime folder without room, and callers that may open hardly a file.

Each storm runs in a sandbox of its own: test_scarcity.py BUILD_FOLDER TEST_NAME
"""

import os
import subprocess
import time

from storm import DOMAIN, SILENT, StormCase, main, send, wait_until
from storm_measure import figure, measure

THROTTLE = 10  # seconds from one start to the next


class ScarcityTest(StormCase):
    def make_small(self):
        self.runtime.mkdir(mode=0o700)
        subprocess.run(["mount", "-t", "tmpfs", "-o", "size=8m,mode=0700", "tmpfs", self.runtime],
                       check=True)

    def fill(self):
        with open(self.runtime / "filling", "wb", buffering=0) as file:
            try:
                while True:
                    file.write(bytes(4096))
            except OSError:
                pass

    def test_a_full_folder_costs_no_agent_and_makes_no_answer_wrong(self):
        self.make_small()
        jobs = self.load_many(measure(8, 60))
        more = self.job("com.example.more")
        for _ in range(measure(1, 5)):
            self.fill()
            rows = self.jobs()
            said = self.bootstrap(more)
            self.assertEqual(said.code, 69)
            self.assertIn("No space left on device", said.error)
            for pid, _ in rows.values():
                send(pid)
            killed = time.monotonic()
            before = {pid for pid, _ in rows.values()}
            wait_until("all are back", lambda before=before: not before & self.agents() and
                       self.are_up(jobs), 120)
            figure(f"{len(jobs)} agents killed over a full folder, all back after",
                   time.monotonic() - killed, "s")
            self.assert_one_agent_each(jobs)
            self.assertEqual(self.bootout(jobs[0]), SILENT)
            self.assertNotIn(jobs[0].label, self.jobs())
            (self.runtime / "filling").unlink()
            self.assertEqual(self.bootstrap(jobs[0]), SILENT)
            self.await_all_up(jobs)
        for job in jobs:
            times = [start["time"] for start in job.starts()]
            if job is not jobs[0]:  # which was loaded anew
                for first, second in zip(times, times[1:]):
                    self.assertGreater(second - first, THROTTLE - 2)
        self.unload_all(jobs)

    def test_however_few_files_may_be_open_no_answer_is_wrong(self):
        job = self.load()
        other = self.job("com.example.other")
        right = {("list",): 0, ("list", job.label): 0, ("list", other.label): 113,
                 ("bootstrap", DOMAIN, job.path): 5, ("bootout", other.target): 3,
                 ("kickstart", job.target): 0, ("stop", other.label): 3}
        pid = self.row(job)[0]
        answers = {69: 0, 0: 0}
        for most in range(3, measure(40, 80), measure(4, 1)):
            for words, code in right.items():
                done = subprocess.run(
                    ["prlimit", f"--nofile={most}:{most}", *self.command(*words)],
                    capture_output=True, check=False)
                # Below what the program loader needs, there is no tool to answer at all.
                self.assertIn(done.returncode, {code, 69, 127}, (most, words, done.stderr))
                answers[69 if done.returncode != code else 0] += 1
        self.assertGreater(min(answers.values()), 0)
        self.assertEqual(self.row(job)[0], pid)
        self.assertEqual(self.bootout(job), SILENT)
        self.assert_nothing_is_left()

    def test_jobs_loaded_by_a_caller_with_few_files_run_as_all_do(self):
        job = self.job()
        done = subprocess.run(["prlimit", "--nofile=48:48", *self.command("bootstrap", DOMAIN, job.path)],
                              capture_output=True, check=False)
        self.assertEqual((done.returncode, done.stderr), (0, b""))
        self.await_up(job)
        self.assertEqual(len(self.agents()), 1)
        self.assertEqual(os.listdir(self.runtime / "jobs"), [job.label])
        self.assertEqual(self.bootout(job), SILENT)
        self.assert_nothing_is_left()


if __name__ == "__main__":
    main()
