"""How agents start, end and come back, seen from the agents' own notes.

Each test runs in a sandbox of its own: test_lifetimes.py BUILD_FOLDER TEST_NAME
"""

import os
import signal
import subprocess

from harness import SILENT, ServicesCase, is_alive, main, now, only, send, wait_until

THROTTLE = 10  # seconds from one start to the next
AT_ONCE = 5    # seconds a busy machine may need for what happens at once
CANNOT_SPAWN = 78


class LifetimesTest(ServicesCase):
    def test_a_killed_agent_comes_back_and_its_row_tells_of_the_signal(self):
        job = self.load()
        pid = self.row(job)[0]
        send(pid)
        self.await_row(job, (None, -9))
        self.assertEqual(self.await_up(job, other_than=pid), self.row(job)[0])
        self.assertEqual(self.row(job)[1], -9)

    def test_an_agent_that_ran_longer_than_the_throttle_comes_back_at_once(self):
        job = self.load()
        pid = self.row(job)[0]
        started = job.starts()[0]["time"]
        wait_until("the agent has run its ten seconds", lambda: now() - started > THROTTLE + 0.5)
        ended = now()
        send(pid)
        self.await_up(job, other_than=pid)
        self.assertLess(job.starts()[1]["time"] - ended, AT_ONCE)

    def test_a_crash_loop_goes_on_for_ever_with_ten_seconds_from_start_to_start(self):
        job = self.load_crashing()
        wait_until("seven starts", lambda: len(job.starts()) == 7, deadline=100)
        times = [start["time"] for start in job.starts()]
        for first, second in zip(times, times[1:]):
            # The agent's own note comes some milliseconds after the start that is counted.
            self.assertGreater(second - first, THROTTLE - 0.5)
            self.assertLess(second - first, THROTTLE + AT_ONCE)
        job.ask_no_more("exit")
        self.await_up(job)

    def assert_crash_loop_is_as_slow_as_ever(self, spoil):
        self.runtime.mkdir(mode=0o700)
        subprocess.run(["mount", "-t", "tmpfs", "-o", "size=256k,mode=0700", "tmpfs",
                        self.runtime], check=True)
        job = self.load_crashing()
        spoil()
        wait_until("three starts", lambda: len(job.starts()) >= 3, deadline=60)
        times = [start["time"] for start in job.starts()]
        for first, second in zip(times, times[1:]):
            self.assertGreater(second - first, THROTTLE - 0.5)

    def test_a_crash_loop_is_as_slow_as_ever_when_the_runtime_folder_is_full(self):
        def fill():
            with open(self.runtime / "filling", "wb", buffering=0) as file:
                try:
                    while True:
                        file.write(bytes(4096))
                except OSError:
                    pass
        self.assert_crash_loop_is_as_slow_as_ever(fill)

    @only("systemd", "s6 keeps files open for writing, so its folder can't become read-only")
    def test_a_crash_loop_is_as_slow_as_ever_when_the_runtime_folder_cannot_be_written_to(self):
        self.assert_crash_loop_is_as_slow_as_ever(lambda: subprocess.run(
            ["mount", "-o", "remount,ro", self.runtime], check=True))

    def test_an_agent_that_ends_well_is_started_again_as_well(self):
        job = self.load_crashing(code=0)
        wait_until("the next start", lambda: len(job.starts()) > 1)
        self.assertEqual(self.bootout(job), SILENT)

    def test_every_way_to_end_is_shown(self):
        number = signal.SIGSEGV
        job = self.job()
        job.ask("signal", str(int(number)))
        self.assertEqual(self.bootstrap(job), SILENT)
        self.await_row(job, (None, -int(number)))
        for code in (1, 78, 125, 200, 255):
            self.load_crashing(f"com.example.exit{code}", code)

    def test_a_job_that_is_not_kept_alive_runs_once(self):
        job = self.load_crashing(code=3, KeepAlive=False)
        started = job.starts()[0]["time"]
        wait_until("the throttle has passed", lambda: now() - started > THROTTLE + 2)
        self.assertEqual(self.row(job), (None, 3))
        self.assertEqual(len(job.starts()), 1)

    def test_a_job_that_is_kept_alive_starts_without_run_at_load(self):
        self.load(RunAtLoad=False)

    def test_a_job_with_neither_waits_to_be_started(self):
        job = self.job(RunAtLoad=False, KeepAlive=False)
        self.assertEqual(self.bootstrap(job), SILENT)
        self.assertEqual(self.row(job), (None, 0))
        self.assertEqual(job.starts(), [])

    # -- agents that can't be started -------------------------------------------------------------

    def test_a_missing_program_reads_78(self):
        for program in ("/nowhere/python3", "/etc/passwd", "/usr", "relative"):
            with self.subTest(program=program):
                job = self.job(ProgramArguments=[program])
                self.assertEqual(self.bootstrap(job), SILENT)
                self.await_row(job, (None, CANNOT_SPAWN))
                self.assertEqual(self.bootout(job), SILENT)

    def test_what_prevented_a_start_stands_in_the_jobs_folder_until_one_succeeds(self):
        job = self.job()
        whole = job.values["ProgramArguments"]
        job.write(ProgramArguments=["/nowhere/python3"])
        self.assertEqual(self.bootstrap(job), SILENT)
        self.await_row(job, (None, CANNOT_SPAWN))
        trouble = self.runtime / "jobs" / job.label / "spawn-trouble"
        self.assertEqual(trouble.read_text(), "/nowhere/python3: No such file or directory\n")
        self.assertEqual(self.bootout(job), SILENT)
        job.write(ProgramArguments=whole)
        self.assertEqual(self.bootstrap(job), SILENT)
        self.await_up(job)
        self.assertFalse(trouble.exists())
        self.assertEqual((trouble.parent / "starts").read_text(), "1")

    def test_a_missing_working_folder_reads_78_and_is_found_once_it_is_there(self):
        job = self.job()
        folder = job.folder / "later"
        job.write(WorkingDirectory=str(folder))
        self.assertEqual(self.bootstrap(job), SILENT)
        self.await_row(job, (None, CANNOT_SPAWN))
        folder.mkdir()
        self.await_up(job)
        self.assertEqual(job.starts()[0]["folder"], str(folder))

    def test_a_folder_that_is_a_file_reads_78(self):
        job = self.job(WorkingDirectory="/etc/passwd")
        self.assertEqual(self.bootstrap(job), SILENT)
        self.await_row(job, (None, CANNOT_SPAWN))

    # -- what an agent finds around it ------------------------------------------------------------

    def test_an_agent_leads_a_session_of_its_own_and_inherits_nothing(self):
        job = self.load()
        start = job.starts()[0]
        self.assertEqual(start["session"], start["pid"])
        self.assertEqual(start["folder"], str(job.folder))
        self.assertEqual(start["descriptors"], {
            "0": "/dev/null", "1": str(job.log), "2": str(job.error_log)})
        self.assertEqual(int(start["blocked"], 16), 0)

    def test_mask_and_folder_do_not_depend_on_who_loaded_the_job(self):
        os.umask(0o077)
        os.chdir("/usr")
        job = self.load(WorkingDirectory="")
        self.assertEqual(job.starts()[0]["umask"], 0o022)
        self.assertEqual(job.starts()[0]["folder"], "/")

    def test_the_tool_holds_nothing_of_its_callers_open(self):
        job = self.job()
        tool = self.begin("bootstrap", "gui/%d" % os.getuid(), job.path)
        out, error = tool.communicate(timeout=60)  # returns when both pipes are closed
        self.assertEqual((tool.returncode, out, error), (0, b"", b""))
        self.await_up(job)

    def test_a_child_in_another_session_outlives_its_agent(self):
        job = self.job()
        job.ask("leave-child")
        self.bootstrap(job)
        pid = self.await_up(job)
        children = [job.starts()[-1]["child"]]
        self.launchctl("kickstart", "-k", job.target)
        self.await_up(job, other_than=pid)
        children.append(job.starts()[-1]["child"])
        self.assertEqual(self.bootout(job), SILENT)
        self.assertTrue(all(is_alive(child) for child in children))
        self.assert_nothing_is_left()

    def test_a_job_whose_agent_left_children_behind_can_be_loaded_again_and_again(self):
        job = self.job()
        job.ask("leave-child")
        for count in range(1, 4):
            self.assertEqual(self.bootstrap(job), SILENT)
            pid = self.await_up(job)
            self.assertEqual(self.jobs(), {job.label: (pid, 0)})
            self.assertEqual(self.bootout(job), SILENT)
            self.assertEqual(self.jobs(), {})
            children = [start["child"] for start in job.starts()]
            self.assertEqual(len(children), count)
            self.assertTrue(all(is_alive(child) for child in children))


if __name__ == "__main__":
    main()
