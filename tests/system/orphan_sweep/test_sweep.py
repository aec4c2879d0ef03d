"""The orphan sweep with real processes: whom it kills and whom it spares.

Each test runs in a sandbox and a process of its own: test_sweep.py BUILD_FOLDER TEST_NAME
"""

import os
import pathlib
import shutil
import subprocess
import sys
import time
import unittest

PREFIX = "/opt/homebrew/bin/"
DEADLINE = 60  # seconds; conditions are met in a fraction of it unless something is broken

# Plays a daemon: starts a tool under the given name, prints the tool's process id, and ends or stays.
PARENT = """
import os, pty, subprocess, sys
terminal = sys.argv[1] == "terminal"
stream = pty.openpty()[1] if terminal else subprocess.DEVNULL
def take_terminal():
    os.setsid()
    os.close(os.open(os.ttyname(0), os.O_RDWR))
# Whoever keeps the terminal open stays, so that the tool doesn't lose it.
if terminal and os.fork() == 0:
    os.close(1)
    import time
    time.sleep(600)
tool = subprocess.Popen(sys.argv[3:], executable=sys.argv[2], stdin=stream,
                        stdout=subprocess.DEVNULL, preexec_fn=take_terminal if terminal else None)
print(tool.pid, flush=True)
if sys.argv[1] == "stay":
    sys.stdin.read()
"""


def in_sandbox():
    # A private process namespace has the sandbox itself as its first process.
    return pathlib.Path("/proc/1/comm").read_text().strip() == "bwrap"


def state_of(pid):
    """Parent's process id and state letter, or nothing once the process is gone."""
    try:
        fields = pathlib.Path(f"/proc/{pid}/stat").read_text().rpartition(")")[2].split()
    except OSError:
        return None
    return int(fields[1]), fields[0]


def is_alive(pid):
    state = state_of(pid)
    return state is not None and state[1] not in "ZX"


def wait_until(what, condition):
    end = time.monotonic() + DEADLINE
    while not condition():
        if time.monotonic() > end:
            raise AssertionError(f"gave up waiting: {what}")
        time.sleep(0.01)


