"""Each verb of launchctl on a job in each state: what it says, what it changes, what it leaves alone.

Each test runs in a sandbox of its own: test_verbs.py BUILD_FOLDER TEST_NAME
"""

import time

from harness import (ALREADY_LOADED, DOMAIN, NO_PROCESS, SILENT, ServicesCase, is_alive,
                     main, no_service, now, wait_until)

WRONG_DOMAIN = ": 125: Domain does not support specified action\n"
AT_ONCE = 8  # seconds: well below the throttle's ten, well above a busy machine's needs


class VerbsTest(ServicesCase):
    def load_at_rest(self):
        """A job that is loaded and has never run."""
        job = self.job(KeepAlive=False, RunAtLoad=False)
        self.assertEqual(self.bootstrap(job), SILENT)
        self.assertEqual(self.row(job), (None, 0))
        return job

    def load_over(self):
        """A job that has run to its end and isn't kept alive."""
        return self.load_crashing(code=3, KeepAlive=False)

    # -- list -----------------------------------------------------------------------------------

    def test_list_of_no_job_is_its_header(self):
        self.assertEqual(self.launchctl("list"), (0, "PID\tStatus\tLabel\n", ""))

    def test_list_is_sorted_by_label(self):
        jobs = [self.job(label, RunAtLoad=False, KeepAlive=False)
                for label in ("com.b", "com.a", "a com", "com.C")]
        self.assertEqual(self.bootstrap(*jobs), SILENT)
        self.assertEqual(list(self.jobs()), ["a com", "com.C", "com.a", "com.b"])

    def test_list_of_a_running_label_shows_its_properties(self):
        job = self.load()
        pid = self.row(job)[0]
        words = "".join(f'\t\t"{word}";\n' for word in job.values["ProgramArguments"])
        self.assertEqual(self.launchctl("list", job.label), (0, (
            f'{{\n\t"StandardOutPath" = "{job.log}";\n'
            '\t"LimitLoadToSessionType" = "Aqua";\n'
            f'\t"StandardErrorPath" = "{job.error_log}";\n'
            f'\t"Label" = "{job.label}";\n\t"OnDemand" = false;\n\t"LastExitStatus" = 0;\n'
            f'\t"PID" = {pid};\n\t"Program" = "/usr/bin/python3";\n'
            f'\t"ProgramArguments" = (\n{words}\t);\n}};\n'), ""))

    def test_list_of_a_label_at_rest_shows_no_process(self):
        job = self.load_at_rest()
        said = self.launchctl("list", job.label)
        self.assertEqual(said.code, 0)
        self.assertNotIn('"PID"', said.out)
        self.assertIn('\t"OnDemand" = true;\n\t"LastExitStatus" = 0;\n', said.out)

    def test_list_of_a_label_that_waits_shows_the_whole_wait_status(self):
        job = self.load_crashing(code=7)
        said = self.launchctl("list", job.label)
        self.assertNotIn('"PID"', said.out)
        self.assertIn(f'\t"LastExitStatus" = {7 << 8};\n', said.out)

    def test_list_of_a_label_that_is_over_shows_how_it_ended(self):
        job = self.load_over()
        said = self.launchctl("list", job.label)
        self.assertEqual((said.code, said.error), (0, ""))
        self.assertNotIn('"PID"', said.out)
        self.assertIn(f'\t"OnDemand" = true;\n\t"LastExitStatus" = {3 << 8};\n', said.out)

    # -- bootstrap ------------------------------------------------------------------------------

    def test_bootstrap_loads_and_starts(self):
        job = self.load()
        self.assertEqual(self.jobs(), {job.label: (job.starts()[0]["pid"], 0)})

    def test_bootstrap_of_a_running_job_leaves_it_alone(self):
        job = self.load()
        pid = self.row(job)[0]
        self.assertEqual(self.bootstrap(job), (5, "", ALREADY_LOADED))
        self.assertEqual(self.row(job), (pid, 0))
        self.assertEqual(len(job.starts()), 1)

    def test_bootstrap_of_a_waiting_job_starts_nothing(self):
        job = self.load_crashing()
        self.assertEqual(self.bootstrap(job), (5, "", ALREADY_LOADED))
        self.assertEqual(self.row(job), (None, 7))
        self.assertEqual(len(job.starts()), 1)

    def test_bootstrap_of_a_job_at_rest_or_over_starts_nothing(self):
        for load in (self.load_at_rest, self.load_over):
            with self.subTest(load=load.__name__):
                job = load()
                row = self.row(job)
                self.assertEqual(self.bootstrap(job), (5, "", ALREADY_LOADED))
                self.assertEqual(self.row(job), row)
                self.assertEqual(self.bootout(job), SILENT)

    def test_bootstrap_of_files_that_cannot_be_used_names_them_and_loads_nothing(self):
        job = self.job()
        bad = job.folder / "bad.plist"
        bad.write_text("not a property list")
        for path in (bad, job.folder / "missing.plist", "/dev/null"):
            said = self.launchctl("bootstrap", DOMAIN, path)
            self.assertEqual((said.code, said.out), (5, ""))
            self.assertTrue(said.error.startswith(
                f"Bootstrap failed: 5: Input/output error\n{path}: "), said.error)
        self.assert_nothing_is_left()

    def test_bootstrap_of_several_goes_on_after_one_that_fails(self):
        jobs = [self.job("com.a"), self.job("com.b")]
        said = self.launchctl("bootstrap", DOMAIN, jobs[0].path, "/missing", jobs[1].path)
        self.assertEqual(said.code, 5)
        for job in jobs:
            self.await_up(job)

    # -- bootout --------------------------------------------------------------------------------

    def test_bootout_ends_a_running_agent_politely_and_forgets_it(self):
        job = self.job()
        job.ask("exit-on-term", "0")
        self.bootstrap(job)
        pid = self.await_up(job)
        begin = time.monotonic()
        self.assertEqual(self.bootout(job), SILENT)
        self.assertLess(time.monotonic() - begin, 4.5)  # it never came to the kill
        self.assertFalse(is_alive(pid))
        self.assertEqual(self.launchctl("list", job.label), (113, "", no_service(job.label)))
        self.assert_nothing_is_left()

    def test_bootout_kills_an_agent_that_ignores_sigterm_after_five_seconds(self):
        job = self.job()
        job.ask("ignore-term")
        self.bootstrap(job)
        pid = self.await_up(job)
        begin = time.monotonic()
        self.assertEqual(self.bootout(job), SILENT)
        self.assertGreater(time.monotonic() - begin, 4.5)
        self.assertFalse(is_alive(pid))
        self.assert_nothing_is_left()

    def test_bootout_of_a_waiting_job_is_done_at_once(self):
        job = self.load_crashing()
        begin = now()
        self.assertEqual(self.bootout(job), SILENT)
        self.assertLess(now() - begin, AT_ONCE)
        self.assertEqual(len(job.starts()), 1)
        self.assert_nothing_is_left()

    def test_bootout_of_a_job_at_rest_or_over_forgets_it(self):
        for load in (self.load_at_rest, self.load_over):
            self.assertEqual(self.bootout(load()), SILENT)
            self.assertEqual(self.jobs(), {})
        self.assert_nothing_is_left()

    def test_a_job_can_be_loaded_again_after_its_bootout(self):
        job = self.load()
        pid = self.row(job)[0]
        self.assertEqual(self.bootout(job), SILENT)
        begin = now()
        self.assertEqual(self.bootstrap(job), SILENT)
        self.await_up(job, other_than=pid)
        self.assertLess(job.starts()[-1]["time"] - begin, AT_ONCE)
        self.assertEqual(self.row(job)[1], 0)  # nothing is remembered of the former load

    # -- kickstart ------------------------------------------------------------------------------

    def test_kickstart_of_a_running_job_leaves_it_alone(self):
        job = self.load()
        pid = self.row(job)[0]
        self.assertEqual(self.launchctl("kickstart", job.target), SILENT)
        self.assertEqual(self.row(job), (pid, 0))

    def test_kickstart_k_gives_a_running_job_a_new_process_at_once(self):
        job = self.load()
        pid = self.row(job)[0]
        begin = now()
        self.assertEqual(self.launchctl("kickstart", "-k", job.target), SILENT)
        self.await_up(job, other_than=pid)
        self.assertLess(job.starts()[-1]["time"] - begin, AT_ONCE)
        self.assertFalse(is_alive(pid))

    def test_kickstart_k_kills_also_an_agent_that_ignores_sigterm(self):
        job = self.job()
        job.ask("ignore-term")
        self.bootstrap(job)
        pid = self.await_up(job)
        self.assertEqual(self.launchctl("kickstart", "-k", job.target), SILENT)
        self.await_up(job, other_than=pid)
        self.assertEqual(self.agents(), {job.starts()[-1]["pid"]})

    def test_kickstart_starts_a_waiting_job_at_once(self):
        for words in (("kickstart",), ("kickstart", "-k")):
            with self.subTest(words=words):
                job = self.load_crashing()
                job.ask_no_more("exit")
                self.assertEqual(self.launchctl(*words, job.target), SILENT)
                self.await_up(job)
                first, second = job.starts()
                self.assertLess(second["time"] - first["time"], AT_ONCE)
                self.assertEqual(self.bootout(job), SILENT)

    def test_kickstart_starts_a_job_at_rest_and_it_stays_down_after_its_end(self):
        job = self.load_at_rest()
        job.ask("exit-on-term", "4")
        self.assertEqual(self.launchctl("kickstart", job.target), SILENT)
        self.await_up(job)
        self.assertEqual(self.launchctl("stop", job.label), SILENT)
        self.await_row(job, (None, 4))
        self.assertEqual(len(job.starts()), 1)

    def test_kickstart_k_starts_a_job_at_rest(self):
        job = self.load_at_rest()
        self.assertEqual(self.launchctl("kickstart", "-k", job.target), SILENT)
        self.await_up(job)
        self.assertEqual(len(job.starts()), 1)

    def test_kickstart_starts_a_job_that_is_over_once_more(self):
        job = self.load_over()
        self.assertEqual(self.launchctl("kickstart", job.target), SILENT)
        wait_until("the second start", lambda: len(job.starts()) > 1)
        self.await_row(job, (None, 3))
        self.assertEqual(len(job.starts()), 2)

    def test_kickstart_right_after_the_end_is_never_lost(self):
        job = self.load_over()
        for count in range(2, 60):
            self.assertEqual(self.launchctl("kickstart", job.target), SILENT)
            wait_until(f"start {count}", lambda: len(job.starts()) >= count)
            while self.row(job)[0] is not None:
                pass  # the end is to be met while it is still looked after

    def test_kickstart_k_starts_a_job_that_is_over(self):
        job = self.load_over()
        job.ask_no_more("exit")
        self.assertEqual(self.launchctl("kickstart", "-k", job.target), SILENT)
        self.await_up(job)
        pid = self.row(job)[0]
        self.assertEqual(self.launchctl("kickstart", "-k", job.target), SILENT)
        self.await_up(job, other_than=pid)

    # -- stop -----------------------------------------------------------------------------------

    def test_stop_ends_the_agent_politely_and_the_job_brings_it_back(self):
        job = self.job()
        job.ask("exit-on-term", "5")
        self.bootstrap(job)
        pid = self.await_up(job)
        self.assertEqual(self.launchctl("stop", job.label), SILENT)
        self.await_row(job, (None, 5))
        self.await_up(job, other_than=pid)
        self.assertEqual(self.row(job)[1], 5)

    def test_stop_shows_the_signal_of_an_agent_that_does_not_catch_it(self):
        job = self.load()
        self.assertEqual(self.launchctl("stop", job.label), SILENT)
        self.await_row(job, (None, -15))
        self.assertIn('"LastExitStatus" = 15;', self.launchctl("list", job.label).out)

    def test_stop_never_kills(self):
        job = self.job()
        job.ask("ignore-term")
        self.bootstrap(job)
        pid = self.await_up(job)
        self.assertEqual(self.launchctl("stop", job.label), SILENT)
        self.assertEqual(self.launchctl("stop", job.label), SILENT)
        end = time.monotonic() + 6  # past the time at which a bootout would have killed it
        wait_until("six seconds have gone by", lambda: time.monotonic() > end)
        self.assertEqual(self.row(job), (pid, 0))

    def test_stop_of_a_waiting_job_neither_hurries_nor_forgets_it(self):
        job = self.load_crashing()
        self.assertEqual(self.launchctl("stop", job.label), SILENT)
        self.assertEqual(self.row(job), (None, 7))
        wait_until("the next start", lambda: len(job.starts()) > 1)
        first, second = job.starts()[:2]
        self.assertGreater(second["time"] - first["time"], 9.5)

    def test_stop_of_a_job_at_rest_does_nothing(self):
        job = self.load_at_rest()
        self.assertEqual(self.launchctl("stop", job.label), SILENT)
        self.assertEqual(self.row(job), (None, 0))

    def test_stop_of_a_job_that_is_over_does_nothing(self):
        job = self.load_over()
        self.assertEqual(self.launchctl("stop", job.label), SILENT)
        self.assertEqual(self.row(job), (None, 3))
        self.assertEqual(len(job.starts()), 1)

    # -- what isn't there, and wrong use --------------------------------------------------------

    def test_every_verb_says_that_it_does_not_know_a_label(self):
        other = self.load("com.example.other")
        pid = self.row(other)[0]
        for label in ("com.example", "a b", "%", "com.example.other.", "ü", "a\nb", "a" * 300):
            with self.subTest(label=label):
                self.assertEqual(self.launchctl("list", label), (113, "", no_service(label)))
                self.assertEqual(self.launchctl("stop", label),
                                 (3, "", "Stop failed: 3: No such process\n"))
                target = f"{DOMAIN}/{label}"
                self.assertEqual(self.launchctl("bootout", target), (3, "", NO_PROCESS))
                for words in (("kickstart",), ("kickstart", "-k")):
                    self.assertEqual(self.launchctl(*words, target), (113, "", no_service(label)))
        self.assertEqual(self.jobs(), {other.label: (pid, 0)})

    def test_another_users_domain_is_refused(self):
        job = self.load()
        pid = self.row(job)[0]
        new = self.job("com.example.new")
        self.assertEqual(self.launchctl("bootstrap", "gui/54321", new.path),
                         (125, "", "Bootstrap failed" + WRONG_DOMAIN))
        target = f"gui/54321/{job.label}"
        self.assertEqual(self.launchctl("bootout", target),
                         (125, "", "Boot-out failed" + WRONG_DOMAIN))
        self.assertEqual(self.launchctl("kickstart", "-k", target),
                         (125, "", "Kickstart failed" + WRONG_DOMAIN))
        self.assertEqual(self.jobs(), {job.label: (pid, 0)})

    def test_wrong_use_gets_a_message_and_changes_nothing(self):
        job = self.load()
        pid = self.row(job)[0]
        new = self.job("com.example.new")
        for words in ((), ("",), ("unload", job.label), ("list", "a", "b"), ("stop",),
                      ("stop", job.label, job.label), ("bootout", job.label), ("bootout", DOMAIN),
                      ("bootout", job.target, job.target), ("bootstrap", new.path),
                      ("bootstrap", DOMAIN), ("bootstrap", job.target, new.path),
                      ("kickstart", job.label), ("kickstart", "-k"),
                      ("kickstart", "-p", job.target), ("--frobnicate",)):
            with self.subTest(words=words):
                said = self.launchctl(*words)
                self.assertEqual((said.code, said.out), (64, ""))
                self.assertRegex(said.error, r"\Alaunchctl: .+\nTry: launchctl --help\n\Z")
        self.assertEqual(self.jobs(), {job.label: (pid, 0)})

    def test_help_and_version_need_no_service_manager(self):
        for words in (("--help",), ("--version",)):
            said = self.launchctl(*words)
            self.assertEqual((said.code, said.error), (0, ""))
            self.assertIn("launchctl", said.out)
        self.assertFalse(self.runtime.exists())


if __name__ == "__main__":
    main()
