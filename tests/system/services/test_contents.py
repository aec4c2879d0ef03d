"""What stands in a property list reaches the agent unharmed, or is refused with a clear message.

Each test runs in a sandbox of its own: test_contents.py BUILD_FOLDER TEST_NAME
"""

import os
import pathlib
import subprocess

from harness import DOMAIN, SILENT, ServicesCase, main, processes, wait_until

ODD_TEXTS = (
    "two words", " around ", "", "'single'", '"double"', "back\\slash \\n \\x20", "$HOME ${HOME} $$",
    "%n %h %% %", "`id` $(id) ; | & > <", "*?[a]~", "-k", "--", ";", "#", "a=b", "tab\tin it",
    "ü ✓ 🤖 e\u0301", "line\nbreak\n", "@{}", "[Service]\nExecStart=/bin/false", "x" * 5000,
)
ODD_LABELS = (
    "com.example.a b", "com.example. lead and trail ", "com.example.'q'\"q\"", "com.example.%n%%",
    "com.example.$HOME", "com.example.ü✓🤖", "com.example/slash//x", "com.example\\x20",
    "com.example@instance", "com.example@", "com.example.service", ".hidden", "..", "-k", "%41",
    "com.example.*?[a]", "a:b", "_", "%2E", "\\x2e", "con,text;a=b",
)


def laughs(levels):
    """A binary list in which each array names the next one ten times."""
    values = [bytes([0xAA]) + bytes([number + 1]) * 10 for number in range(levels)] + [b"\x09"]
    offsets, content = b"", b"bplist00"
    for value in values:
        offsets += len(content).to_bytes(2, "big")
        content += value
    return (content + offsets + bytes(6) + b"\x02\x01" + len(values).to_bytes(8, "big") + bytes(8)
            + len(content).to_bytes(8, "big"))


