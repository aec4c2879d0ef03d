"""Killed tools, killed supervisors and remains of former sessions.

Each test runs in a sandbox of its own: test_mishaps.py BUILD_FOLDER TEST_NAME
"""

import os
import pathlib
import shutil
import signal
import subprocess

from harness import (ALREADY_LOADED, DOMAIN, SILENT, ServicesCase, hold_at, is_alive, kill_after,
                     kill_at_stop, let_go, main, only, processes, send, wait_until)

S6_ONLY = "systemd has no such process"
S6_HAS_NONE = "s6 has no such manager"


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

    def assert_is_forgotten_and_loads_anew(self, job, pid):
        """The manager is gone, and with it all that it had loaded, under that process id for one."""
        self.assertEqual(self.jobs(), {})
        self.assertEqual(self.bootout(job).code, 3)
        self.assertEqual(self.bootstrap(job), SILENT)
        self.await_up(job, other_than=pid)
        self.assertEqual(self.bootout(job), SILENT)
        self.assert_nothing_is_left()

    @only("s6", S6_ONLY)
    def test_of_a_session_that_was_killed_nothing_counts_as_loaded(self):
        job = self.load()
        pid = self.row(job)[0]
        self.kill_all("s6-svscan", "s6-supervise", "agent-exec")
        self.assert_is_forgotten_and_loads_anew(job, pid)

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
    def test_jobs_whose_folders_were_cleaned_away_run_once_when_loaded_again(self):
        deaf = self.job("com.example.deaf")
        deaf.ask("ignore-term")
        jobs = [self.load("com.example.one"), self.load("com.example.two"), deaf]
        self.assertEqual(self.bootstrap(deaf), SILENT)
        self.await_up(deaf)
        shutil.rmtree(self.runtime)
        deaf.ask_no_more("ignore-term")
        self.assertEqual(self.jobs(), {})
        self.assertEqual(self.bootstrap(*jobs), SILENT)
        pids = {self.await_up(job) for job in jobs}
        self.assertEqual(self.agents(), pids)
        self.assertEqual(len(self.find("s6-svscan")), 1)
        for job in jobs:
            self.assertEqual(self.bootout(job), SILENT)
        self.assert_nothing_is_left()

    @only("s6", S6_ONLY)
    def test_a_half_made_job_folder_is_in_nobodys_way(self):
        job = self.job()
        half = self.runtime / "jobs" / job.label
        half.mkdir(parents=True)
        for folder in (self.runtime, half.parent, half):
            folder.chmod(0o700)
        (half / "job.plist").write_text("half of")
        (half / "supervise").mkdir()
        self.assertEqual(self.jobs(), {})
        self.assertEqual(self.bootstrap(job), SILENT)
        self.await_up(job)
        self.assertEqual(self.bootout(job), SILENT)
        self.assert_nothing_is_left()

    @only("s6", S6_ONLY)
    def test_a_process_number_of_the_past_is_neither_listed_nor_killed(self):
        job = self.load()
        pid = self.row(job)[0]
        stranger = subprocess.Popen(["/bin/sleep", "1000"])
        status = self.runtime / "jobs" / job.label / "supervise/status"
        # As a supervisor leaves it that could write no more: two stamps, then the number.
        content = bytearray(status.read_bytes())
        content[24:32] = stranger.pid.to_bytes(8, "big")
        status.write_bytes(content)
        self.assertEqual(self.row(job)[0], pid)
        self.assertEqual(self.launchctl("kickstart", "-k", job.target), SILENT)
        self.await_up(job, other_than=pid)
        self.assertIsNone(stranger.poll())
        self.assertEqual(self.bootout(job), SILENT)
        stranger.kill()
        stranger.wait()
        self.assert_nothing_is_left()

    # -- systemd ----------------------------------------------------------------------------------

    @only("systemd", S6_HAS_NONE)
    def test_of_a_user_manager_that_was_killed_nothing_counts_as_loaded(self):
        job = self.load()
        pid = self.row(job)[0]
        self.systemd.kill()
        self.systemd.wait()
        for agent in self.agents():  # the system's own manager does that at the end of a session
            send(agent)
        self.start_systemd()
        self.assert_is_forgotten_and_loads_anew(job, pid)

    @only("systemd", S6_HAS_NONE)
    def test_jobs_outlive_a_reload_and_a_new_execution_of_the_user_manager(self):
        jobs = [self.load("com.example.%n $x @"), self.load("com.example.plain")]
        crashing = self.load_crashing("com.example.crashing")
        rows = self.jobs()
        for verb in ("daemon-reload", "daemon-reexec"):
            subprocess.run(["systemctl", "--user", verb], check=True)
            wait_until("the manager is back and has its jobs", lambda: self.has_rows(
                {job.label: rows[job.label] for job in jobs}))
        for job in jobs:
            self.assertEqual(self.launchctl("kickstart", "-k", job.target), SILENT)
            self.await_up(job, other_than=rows[job.label][0])
        wait_until("the crash loop goes on", lambda: len(crashing.starts()) > 1)
        for job in (*jobs, crashing):
            self.assertEqual(self.bootout(job), SILENT)
        self.assert_nothing_is_left()

    def has_rows(self, rows):
        """A manager that is just being executed anew may fail to answer, but never answers wrongly."""
        if self.launchctl("list").code == 69:
            return False
        jobs = self.jobs()
        return all(jobs.get(label) == row for label, row in rows.items())

    @only("systemd", S6_HAS_NONE)
    def test_a_fleet_whose_user_manager_does_not_answer_is_neither_gone_nor_split(self):
        job = self.load()
        row = self.row(job)
        other = self.job("com.example.other")
        runtime = pathlib.Path(os.environ["XDG_RUNTIME_DIR"])
        ways = [runtime / "bus", runtime / "systemd/private"]
        for way in ways:
            way.rename(way.with_name("away"))
        for said in (self.bootstrap(other), self.bootout(job)):
            self.assertEqual((said.code, said.out), (69, ""))
            self.assertIn("the user manager that has the loaded jobs doesn't answer", said.error)
        self.assertEqual(self.jobs(), {job.label: row})
        self.assertIn(f'"PID" = {row[0]};', self.launchctl("list", job.label).out)
        self.assertEqual(self.launchctl("list", other.label).code, 113)
        send(row[0])
        wait_until("the agent is gone", lambda: row[0] not in self.agents())
        self.assertNotEqual(self.row(job)[0], row[0])  # it may have come back by now
        row = None
        self.assertEqual(self.find("s6-svscan"), [])
        tool = self.begin("bootstrap", DOMAIN, other.path)
        for way in ways:
            way.with_name("away").rename(way)
        self.assertEqual(tool.communicate(), (b"", b""))
        self.await_up(other)
        self.assertEqual(set(self.jobs()), {job.label, other.label})
        self.assertEqual(self.find("s6-svscan"), [])
        for each in (job, other):
            self.assertEqual(self.bootout(each), SILENT)
        self.assert_nothing_is_left()

    @only("systemd", S6_HAS_NONE)
    def test_a_fleet_is_still_found_when_the_bus_has_crashed(self):
        job = self.load()
        row = self.row(job)
        for bus in self.find("dbus-daemon"):
            send(bus)
        wait_until("the bus is gone", lambda: not self.find("dbus-daemon"))
        self.assertEqual(self.row(job), row)
        self.assertEqual(self.bootstrap(job), (5, "", ALREADY_LOADED))
        other = self.load("com.example.other")
        self.assertEqual(self.find("s6-svscan"), [])
        for each in (job, other):
            self.assertEqual(self.bootout(each), SILENT)
        self.assert_nothing_is_left()

    @only("systemd", S6_HAS_NONE)
    def test_the_manager_is_found_whatever_the_callers_variables_say(self):
        job = self.load()
        os.environ["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=/nowhere"
        self.assertEqual(self.row(job), (job.starts()[0]["pid"], 0))
        del os.environ["DBUS_SESSION_BUS_ADDRESS"]
        self.assertEqual(self.bootout(job), SILENT)
        self.assert_nothing_is_left()

    @only("systemd", S6_HAS_NONE)
    def test_a_fleet_that_runs_under_s6_stays_there_when_a_user_manager_comes_up(self):
        self.systemd.kill()
        self.systemd.wait()
        first = self.load("com.example.first")
        self.assertEqual(len(self.find("s6-svscan")), 1)
        self.start_systemd()
        second = self.load("com.example.second")
        self.assertEqual(len(self.find("s6-supervise")), 2)
        self.assertEqual(set(self.jobs()), {first.label, second.label})
        for job in (first, second):
            self.assertEqual(self.bootout(job), SILENT)
        third = self.load("com.example.third")
        self.assertEqual(self.find("s6-svscan"), [])
        self.assertEqual(set(self.jobs()), {third.label})
        self.assertEqual(self.bootout(third), SILENT)
        self.assert_nothing_is_left()

    @only("systemd", S6_HAS_NONE)
    def test_a_user_manager_that_hangs_makes_no_job_look_unknown(self):
        job = self.load()
        row = self.row(job)
        self.systemd.send_signal(signal.SIGSTOP)
        tools = [self.begin(*words) for words in (
            ("kickstart", job.target), ("stop", job.label),
            ("bootout", job.target), ("bootstrap", DOMAIN, job.path))]
        for tool in tools:
            out, error = tool.communicate()
            self.assertEqual((tool.returncode, out), (69, b""))
            self.assertIn(b"the user manager doesn't answer", error)
        self.assertEqual(self.jobs(), {job.label: row})
        self.assertIn(f'"PID" = {row[0]};', self.launchctl("list", job.label).out)
        self.systemd.send_signal(signal.SIGCONT)
        self.assertEqual(self.jobs(), {job.label: row})
        self.assertEqual(self.bootout(job), SILENT)
        self.assert_nothing_is_left()

    def hold_starts(self):
        """From now on no agent starts before the file that is given back is removed."""
        held = pathlib.Path(os.environ["HOME"]) / "held"
        held.touch()
        tools = held.with_name("tools")
        tools.mkdir()
        shutil.copy(self.tools / "launchctl", tools)
        (tools / "agent-exec").write_text(
            f'#!/bin/sh\n[ "$1" != --wait ] || while [ -e {held} ]; do sleep 0.05; done\n'
            f'exec "{self.tools}/agent-exec" "$@"\n')
        (tools / "agent-exec").chmod(0o700)
        self.tools = tools
        return held

    @only("systemd", S6_HAS_NONE)
    def test_a_start_that_does_not_get_done_is_taken_back(self):
        job = self.job()
        self.hold_starts()
        said = self.bootstrap(job)
        self.assertIn("the user manager doesn't get done", said.error)
        self.assertEqual(said.code, 69)
        self.assert_nothing_is_left()

    @only("systemd", S6_HAS_NONE)
    def test_a_start_that_nobody_could_see_the_end_of_leaves_a_job_that_works(self):
        job = self.job()
        held = self.hold_starts()
        # Its own connections are what a manager that is executed anew drops for certain.
        bus = pathlib.Path(os.environ["XDG_RUNTIME_DIR"]) / "bus"
        bus.rename(bus.with_name("away"))
        tool = self.begin("bootstrap", DOMAIN, job.path)
        wait_until("the start is under way", lambda: self.row(job))
        subprocess.run(["systemctl", "--user", "daemon-reexec"], check=True)
        self.assertIn(b"doesn't answer", tool.communicate()[1])
        self.assertEqual(tool.returncode, 69)
        held.unlink()
        wait_until("the manager is back", lambda: self.launchctl("list").code == 0)
        self.await_up(job)
        self.assertEqual(self.bootout(job), SILENT)
        self.assert_nothing_is_left()

    @only("systemd", S6_HAS_NONE)
    def test_units_of_others_are_neither_listed_nor_touched(self):
        subprocess.run(["systemd-run", "--user", "--quiet", "--unit=varnhold-other", "sleep", "1000"],
                       check=True)
        self.assertEqual(self.jobs(), {})
        job = self.load("dbus")
        self.assertEqual(set(self.jobs()), {"dbus"})
        self.assertEqual(self.bootout(job), SILENT)
        self.assertEqual(subprocess.run(
            ["systemctl", "--user", "is-active", "--quiet", "varnhold-other"],
            check=False).returncode, 0)

    @only("systemd", S6_HAS_NONE)
    def test_no_unit_is_left_failed_or_at_all(self):
        deaf = self.job("com.example.deaf")
        deaf.ask("ignore-term")
        jobs = [self.load("com.example.plain"), self.load_crashing("com.example.crashing"), deaf]
        self.assertEqual(self.bootstrap(deaf), SILENT)
        self.await_up(deaf)
        for job in jobs:
            self.assertEqual(self.bootout(job), SILENT)
        left = ["systemctl", "--user", "list-units", "--all", "--plain", "--no-legend", "varnhold-*"]
        wait_until("no unit is left", lambda: not subprocess.run(
            left, check=True, capture_output=True).stdout)
        self.assert_nothing_is_left()

    def assert_is_listed_or_gone(self):
        """Also without another verb: what was told to end does so by itself."""
        wait_until("the agent is listed or gone",
                   lambda: self.agents() <= {row[0] for row in self.jobs().values()}, 8)

    def test_a_bootout_that_is_killed_at_any_call_leaves_no_agent_that_is_not_listed(self):
        job = self.job()
        stop = 1
        killed = True
        while killed:
            self.assertEqual(self.bootstrap(job), SILENT)
            self.await_row_with_process(job)
            killed = kill_at_stop(stop, self.command("bootout", job.target))
            self.assert_is_listed_or_gone()
            self.assertIn(self.bootout(job).code, (0, 3))
            wait_until("the agent is gone", lambda: not self.agents(), 8)
            stop += 7  # an odd number, so that both ends of calls come up
        self.assertGreater(stop, 100)
        self.assert_nothing_is_left()

    def await_row_with_process(self, job):
        wait_until("the agent runs", lambda: (self.row(job) or (None,))[0] in self.agents())

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

    def test_a_tool_that_is_stopped_holds_nobody_up_for_ever_and_is_named(self):
        job = self.job()
        job.ask("ignore-term")
        self.assertEqual(self.bootstrap(job), SILENT)
        self.await_up(job)
        stopped = self.begin("bootout", job.target)  # it waits for five seconds in all
        lock = self.runtime / "locks" / job.label
        wait_until("it has the lock", lambda: lock.exists() and lock.read_text() == str(stopped.pid))
        stopped.send_signal(signal.SIGSTOP)
        for said in (self.bootstrap(job), self.bootout(job)):
            if said.code != 3:  # it had told already
                self.assertEqual((said.code, said.out), (69, ""))
                self.assertIn(f"is held by process {stopped.pid}: ", said.error)
        stopped.send_signal(signal.SIGCONT)
        self.assertEqual(stopped.communicate(), (b"", b""))
        self.assert_nothing_is_left()

    @only("s6", "systemd does the work itself")
    def test_a_bootout_that_is_held_up_on_its_way_ends_what_has_come_up_since(self):
        job = self.job()
        job.ask("note-term")
        self.assertEqual(self.bootstrap(job), SILENT)
        self.await_up(job)
        tool = hold_at((job.folder / "terms").exists, self.command("bootout", job.target))
        # It is ended by force after five seconds, and its supervisor with it.
        wait_until("another has come up in its place", lambda: len(job.starts()) > 1)
        let_go(tool)
        self.assertEqual(tool.communicate(), (b"", b""))
        self.assertEqual(tool.returncode, 0)
        self.assertEqual(self.agents(), set())
        self.assert_nothing_is_left()

    def test_a_tool_that_can_open_too_few_files_gives_no_wrong_answer(self):
        job = self.load()
        for words in (("list",), ("list", job.label), ("bootstrap", DOMAIN, job.path),
                      ("bootout", job.target), ("kickstart", job.target), ("stop", job.label)):
            done = subprocess.run(["/bin/sh", "-c", 'ulimit -n 12; exec "$@"', "sh",
                                   *self.command(*words)], capture_output=True, check=False)
            self.assertEqual((done.returncode, done.stdout), (69, b""), words)
            self.assertIn(b"too few files may be open", done.stderr)
        self.assertEqual(self.bootout(job), SILENT)

    def test_an_answer_that_cannot_be_written_is_a_failure(self):
        self.load()
        with open("/dev/full", "wb") as full:
            done = subprocess.run(self.command("list"), stdout=full, stderr=subprocess.PIPE,
                                  check=False)
        self.assertEqual(done.returncode, 69)
        self.assertIn(b"No space left", done.stderr)

    def test_a_runtime_folder_that_others_can_enter_is_refused(self):
        self.runtime.mkdir(mode=0o777)
        self.runtime.chmod(0o777)
        job = self.job()
        said = self.bootstrap(job)
        self.assertEqual(said.code, 69)
        self.assertIn("not a private folder of this user", said.error)
        self.assertEqual(self.agents(), set())

    def test_a_file_in_the_place_of_the_runtime_folder_is_refused(self):
        self.runtime.write_text("")
        job = self.job()
        said = self.bootstrap(job)
        self.assertEqual(said.code, 69)
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
