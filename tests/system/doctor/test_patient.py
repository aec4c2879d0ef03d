"""The doctor beside a fleet that runs: what it finds, what it never prints, and what it never does.

Each test runs in a sandbox of its own: test_patient.py BUILD_FOLDER TEST_NAME
"""

import json
import os
import pathlib
import pty
import re
import select
import shutil
import sqlite3
import subprocess
import sys
import time

sys.path.append(str(pathlib.Path(__file__).resolve().parents[1] / "services"))
from harness import BUILD, DOMAIN, SILENT, ServicesCase, main, wait_until  # noqa: E402

import homes  # noqa: E402

DOCTOR = BUILD / "bin/varnhold-doctor"
FIRE_DRILL = "com.ostrelleai.fire-drill.telegramd"
WRITING = re.compile(r"O_(WRONLY|RDWR|CREAT|TRUNC|APPEND)")
CHANGING = re.compile(
    r"^(unlink|rename|mkdir|rmdir|link|symlink|mknod|chmod|fchmod|chown|fchown|lchown|truncate|"
    r"ftruncate|fallocate|utime|futime|setxattr|removexattr|kill|tkill|tgkill|pidfd_send_signal)")


class PatientTest(ServicesCase):
    def setUp(self):
        super().setUp()
        homes.lay(homes.sample)
        # The daemon code lies where the program looks for it.
        self.prefix = pathlib.Path("/tmp/prefix")
        shutil.copytree(BUILD / "libexec", self.prefix / "libexec")
        (self.prefix / "bin").mkdir()
        shutil.copy(DOCTOR, self.prefix / "bin")
        self.tools = self.prefix / "libexec/varnhold"
        self.resources = self.prefix / "lib/varnhold/Contents/Resources/daemon"
        shutil.copytree(homes.SOURCE / "examples/daemon", self.resources)

    def tearDown(self):
        for label in self.jobs():
            self.launchctl("bootout", f"{DOMAIN}/{label}")
        super().tearDown()

    def load(self, role, **values):
        record = next(bot for bot in homes.read("bots.json") if bot["role"] == role)
        path = homes.property_list(record, str(self.resources), **values)
        self.assertEqual(self.launchctl("bootstrap", DOMAIN, str(path)), SILENT)

    def doctor(self, *words, env=None):
        return subprocess.run([self.prefix / "bin/varnhold-doctor", *words], check=False, text=True,
                              capture_output=True, stdin=subprocess.DEVNULL, env=env)

    def findings(self, *words):
        report = json.loads(self.doctor("--json", *words).stdout)
        return [finding for check in report["checks"] for finding in check["findings"]]

    def watched(self, until, size="24 100", keys=b"q"):
        """What a terminal shows until it holds a text, and how the program ended."""
        pid, terminal = pty.fork()
        if pid == 0:
            os.environ["TERM"] = "xterm-256color"
            rows, columns = size.split()
            os.system(f"stty rows {rows} cols {columns}")
            os.execv(self.prefix / "bin/varnhold-doctor", ["varnhold-doctor", "watch"])
        shown = b""
        end = time.monotonic() + 60
        while until not in shown and time.monotonic() < end:
            if select.select([terminal], [], [], 1)[0]:
                shown += os.read(terminal, 65536)
        os.write(terminal, keys)
        try:
            while data := os.read(terminal, 65536):
                shown += data
        except OSError:  # the other side has gone
            pass
        return shown.decode(), os.waitstatus_to_exitcode(os.waitpid(pid, 0)[1])

    # -- what it finds ----------------------------------------------------------------------------

    def test_the_bot_that_crashes_is_named_with_its_exit_code(self):
        for role in ("planner", "fire-drill"):
            self.load(role)
        wait_until("Fire Drill has crashed", lambda: self.jobs().get(FIRE_DRILL) == (None, 1))
        said = self.doctor("fleet")
        self.assertEqual(said.returncode, 2)
        self.assertRegex(said.stdout, r"✗ fault   Fire Drill +\[bot-(crashed|flapping)\]\n"
                                      r".*ended with\s+exit code 1")
        self.assertIn("crashing on request with status 1", said.stdout)
        report = json.loads(self.doctor("--json", "fleet").stdout)["checks"][0]
        rows = {row["role"]: row for row in report["bots"]}
        self.assertEqual(rows["planner"]["state"], "running")
        self.assertEqual(rows["planner"]["manager"], self.manager)
        self.assertEqual(rows["planner"]["pid"],
                         self.jobs()["com.ostrelleai.planner.telegramd"][0])
        self.assertEqual(rows["night-watch"]["state"], "paused")
        self.assertGreaterEqual(rows["fire-drill"]["starts"], 1)

    def test_why_a_daemon_could_not_be_started_is_told(self):
        self.load("planner", ProgramArguments=["/nowhere/python3"])
        wait_until("it can't be started",
                   lambda: self.jobs().get("com.ostrelleai.planner.telegramd") == (None, 78))
        found = [each for each in self.findings("fleet") if each["id"] == "bot-not-spawned"]
        self.assertEqual([each["sentence"] for each in found], [
            "The daemon can't be started at all: /nowhere/python3: No such file or directory."])

    def test_an_agent_with_an_old_key_is_outdated(self):
        self.load("planner")
        auth = homes.read("auth_config.json")
        homes.write("auth_config.json", auth | {"openaiKey": "another", "mistralKey": "new-one"})
        found = [each for each in self.findings("fleet") if each["id"] == "agent-outdated"]
        self.assertEqual([each["sentence"] for each in found], [
            "What it was started with is out of date: MISTRAL_API_KEY is new and OPENAI_API_KEY has "
            "changed."])

    # -- what it never prints ---------------------------------------------------------------------

    def test_secrets_appear_in_no_output(self):
        secrets = {name: f"hidden/{name}+0123 value" for name in (
            "token", "other-token", "anthropicKey", "openaiKey", "oauth", "variable", "kept",
            "loaded", "stray", "broken")}
        bots = homes.read("bots.json")
        bots[0]["token"] = secrets["token"]
        bots[0]["title"] = f"Planner {secrets['token']}"
        bots[1]["token"] = secrets["other-token"]
        bots[1]["role"] = secrets["other-token"]
        homes.write("bots.json", bots)
        auth = homes.read("auth_config.json")
        auth |= {key: secrets[key] for key in ("anthropicKey", "openaiKey")}
        auth["oauthTokens"] = {"claude": secrets["oauth"], secrets["oauth"]: 5}
        homes.write("auth_config.json", auth)
        homes.write("worker_preferences.json", '[{"id": "x", "apiKey": "' + secrets["broken"] +
                    '", "name": "' + secrets["broken"] + '", "family": ')
        homes.write("photo_preferences.json",
                    [homes.model("m", secrets["anthropicKey"]) | {"name": secrets["openaiKey"]}])
        defaults = homes.HOME / ".config/OstrelleAI/Varnhold.conf"
        defaults.parent.mkdir(parents=True)
        defaults.write_text(f"[General]\napi_key_google=\"{secrets['kept']}\"\n")
        stray = dict(bots[0], launchdLabel="com.ostrelleai.stray.telegramd", token=secrets["stray"])
        homes.property_list(stray, str(self.resources))
        say = "; ".join(f"echo '{text}' >&2; echo 'api_key={text[:9]} rest'"
                        for text in secrets.values())
        self.load("planner", ProgramArguments=["/bin/sh", "-c", f"{say}; exit 3"],
                  EnvironmentVariables={"SOME_TOKEN": secrets["loaded"]})
        wait_until("it has crashed",
                   lambda: self.jobs().get("com.ostrelleai.planner.telegramd") == (None, 3))
        env = os.environ | {"MY_API_KEY": secrets["variable"]}
        outputs = [self.doctor(*words, env=env) for words in (
            (), ("--json",), ("--without", "claude"), ("--without", secrets["openaiKey"]),
            ("--json", "--without", "claude"))]
        self.assertIn("exit code 3", outputs[0].stdout)
        self.assertIn("••••", outputs[0].stdout)
        watched, code = self.watched(b"Fire Drill")
        self.assertEqual(code, 0)
        for text in [watched] + [out.stdout + out.stderr for out in outputs]:
            squeezed = re.sub(r"[\s│]+", " ", text)
            for secret in secrets.values():
                self.assertNotIn(secret, squeezed)
                self.assertNotIn(json.dumps(secret)[1:-1], squeezed)

    # -- what it never does -----------------------------------------------------------------------

    def check_trace(self, *words):
        trace = pathlib.Path("/tmp/trace")
        subprocess.run(["strace", "-f", "-s", "300", "-o", trace, self.prefix / "bin/varnhold-doctor",
                        *words], check=False, capture_output=True, stdin=subprocess.DEVNULL)
        lines = [line.split(None, 1) for line in trace.read_text().splitlines()]
        tool = str(self.tools / "launchctl")
        listing = {pid for pid, call in lines if call.startswith(f'execve("{tool}"')}
        calls = [call for pid, call in lines if pid not in listing]
        self.assertGreater(len(calls), 100)
        for call in calls:
            if call.startswith(("open(", "openat(", "creat(", "openat2(")):
                self.assertNotRegex(call, WRITING)
            self.assertNotRegex(call, CHANGING)
        started = [call for _, call in lines if call.startswith("execve(")]
        self.assertEqual(len(started), 1 if words[:1] == ("files",) else 2, started)
        for call in started[1:]:
            self.assertIn(f'execve("{tool}", ["{tool}", "list"]', call)

    def test_nothing_is_written_signalled_or_started_but_the_listing(self):
        self.load("planner")
        wait_until("it has written", lambda: (homes.DATA / "governor.db").exists())
        # A daemon that has the database open keeps a log and an index of it beside the file.
        daemon = sqlite3.connect(homes.DATA / "governor.db")
        daemon.execute("PRAGMA journal_mode=WAL")
        daemon.execute("CREATE TABLE IF NOT EXISTS agent_events "
                       "(id INTEGER PRIMARY KEY, dept TEXT, model TEXT)")
        self.assertTrue((homes.DATA / "governor.db-shm").exists())
        # The display is asked beside the rest, in a thread of its own.
        os.environ["DISPLAY"] = ":98"
        self.addCleanup(os.environ.pop, "DISPLAY")
        display = subprocess.Popen(["Xvfb", ":98", "-nolisten", "tcp", "-noreset"],
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.addCleanup(display.wait)
        self.addCleanup(display.kill)
        wait_until("the display", lambda: "display-silent" not in [each["id"] for each in self.findings("system")])
        self.check_trace()
        self.assertIn("X98", pathlib.Path("/tmp/trace").read_text())
        daemon.close()
        self.check_trace("--json")
        self.check_trace("files")

    def test_a_pipe_in_a_files_place_holds_nobody_up(self):
        (homes.DATA / "bots.json").unlink()
        os.mkfifo(homes.DATA / "bots.json")
        self.assertEqual(self.doctor().returncode, 2)

    # -- watching ---------------------------------------------------------------------------------

    def test_watching_shows_the_fleet_and_ends_on_q(self):
        self.load("planner")
        wait_until("it runs", lambda: self.jobs()["com.ostrelleai.planner.telegramd"][0])
        shown, code = self.watched(b"Fire Drill")
        self.assertEqual(code, 0)
        self.assertRegex(shown, r"Varnhold 1/6")
        self.assertRegex(shown, r"Planner +running")
        self.assertTrue(shown.startswith("\x1b[?1049h\x1b[?25l"))
        self.assertTrue(shown.endswith("\x1b[?25h\x1b[?1049l"), shown[-80:])

    def test_watching_ends_on_a_signal_and_gives_the_terminal_back(self):
        shown, code = self.watched(b"Fire Drill", keys=b"\x03")
        self.assertEqual(code, 0)
        self.assertTrue(shown.endswith("\x1b[?25h\x1b[?1049l"), shown[-80:])

    def test_watching_needs_a_terminal(self):
        said = self.doctor("watch")
        self.assertEqual((said.returncode, said.stdout), (64, ""))
        self.assertIn("needs a terminal", said.stderr)


if __name__ == "__main__":
    main()
