"""Too little of what a job needs: files, processes, and a folder that was taken away under it.

Each test runs in a sandbox of its own: test_limits.py BUILD_FOLDER TEST_NAME
"""

import contextlib
import os
import pathlib
import shutil
import signal
import subprocess

from harness import SILENT, ServicesCase, main, only, send

STRANGER = 1000
S6_ONLY = "under systemd the user manager starts processes and keeps its own records"


class LimitsTest(ServicesCase):
    def small_runtime_folder(self, files):
        self.runtime.mkdir(mode=0o700, exist_ok=True)
        subprocess.run(["mount", "-t", "tmpfs", "-o", f"size=8m,mode=0700,nr_inodes={files}",
                        "tmpfs", self.runtime], check=True)
        self.addCleanup(subprocess.run, ["umount", "--lazy", self.runtime], check=True)

    def test_a_job_that_could_not_be_loaded_for_want_of_files_does_not_run(self):
        seen = set()
        for files in (*range(2, 20), 24, 28, 36, 44, 60):
            self.small_runtime_folder(files)
            job = self.job(f"com.example.{files}")
            said = self.bootstrap(job)
            seen.add(said.code)
            if said.code == 0:
                pid = self.await_up(job)
                self.assertEqual(self.agents(), {pid})
                self.assertEqual(self.bootout(job), SILENT)
            else:
                self.assertEqual((said.code, said.out), (69, ""), files)
                self.assertIn("No space left on device", said.error)
                self.assertEqual(self.bootout(job).code, 3)
                self.assertEqual(job.starts(), [])
            self.assert_nothing_is_left()
        self.assertEqual(seen, {0, 69})

    @only("s6", S6_ONLY)
    def test_a_job_for_which_there_is_no_process_left_says_so(self):
        home, runtime = pathlib.Path("/tmp/users-home"), pathlib.Path("/tmp/users-runtime")
        for folder in (home, runtime):
            folder.mkdir(mode=0o700)
            os.chown(folder, STRANGER, STRANGER)
        # The checkout may lie where only its owner gets.
        self.tools = pathlib.Path(shutil.copytree(self.tools, "/tmp/users-tools"))
        job = self.job()
        for path in (pathlib.Path(os.environ["HOME"]), job.path, job.folder):
            path.chmod(0o777)
        for most in (1, 2):  # the tool itself is the first
            done = subprocess.run(
                ["prlimit", f"--nproc={most}:{most}",
                 *self.command("bootstrap", f"gui/{STRANGER}", job.path)],
                user=STRANGER, group=STRANGER, extra_groups=(), capture_output=True, text=True,
                # A build with sanitizers would look for leaks with a process more.
                env={**os.environ, "HOME": str(home), "XDG_RUNTIME_DIR": str(runtime),
                     "ASAN_OPTIONS": "detect_leaks=0"}, check=False)
            self.assertEqual((done.returncode, done.stdout), (69, ""))
            self.assertIn("no process can be started: Resource temporarily unavailable", done.stderr)
            self.assertNotIn("s6", done.stderr)
        self.assertEqual(job.starts(), [])

    @contextlib.contextmanager
    def no_process_left(self):
        """For the user manager: each of its forks fails."""
        forks = "clone,clone3,fork,vfork"
        with subprocess.Popen(["strace", "-f", "-o", "/dev/null", "-e", f"trace={forks}", "-e",
                               f"inject={forks}:error=EAGAIN", "-p", str(self.systemd.pid)],
                              stderr=subprocess.PIPE, text=True) as strace:
            self.assertIn("attached", strace.stderr.readline())
            try:
                yield
            finally:
                strace.terminate()
                strace.communicate()

    @only("systemd", "s6 has no process that starts all others")
    def test_a_job_for_which_the_user_manager_has_no_process_left_says_so(self):
        reason = "no process can be started by the user manager"
        for number, values in enumerate(({}, {"KeepAlive": False},
                                         {"KeepAlive": False, "RunAtLoad": False})):
            job = self.job(f"com.example.{number}", **values)
            with self.no_process_left():
                said = self.bootstrap(job)
                self.assertEqual((said.code, said.out), (69, ""), values)
                self.assertIn(reason, said.error)
                self.assertEqual(self.jobs(), {})
            self.assert_nothing_is_left()
            self.assertEqual(job.starts(), [])
            self.assertEqual(self.bootstrap(job), SILENT)
            with self.no_process_left():
                said = self.launchctl("kickstart", job.target)
                self.assertEqual(said.code, 0 if values.get("RunAtLoad", True) else 69, values)
                self.assertIn(job.label, self.jobs())
            self.assertEqual(self.launchctl("kickstart", job.target), SILENT)
            self.await_up(job)
            self.assertEqual(len(self.agents()), 1)
            self.assertEqual(self.bootout(job), SILENT)
            self.assert_nothing_is_left()

    @only("s6", S6_ONLY)
    def test_jobs_whose_folders_were_cleaned_away_can_be_unloaded(self):
        deaf = self.job("com.example.deaf")
        deaf.ask("ignore-term")
        jobs = [self.load("com.example.one"), self.load("com.example.two"), deaf]
        self.assertEqual(self.bootstrap(deaf), SILENT)
        self.await_up(deaf)
        shutil.rmtree(self.runtime)
        self.assertEqual(self.bootout(jobs[0]), SILENT)
        self.assertEqual(self.agents(), {job.starts()[-1]["pid"] for job in jobs[1:]})
        for job in jobs[1:]:
            self.assertEqual(self.bootout(job), SILENT)
        self.assertEqual(self.bootout(jobs[0]).code, 3)
        self.assert_nothing_is_left()

    @only("systemd", "s6 has only its folder to know its jobs by")
    def test_jobs_whose_folders_were_cleaned_away_are_still_listed_and_can_be_unloaded(self):
        jobs = [self.load("com.example.one"), self.load("com.example.two")]
        rows = self.jobs()
        shutil.rmtree(self.runtime)
        self.assertEqual(self.jobs(), rows)
        self.assertEqual(self.bootstrap(jobs[0]).code, 5)
        for job in jobs:
            self.assertEqual(self.bootout(job), SILENT)
        self.assert_nothing_is_left()

    def test_agents_that_are_stopped_are_listed_and_end_when_unloaded(self):
        jobs = [self.load(f"com.example.{number}") for number in range(3)]
        rows = self.jobs()
        for pid, _ in rows.values():
            send(pid, signal.SIGSTOP)
        self.assertEqual(self.jobs(), rows)
        for job in jobs:
            self.assertEqual(self.bootout(job), SILENT)
        self.assert_nothing_is_left()


if __name__ == "__main__":
    main()
