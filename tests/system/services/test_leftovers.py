"""What tools and processes that were killed at the worst moment leave behind, made by hand.

Each test runs in a sandbox of its own: test_leftovers.py BUILD_FOLDER TEST_NAME
"""

import os
import pathlib
import shutil
import signal
import subprocess
import time

from harness import (ALREADY_LOADED, SILENT, Said, ServicesCase, main, only, processes, send,
                     wait_until)

S6_ONLY = "systemd has no such folders and processes"


def newest_process():
    """Grows with every process that is started in the sandbox, however short its life."""
    return int(pathlib.Path("/proc/loadavg").read_text().split()[4])


class LeftoversTest(ServicesCase):
    def forget_halfway(self, job):
        """As a tool does that is killed in the midst of a bootout."""
        (self.runtime / "locks" / job.label).touch()
        (self.runtime / "scan" / job.label).unlink()

    def load_halfway(self, job, model):
        """As a tool does that is killed before the last step of a bootstrap."""
        (self.runtime / "locks" / job.label).touch()
        folder = self.runtime / "jobs" / job.label
        folder.mkdir(mode=0o700)
        for file in (self.runtime / "jobs" / model.label).iterdir():
            if file.name in ("run", "finish"):
                text = file.read_text().replace(f"jobs/{model.label}", f"jobs/{job.label}")
                (folder / file.name).write_text(text)
                (folder / file.name).chmod(0o700)
            elif file.name == "wake":
                os.mkfifo(folder / file.name)
            elif file.name in ("timeout-kill", "timeout-finish"):
                shutil.copy(file, folder)
        shutil.copy(job.path, folder / "job.plist")
        (self.runtime / "scan" / job.label).symlink_to(f"../jobs/{job.label}")

    def kill_scanner(self):
        for pid, words in processes().items():
            if words[0].endswith("s6-svscan"):
                send(pid)
                wait_until("the scanner is dead", lambda: pid not in processes())

    @only("s6", S6_ONLY)
    def test_a_job_whose_bootout_was_cut_short_is_loaded_anew_with_one_agent(self):
        job = self.load()
        old = self.row(job)[0]
        self.forget_halfway(job)
        self.assertEqual(self.bootstrap(job), SILENT)
        new = self.await_up(job, other_than=old)
        self.assertEqual(self.agents(), {new})
        self.assertEqual(self.bootout(job), SILENT)
        self.assert_nothing_is_left()

    @only("s6", S6_ONLY)
    def test_a_bootout_that_was_cut_short_is_finished_by_the_next_one(self):
        job = self.load()
        other = self.load("com.example.other")
        self.forget_halfway(job)
        self.assertEqual(self.bootout(other), SILENT)
        wait_until("the agent is gone", lambda: not self.agents())
        self.assertEqual(self.bootout(job).code, 3)
        self.assert_nothing_is_left()

    @only("s6", S6_ONLY)
    def test_a_bootout_that_was_cut_short_is_finished_by_the_next_load(self):
        job = self.load()
        old = self.row(job)[0]
        self.load("com.example.other")
        self.forget_halfway(job)
        third = self.load("com.example.third")
        wait_until("the agent is gone", lambda: old not in self.agents())
        self.assertEqual(set(self.jobs()), {"com.example.other", third.label})

    @only("s6", S6_ONLY)
    def test_a_job_whose_load_was_cut_short_is_not_loaded(self):
        other = self.load("com.example.other")
        job = self.job()
        self.load_halfway(job, other)
        self.assertEqual(set(self.jobs()), {other.label})
        self.assertEqual(self.launchctl("kickstart", "-k", job.target).code, 113)
        self.assertEqual(self.launchctl("stop", job.label).code, 3)
        self.assertEqual(self.bootout(job).code, 3)
        self.assertEqual(self.bootstrap(job), SILENT)
        self.await_up(job)

    @only("s6", S6_ONLY)
    def test_a_job_whose_load_was_cut_short_does_not_come_up_with_the_next_one(self):
        other = self.load("com.example.other")
        job = self.job()
        self.load_halfway(job, other)
        third = self.load("com.example.third")
        self.assertEqual(set(self.jobs()), {other.label, third.label})
        self.assertEqual(job.starts(), [])
        for each in (other, third):
            self.assertEqual(self.bootout(each), SILENT)
        self.assert_nothing_is_left()

    @only("s6", S6_ONLY)
    def test_a_new_scanner_does_not_try_again_and_again_to_look_after_old_jobs(self):
        old = self.load("com.example.old")
        pid = self.row(old)[0]
        self.kill_scanner()
        new = self.load("com.example.new")
        self.assertEqual(self.row(old)[0], pid)
        before = newest_process()
        time.sleep(2.5)  # it would try once a second
        self.assertEqual(newest_process(), before)
        self.assertEqual(self.bootstrap(old), (5, "", ALREADY_LOADED))
        self.launchctl("kickstart", "-k", old.target)
        self.await_up(old, other_than=pid)
        for each in (old, new):
            self.assertEqual(self.bootout(each), SILENT)
        self.assert_nothing_is_left()

    @only("s6", S6_ONLY)
    def test_an_old_job_whose_supervisor_is_killed_too_comes_back_with_the_next_load(self):
        old = self.load("com.example.old")
        pid = self.row(old)[0]
        self.kill_scanner()
        self.load("com.example.new")
        for process, words in processes().items():
            if words[0].endswith("s6-supervise") and words[-1].endswith("com.example.old"):
                send(process)
        wait_until("its agent is gone", lambda: pid not in self.agents())
        self.assertIsNone(self.row(old))
        self.assertEqual(self.bootstrap(old), SILENT)
        self.await_up(old, other_than=pid)

    def test_a_caller_that_ignores_and_blocks_signals_changes_nothing(self):
        job = self.job()
        odd = (signal.SIGCHLD, signal.SIGTERM, signal.SIGALRM, signal.SIGHUP)

        def deafen():
            for number in odd:
                signal.signal(number, signal.SIG_IGN)
            signal.pthread_sigmask(signal.SIG_BLOCK, odd)

        done = subprocess.run(self.command("bootstrap", "gui/" + str(os.getuid()), job.path),
                              preexec_fn=deafen, capture_output=True, check=False)
        self.assertEqual(Said(done.returncode, done.stdout.decode(), done.stderr.decode()), SILENT)
        pid = self.await_up(job)
        self.assertEqual(int(job.starts()[0]["blocked"], 16), 0)
        self.assertEqual(self.launchctl("kickstart", "-k", job.target), SILENT)
        self.await_up(job, other_than=pid)
        self.assertEqual(self.bootout(job), SILENT)
        self.assert_nothing_is_left()

    def test_an_agent_is_asked_to_end_once(self):
        # Several, since two signals that come close together can read as one.
        jobs = [self.job(f"com.example.{number}") for number in range(6)]
        for job in jobs:
            job.ask("note-term")
        self.assertEqual(self.bootstrap(*jobs), SILENT)
        for job in jobs:
            self.await_up(job)
        tools = [self.begin("bootout", job.target) for job in jobs]
        self.assertEqual([tool.wait() for tool in tools], [0] * len(jobs))
        for job in jobs:
            self.assertEqual((job.folder / "terms").read_text(), "asked to end\n")
        self.assert_nothing_is_left()


if __name__ == "__main__":
    main()