class SweepTest(unittest.TestCase):
    def start(self, words, mode, program="/usr/bin/sleep"):
        """Process id of a tool with this command line, and the daemon that started it."""
        if isinstance(words, str):
            words = [words, "600"]
        daemon = subprocess.Popen([sys.executable, "-c", PARENT, mode, program, *words], text=True,
                                  stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.addCleanup(daemon.communicate)
        tool = int(daemon.stdout.readline())
        wait_until("the tool has its name", lambda: self.has_name(tool, words[0]))
        return tool, daemon

    def has_name(self, pid, name):
        return pathlib.Path(f"/proc/{pid}/cmdline").read_bytes().startswith(name.encode() + b"\0")

    def orphan(self, words, mode="end", program="/usr/bin/sleep"):
        tool, daemon = self.start(words, mode, program)
        daemon.wait()
        wait_until("the tool is an orphan", lambda: state_of(tool)[0] == 1)
        return tool

    def sweep(self, *system):
        if not in_sandbox():
            raise AssertionError("only ever swept inside the sandbox")
        script = subprocess.run([f"{BUILD}/tests/print_orphan_sweep", *system], check=True, text=True,
                                stdout=subprocess.PIPE).stdout
        return subprocess.run(["/bin/sh", "-c", script], text=True, timeout=DEADLINE,
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE)

    def assert_killed(self, pid):
        wait_until(f"process {pid} is gone", lambda: not is_alive(pid))

    def test_kills_an_orphan_of_each_of_the_four_tools(self):
        orphans = [self.orphan(PREFIX + name) for name in ("claude", "gemini", "qwen", "codex")]
        self.sweep()
        for pid in orphans:
            self.assert_killed(pid)

    def test_kills_every_orphan_of_one_tool(self):
        orphans = [self.orphan(PREFIX + "claude") for _ in range(3)]
        self.sweep()
        for pid in orphans:
            self.assert_killed(pid)

    def test_spares_a_tool_whose_parent_lives(self):
        orphan = self.orphan(PREFIX + "claude")
        child, daemon = self.start(PREFIX + "claude", "stay")
        self.assertEqual(state_of(child)[0], daemon.pid)
        self.sweep()
        self.assert_killed(orphan)
        self.assertTrue(is_alive(child))
        self.assertIsNone(daemon.poll())

    def test_kills_the_child_once_its_parent_is_gone(self):
        child, daemon = self.start(PREFIX + "codex", "stay")
        self.sweep()
        self.assertTrue(is_alive(child))
        daemon.kill()
        daemon.wait()
        wait_until("the tool is an orphan", lambda: state_of(child)[0] == 1)
        self.sweep()
        self.assert_killed(child)

    def assert_spares(self, spared, *system):
        killed = self.orphan(PREFIX + "claude")
        self.sweep(*system)
        self.assert_killed(killed)
        for pid in spared:
            self.assertTrue(is_alive(pid))

    def test_spares_orphans_installed_elsewhere_or_named_otherwise(self):
        self.assert_spares([self.orphan(name) for name in
                            ("/opt/claude", "/opt/homebrew/bin/other", "/opt/homebrew/claude",
                             "/usr/bin/claude-desktop", "/srv/usr/local/bin/claude",
                             "/home/ada/.local/bin/codexctl", "/home/ada/local/bin/codex")])

    def test_of_a_mac_knows_no_other_place_than_its_own(self):
        self.assert_spares([self.orphan("/usr/local/bin/claude")], "mac")

    def test_kills_orphans_wherever_linux_has_them_installed(self):
        places = ("/home/ada/.local/bin/claude", "/usr/local/bin/gemini", "/usr/bin/qwen",
                  "/home/ada/.npm-global/bin/codex", "/home/ada/.npm/bin/codex",
                  "/home/ada/work/node_modules/.bin/gemini",
                  "/usr/lib/node_modules/@openai/codex/vendor/codex/codex",
                  "/home/ada/.nvm/versions/node/v22.1.0/bin/claude",
                  "/home/linuxbrew/.linuxbrew/bin/qwen", "/home/ada/.linuxbrew/bin/qwen")
        orphans = {place: self.orphan(place) for place in places}
        self.sweep()
        for pid in orphans.values():
            self.assert_killed(pid)

    def test_kills_an_orphan_whose_script_an_interpreter_runs(self):
        script = "/tmp/home/.nvm/versions/node/v22.1.0/bin/gemini"
        pathlib.Path(script).parent.mkdir(parents=True)
        pathlib.Path(script).write_text("import time\ntime.sleep(600)\n")
        orphan = self.orphan([sys.executable, script], program=sys.executable)
        self.sweep()
        self.assert_killed(orphan)

    def test_kills_an_orphan_that_was_started_by_its_bare_name(self):
        version = pathlib.Path("/tmp/home/.local/share/claude/versions/2.0.1")
        version.parent.mkdir(parents=True)
        shutil.copy("/usr/bin/sleep", version)
        orphan = self.orphan(["claude", "600"], program=str(version))
        self.sweep()
        self.assert_killed(orphan)

    def test_spares_a_tool_that_has_a_terminal_though_it_has_lost_its_parent(self):
        tool = self.orphan("/usr/local/bin/claude", "terminal")
        self.assert_spares([tool])

    def test_kills_orphans_whose_longer_names_begin_with_a_tools_name(self):
        orphan = self.orphan(PREFIX + "claude-helper")
        self.sweep()
        self.assert_killed(orphan)

    def test_kills_an_orphan_wherever_the_path_ends_like_this(self):
        orphan = self.orphan("/Users/ada/opt/homebrew/bin/qwen")
        self.sweep()
        self.assert_killed(orphan)

    def test_is_silent_where_there_is_nothing_to_sweep(self):
        swept = self.sweep()
        self.assertEqual((swept.returncode, swept.stdout, swept.stderr), (0, "", ""))


if __name__ == "__main__":
    if not in_sandbox():
        sys.exit("Only runs inside tests/system/in-sandbox: it ends processes by their names.")
    BUILD = sys.argv.pop(1)
    unittest.main()
