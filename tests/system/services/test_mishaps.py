"""Killed tools, killed supervisors and remains of former sessions.

Each test runs in a sandbox of its own: test_mishaps.py BUILD_FOLDER TEST_NAME
"""

import os
import pathlib

from harness import (ALREADY_LOADED, DOMAIN, SILENT, ServicesCase, is_alive, kill_after, main, only,
                     processes, send, wait_until)

S6_ONLY = "systemd has no such process"


class MishapsTest(ServicesCase):
    def find(self, program):
        return [pid for pid, words in processes().items()
                if words[0].rpartition("/")[2] == program]

    def kill_all(self, *programs):
        """Ends processes by force until none is left, as the end of a session does."""
        def none_left():
            left = [pid for program in programs for pid in self.find(program)] + [*self.agents()]
            for pid in left:
                try:
                    send(pid)
                except ProcessLookupError:
                    pass
            return not left
        wait_until("everything is dead", none_left)

    # -- s6 ---------------------------------------------------------------------------------------

    @only("s6", S6_ONLY)
    def test_agents_outlive_the_scanner_and_the_next_load_brings_it_back(self):
        job = self.load()
        pid = self.row(job)[0]
        for scanner in self.find("s6-svscan"):
            send(scanner)
        wait_until("the scanner is dead", lambda: not self.find("s6-svscan"))
        self.assertEqual(self.row(job), (pid, 0))
        self.assertEqual(self.bootstrap(job), (5, "", ALREADY_LOADED))
        other = self.load("com.example.other")
        self.assertEqual(len(self.find("s6-svscan")), 1)
        self.assertEqual(self.row(job), (pid, 0))
        for each in (job, other):
            self.assertEqual(self.bootout(each), SILENT)
        self.assert_nothing_is_left()

    @only("s6", S6_ONLY)
    def test_everything_can_be_taken_down_with_the_scanner_dead(self):
        job = self.load()
        for scanner in self.find("s6-svscan"):
            send(scanner)
        wait_until("the scanner is dead", lambda: not self.find("s6-svscan"))
        self.assertEqual(self.bootout(job), SILENT)
        self.assert_nothing_is_left()

    @only("s6", S6_ONLY)
    def test_a_supervisor_that_is_killed_takes_its_agent_along_and_both_come_back_once(self):
        job = self.load()
        pid = self.row(job)[0]
        for supervisor in self.find("s6-supervise"):
            send(supervisor)
        self.await_up(job, other_than=pid)
        self.assertFalse(is_alive(pid))
        self.assertEqual(self.agents(), {self.row(job)[0]})
        self.assertEqual(self.bootout(job), SILENT)
        self.assert_nothing_is_left()

    @only("s6", S6_ONLY)
    def test_of_a_session_that_was_killed_nothing_counts_as_loaded(self):
        job = self.load()
        pid = self.row(job)[0]
        self.kill_all("s6-svscan", "s6-supervise", "agent-exec")
        self.assertEqual(self.jobs(), {})
        self.assertEqual(self.bootout(job).code, 3)
        self.assertEqual(self.bootstrap(job), SILENT)
        self.await_up(job, other_than=pid)
        self.assertEqual(self.bootout(job), SILENT)
        self.assert_nothing_is_left()

    @only("s6", S6_ONLY)
    def test_remains_of_former_jobs_do_not_come_back_with_the_next_one(self):
        old = self.load("com.example.old")
        self.kill_all("s6-svscan", "s6-supervise", "agent-exec")
        before = len(old.starts())
        new = self.load("com.example.new")
        self.assertEqual(set(self.jobs()), {new.label})
        self.assertEqual(len(old.starts()), before)
        self.assertEqual(self.bootout(new), SILENT)
        self.assert_nothing_is_left()

    @only("s6", S6_ONLY)
    def test_a_half_made_job_folder_is_in_nobodys_way(self):
        job = self.job()
        half = self.runtime / "jobs" / job.label
        half.mkdir(parents=True)
        self.runtime.chmod(0o700)
        (self.runtime / "jobs").chmod(0o700)
        (half / "job.plist").write_text("half of")
        (half / "supervise").mkdir()
        self.assertEqual(self.jobs(), {})
        self.assertEqual(self.bootstrap(job), SILENT)
        self.await_up(job)
        self.assertEqual(self.bootout(job), SILENT)
        self.assert_nothing_is_left()

    # -- both -------------------------------------------------------------------------------------

    def test_a_tool_killed_at_any_moment_leaves_a_job_that_is_loaded_or_not(self):
        job = self.job()
        for step in range(12):
            kill_after(step * 0.002, self.begin("bootstrap", DOMAIN, job.path))
            said = self.bootstrap(job)
            self.assertIn(said, (SILENT, (5, "", ALREADY_LOADED)))
            pid = self.await_up(job)
            self.assertEqual(self.agents(), {pid})
            self.assertEqual(self.bootout(job), SILENT)
            self.assertEqual(self.agents(), set())
        self.assert_nothing_is_left()

    def test_a_tool_killed_during_a_bootout_leaves_a_job_that_can_be_booted_out(self):
        job = self.job()
        job.ask("ignore-term")
        self.assertEqual(self.bootstrap(job), SILENT)
        pid = self.await_up(job)
        kill_after(0.1, self.begin("bootout", job.target))  # it waits for five seconds in all
        self.launchctl("bootout", job.target)
        wait_until("the agent is gone", lambda: not is_alive(pid))
        wait_until("the job is gone", lambda: self.row(job) is None)
        job.ask_no_more("ignore-term")
        self.assertEqual(self.bootstrap(job), SILENT)
        self.await_up(job, other_than=pid)
        self.assertEqual(self.bootout(job), SILENT)
        self.assert_nothing_is_left()

    def test_a_runtime_folder_that_others_can_enter_is_refused(self):
        self.runtime.mkdir(mode=0o777)
        self.runtime.chmod(0o777)
        job = self.job()
        said = self.bootstrap(job)
        self.assertEqual(said.code, 5)
        self.assertIn("not a private folder of this user", said.error)
        self.assertEqual(self.agents(), set())

    def test_a_file_in_the_place_of_the_runtime_folder_is_refused(self):
        self.runtime.write_text("")
        job = self.job()
        said = self.bootstrap(job)
        self.assertEqual(said.code, 5)
        self.assertIn("not a private folder of this user", said.error)
        self.assertEqual(self.agents(), set())

    def test_a_stale_definition_without_a_job_is_overwritten(self):
        job = self.load(EnvironmentVariables={"KEY": "old"})
        copies = list(pathlib.Path(os.environ["XDG_RUNTIME_DIR"]).rglob("job.plist"))
        self.assertEqual(len(copies), 1)
        content = copies[0].read_bytes()
        self.assertEqual(self.bootout(job), SILENT)
        copies[0].parent.mkdir(parents=True)
        for folder in (copies[0].parent, copies[0].parent.parent):
            folder.chmod(0o700)
        copies[0].write_bytes(content)
        job.write(EnvironmentVariables={"KEY": "new"})
        self.assertEqual(self.bootstrap(job), SILENT)
        self.await_up(job)
        self.assertIn("KEY=new", job.starts()[-1]["environment"])


if __name__ == "__main__":
    main()