class ContentsTest(ServicesCase):
    def test_labels_of_any_text_are_loaded_listed_and_unloaded(self):
        jobs = [self.job(label) for label in ODD_LABELS]
        self.assertEqual(self.bootstrap(*jobs), SILENT)
        pids = {job.label: self.await_up(job) for job in jobs}
        self.assertEqual({label: row[0] for label, row in self.jobs().items()}, pids)
        for job in jobs:
            with self.subTest(label=job.label):
                self.assertIn(f'"PID" = {pids[job.label]};',
                              self.launchctl("list", job.label).out)
                self.assertEqual(self.launchctl("kickstart", job.target), SILENT)
                self.assertEqual(self.bootout(job), SILENT)
                self.assertNotIn(job.label, self.jobs())
        self.assert_nothing_is_left()

    def test_labels_that_differ_in_one_odd_byte_are_different_jobs(self):
        jobs = [self.job(label, RunAtLoad=False, KeepAlive=False)
                for label in ("a b", "a%20b", "a\\x20b", "a_b", "a-b", "A b", "a  b", "a b ")]
        self.assertEqual(self.bootstrap(*jobs), SILENT)
        self.assertEqual(set(self.jobs()), {job.label for job in jobs})

    def test_labels_with_control_characters_are_refused(self):
        for label in ("a\nb", "a\tb", "\x7f", "a\rb", "1\t0\tcom.forged\n"):
            with self.subTest(label=label):
                job = self.job(label)
                said = self.bootstrap(job)
                self.assertEqual((said.code, said.out), (5, ""))
                self.assertEqual(said.error, "Bootstrap failed: 5: Input/output error\n"
                                 f"{job.path}: a label can't hold control characters\n")
                self.assertEqual(job.starts(), [])
        self.assert_nothing_is_left()

    def test_an_empty_or_missing_label_is_refused(self):
        job = self.job("")
        said = self.bootstrap(job)
        self.assertEqual((said.code, said.error), (
            5, "Bootstrap failed: 5: Input/output error\n"
            f"{job.path}: Label is missing or empty\n"))
        self.assert_nothing_is_left()

    def test_a_label_that_no_file_can_be_named_after_is_refused(self):
        job = self.job("a" * 300)
        said = self.bootstrap(job)
        self.assertEqual((said.code, said.error), (
            5, f"Bootstrap failed: 5: Input/output error\n{job.path}: the label is too long\n"))
        self.assert_nothing_is_left()

    def test_arguments_of_any_text_reach_the_agent(self):
        job = self.job()
        words = [*job.values["ProgramArguments"], *ODD_TEXTS]
        job.write(ProgramArguments=words)
        self.assertEqual(self.bootstrap(job), SILENT)
        self.await_up(job)
        self.assertEqual(job.starts()[0]["arguments"], words)

    def test_variables_of_any_text_reach_the_agent_under_any_name(self):
        variables = {f"ODD_{number}": text for number, text in enumerate(ODD_TEXTS)}
        variables |= {"X-Y_OAUTH_TOKEN": "dash", "A B": "blank", "ÜBER": "ü", "1": "digit",
                      "a.b": "dot", "lower": "case", "PATH": "/usr/bin", "HOME": "/odd home",
                      "HELD": "KEY=value=more"}
        job = self.load(EnvironmentVariables=variables)
        found = dict(entry.split("=", 1) for entry in job.starts()[0]["environment"])
        self.assertEqual({name: found.get(name) for name in variables}, variables)

    def test_beside_its_own_variables_an_agent_has_a_small_base_and_nothing_else(self):
        os.environ["LEAKED"] = "from the caller"
        job = self.load(EnvironmentVariables={"OWN": "1"})
        found = dict(entry.split("=", 1) for entry in job.starts()[0]["environment"])
        self.assertEqual(set(found), {"OWN", "PATH", "HOME", "SHELL", "USER", "LOGNAME"})
        self.assertEqual(found["PATH"], "/usr/bin:/bin:/usr/sbin:/sbin")

    def test_folders_and_logs_of_any_text_are_used(self):
        odd = pathlib.Path(os.environ["HOME"]) / "odd 'f' \"o\" $HOME %n ü\nline"
        odd.mkdir()
        job = self.load(WorkingDirectory=str(odd), StandardOutPath=str(odd / "%n $x.log"))
        self.assertEqual(job.starts()[0]["folder"], str(odd))
        self.assertEqual((odd / "%n $x.log").read_text(), f"started as {self.row(job)[0]}\n")

    # -- the definition that was loaded -----------------------------------------------------------

    def test_a_job_keeps_the_definition_that_it_was_loaded_with(self):
        job = self.load(EnvironmentVariables={"KEY": "old"})
        pid = self.row(job)[0]
        self.assertEqual(self.bootstrap(job).code, 5)
        job.write(EnvironmentVariables={"KEY": "new"}, StandardOutPath="/tmp/new.log")
        self.assertIn(str(job.log), self.launchctl("list", job.label).out)
        self.assertEqual(self.bootstrap(job).code, 5)
        self.launchctl("kickstart", "-k", job.target)
        pid = self.await_up(job, other_than=pid)
        job.path.unlink()
        self.launchctl("stop", job.label)
        self.await_up(job, other_than=pid)
        self.assertEqual(len(job.starts()), 3)
        for start in job.starts():
            self.assertIn("KEY=old", start["environment"])

    def test_a_bootout_and_a_bootstrap_take_the_new_definition(self):
        job = self.load(EnvironmentVariables={"KEY": "old"})
        self.assertEqual(self.bootout(job), SILENT)
        job.write(EnvironmentVariables={"KEY": "new"})
        self.assertEqual(self.bootstrap(job), SILENT)
        self.await_up(job)
        self.assertIn("KEY=new", job.starts()[1]["environment"])

    # -- logs -------------------------------------------------------------------------------------

    def test_logs_are_appended_to_and_never_truncated(self):
        job = self.job()
        job.log.write_text("from before\n")
        self.assertEqual(self.bootstrap(job), SILENT)
        first = self.await_up(job)
        self.launchctl("kickstart", "-k", job.target)
        second = self.await_up(job, other_than=first)
        self.assertEqual(job.log.read_text(),
                         f"from before\nstarted as {first}\nstarted as {second}\n")
        self.assertEqual(job.error_log.read_text(), "trouble\ntrouble\n")

    def test_a_log_that_is_cut_short_is_written_on_from_its_new_end(self):
        job = self.load()
        pid = self.row(job)[0]
        job.log.write_text("")
        self.launchctl("kickstart", "-k", job.target)
        pid = self.await_up(job, other_than=pid)
        self.assertEqual(job.log.read_text(), f"started as {pid}\n")

    def test_both_streams_can_share_a_log(self):
        job = self.job()
        job.write(StandardErrorPath=str(job.log))
        self.assertEqual(self.bootstrap(job), SILENT)
        pid = self.await_up(job)
        self.assertEqual(job.log.read_text(), f"started as {pid}\ntrouble\n")

    def test_a_log_that_cannot_be_written_never_keeps_an_agent_down(self):
        taken = pathlib.Path(os.environ["HOME"]) / "taken"
        taken.mkdir()
        for path in ("/nowhere/at/all.log", str(taken), "/etc/passwd/x.log", "",
                     "relative/to/nothing.log"):
            with self.subTest(path=path):
                job = self.load(StandardOutPath=path, StandardErrorPath=path)
                self.assertEqual(job.starts()[0]["descriptors"]["1"], "/dev/null")
                self.assertEqual(self.bootout(job), SILENT)

    def test_a_log_that_is_a_pipe_keeps_no_agent_waiting(self):
        pipe = pathlib.Path(os.environ["HOME"]) / "pipe"
        os.mkfifo(pipe)
        job = self.load(StandardOutPath=str(pipe), StandardErrorPath=str(pipe))
        self.assertEqual(job.starts()[0]["descriptors"]["1"], "/dev/null")
        self.assertEqual(self.bootout(job), SILENT)
        reader = os.open(pipe, os.O_RDONLY | os.O_NONBLOCK)
        job = self.load(StandardOutPath=str(pipe), StandardErrorPath="")
        self.assertEqual(os.read(reader, 100).decode(), f"started as {self.row(job)[0]}\n")

    def assert_log_is_refused(self, log, reason):
        job = self.load(StandardOutPath=str(log))
        self.assertEqual(job.starts()[0]["descriptors"]["1"], "/dev/null")
        self.assertEqual(job.error_log.read_text(), "trouble\n")
        note = self.runtime / "jobs" / job.label / "log-trouble"
        self.assertEqual(note.read_text(), f"StandardOutPath: {log}: {reason}\n")
        return job, note

    def test_a_log_that_is_a_link_is_not_followed_and_the_reason_is_kept(self):
        dear = pathlib.Path(os.environ["HOME"]) / "dear"
        dear.write_text("dear\n")
        for target in (dear, dear.with_name("not there yet")):
            link = dear.with_name(f"link to {target.name}")
            link.symlink_to(target)
            with self.subTest(target=target.name):
                job, _ = self.assert_log_is_refused(link, "a link, which isn't followed")
                self.assertEqual(self.bootout(job), SILENT)
        self.assertEqual(dear.read_text(), "dear\n")
        self.assertFalse(dear.with_name("not there yet").exists())
        self.assert_nothing_is_left()

    def test_a_log_that_is_a_second_name_of_another_file_is_not_written_to(self):
        dear = pathlib.Path(os.environ["HOME"]) / "dear"
        dear.write_text("dear\n")
        os.link(dear, dear.with_name("planted"))
        self.assert_log_is_refused(dear.with_name("planted"), "a file that has other names too")
        self.assertEqual(dear.read_text(), "dear\n")

    def test_a_log_of_somebody_elses_is_not_written_to(self):
        planted = pathlib.Path("/tmp/vh-planted.log")
        planted.write_text("")
        os.chown(planted, 1000, 1000)
        self.assert_log_is_refused(planted, "a file of another user")
        self.assertEqual(planted.read_text(), "")

    def test_the_reason_for_a_missing_log_goes_when_the_log_comes(self):
        link = pathlib.Path(os.environ["HOME"]) / "link"
        link.symlink_to("anywhere")
        job, note = self.assert_log_is_refused(link, "a link, which isn't followed")
        link.unlink()
        pid = self.row(job)[0]
        self.launchctl("kickstart", "-k", job.target)
        pid = self.await_up(job, other_than=pid)
        self.assertEqual(link.read_text(), f"started as {pid}\n")
        self.assertFalse(note.exists())

    def test_logs_that_are_made_are_for_their_user_alone_and_others_keep_their_mode(self):
        job = self.job()
        job.log.write_text("")
        job.log.chmod(0o644)
        os.umask(0)
        self.assertEqual(self.bootstrap(job), SILENT)
        self.await_up(job)
        self.assertEqual(job.log.stat().st_mode & 0o777, 0o644)
        self.assertEqual(job.error_log.stat().st_mode & 0o777, 0o600)

    # -- lists that are meant to do harm ----------------------------------------------------------

    def test_a_list_that_is_meant_to_do_harm_keeps_no_other_from_being_loaded(self):
        good = self.job("com.example.good")
        folder = pathlib.Path(os.environ["HOME"]) / "lists"
        folder.mkdir()
        (folder / "z-good.plist").write_bytes(good.path.read_bytes())
        head = b'<?xml version="1.0" encoding="UTF-8"?><plist version="1.0"><dict>'
        (folder / "a-nul.plist").write_bytes(head + b"<key>a\0b</key><true/></dict></plist>")
        (folder / "b-deep.plist").write_bytes(head + b"<key>a</key>" + b"<array>" * 100_000)
        (folder / "c-laughs.plist").write_bytes(laughs(30))
        with open(folder / "d-huge.plist", "wb") as huge:
            huge.truncate(4 << 30)
        os.mkfifo(folder / "e-pipe.plist")
        said = self.launchctl("bootstrap", DOMAIN, folder)
        self.assertEqual((said.code, said.out), (5, ""))
        for reason in ("a-nul.plist: a property list can't hold a NUL",
                       "b-deep.plist: a property list can't nest that deep",
                       "c-laughs.plist: a property list can't hold that many values",
                       "d-huge.plist: a property list can't be larger than a megabyte",
                       "e-pipe.plist: not a file"):
            self.assertIn(f"{folder}/{reason}\n", said.error)
        self.await_up(good)
        self.assertEqual(set(self.jobs()), {good.label})

    # -- secrets ----------------------------------------------------------------------------------

    def test_secrets_stand_in_no_command_line_and_in_no_environment_but_the_agents(self):
        secret = "sk-very-secret-token"
        job = self.load(EnvironmentVariables={"KEY": secret})
        pid = self.row(job)[0]
        for other, words in processes().items():
            self.assertNotIn(secret, " ".join(words))
            if other != pid:
                try:
                    environment = pathlib.Path(f"/proc/{other}/environ").read_bytes()
                except OSError:
                    continue
                self.assertNotIn(secret.encode(), environment)

    def test_secrets_stand_in_private_copies_of_the_property_list_alone(self):
        secret = "sk-very-secret-token"
        job = self.load(EnvironmentVariables={"KEY": secret})
        runtime = pathlib.Path(os.environ["XDG_RUNTIME_DIR"])
        holders = [path for path in runtime.rglob("*")
                   if path.is_file() and secret.encode() in path.read_bytes()]
        self.assertEqual([path.name for path in holders], ["job.plist"])
        self.assertEqual(self.runtime.stat().st_mode & 0o077, 0)
        self.assertTrue(holders[0].is_relative_to(self.runtime))
        if self.manager == "systemd":
            units = subprocess.run(["systemctl", "--user", "show", "*"], check=True,
                                   capture_output=True, text=True).stdout
            self.assertIn(str(holders[0].parent), units)
            self.assertNotIn(secret, units)
        wait_until("the job is gone", lambda: self.bootout(job) == SILENT)
        self.assertFalse(holders[0].exists())


if __name__ == "__main__":
    main()
