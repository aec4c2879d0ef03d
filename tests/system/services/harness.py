"""What every test of the service tools stands on: the tool, jobs made for a test, and what is seen of
them from outside. Only ever used inside a sandbox, where all processes are ours.
"""

import ctypes
import json
import os
import pathlib
import plistlib
import signal
import subprocess
import sys
import time
import typing
import unittest

HERE = pathlib.Path(__file__).resolve().parent
sys.path.append(str(HERE.parent))
from user_manager import DEADLINE, start_session_bus, start_user_manager, wait_until  # noqa: E402

DOMAIN = f"gui/{os.getuid()}"
ALREADY_LOADED = ("Bootstrap failed: 5: Input/output error\n"
                  "Try re-running the command as root for richer errors.\n")
NO_PROCESS = "Boot-out failed: 3: No such process\n"


def no_service(label):
    return f'Could not find service "{label}" in domain for port\n'


def now():
    """On the clock of the agents' own notes."""
    return time.clock_gettime(time.CLOCK_BOOTTIME)


def kill_after(seconds, tool):
    """Ends a tool by force in the midst of its work, wherever that is by then."""
    try:
        tool.communicate(timeout=seconds)
    except subprocess.TimeoutExpired:
        tool.kill()
        tool.communicate()


LIBC = ctypes.CDLL(None, use_errno=True)
LIBC.ptrace.argtypes = (ctypes.c_long, ctypes.c_long, ctypes.c_void_p, ctypes.c_void_p)
TRACE_ME, DETACH, NEXT_CALL, SET_OPTIONS, END_WITH_US = 0, 17, 24, 0x4200, 0x100000


def kill_at_stop(number, command):
    """Ends a tool by force at its Nth stop: it stops where it enters and leaves each system call.
    False if it is done before."""
    tool = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                            stderr=subprocess.DEVNULL,
                            preexec_fn=lambda: LIBC.ptrace(TRACE_ME, 0, None, None))
    os.waitpid(tool.pid, 0)
    LIBC.ptrace(SET_OPTIONS, tool.pid, None, END_WITH_US)
    for _ in range(number):
        LIBC.ptrace(NEXT_CALL, tool.pid, None, None)
        _, status = os.waitpid(tool.pid, 0)
        if not os.WIFSTOPPED(status):
            tool.returncode = os.waitstatus_to_exitcode(status)
            return False
    tool.kill()
    tool.wait()
    return True


def hold_at(condition, command):
    """Starts a tool and holds it up at the first system call at which the condition is met."""
    tool = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                            stderr=subprocess.PIPE,
                            preexec_fn=lambda: LIBC.ptrace(TRACE_ME, 0, None, None))
    os.waitpid(tool.pid, 0)
    while not condition():
        LIBC.ptrace(NEXT_CALL, tool.pid, None, None)
        _, status = os.waitpid(tool.pid, 0)
        if not os.WIFSTOPPED(status):
            raise AssertionError("the tool was done before the condition was met")
        time.sleep(0.005)  # others may have to act before it can be
    return tool


def let_go(tool):
    LIBC.ptrace(DETACH, tool.pid, None, None)


def processes():
    """Process id to command line of everything in the sandbox, zombies left out."""
    found = {}
    for entry in pathlib.Path("/proc").iterdir():
        if entry.name.isdigit():
            try:
                words = (entry / "cmdline").read_bytes().rstrip(b"\0").split(b"\0")
            except OSError:
                continue
            if words != [b""]:
                found[int(entry.name)] = [os.fsdecode(word) for word in words]
    return found


def is_alive(pid):
    return pid in processes()


def send(pid, number=signal.SIGKILL):
    os.kill(pid, number)


class Said(typing.NamedTuple):
    code: int
    out: str
    error: str


SILENT = Said(0, "", "")


class Job:
    """One property list with the stand-in agent, and what the agent noted of its starts."""

    def __init__(self, number, label, **values):
        self.label = label
        self.target = f"{DOMAIN}/{label}"
        self.folder = pathlib.Path(os.environ["HOME"]) / f"agent-{number}"
        self.folder.mkdir()
        self.log = self.folder / "out.log"
        self.error_log = self.folder / "error.log"
        self.path = self.folder / "job.plist"
        self.values = {
            "Label": label,
            "KeepAlive": True,
            "RunAtLoad": True,
            "EnvironmentVariables": {},
            "ProgramArguments": ["/usr/bin/python3", "-IS", str(HERE / "agent.py"),
                                 str(self.folder)],
            "WorkingDirectory": str(self.folder),
            "StandardOutPath": str(self.log),
            "StandardErrorPath": str(self.error_log),
        }
        self.write(**values)

    def write(self, **values):
        self.values |= values
        self.path.write_bytes(plistlib.dumps(self.values))

    def ask(self, name, content=""):
        (self.folder / name).write_text(content)

    def ask_no_more(self, name):
        (self.folder / name).unlink()

    def starts(self):
        try:
            return [json.loads(line) for line in (self.folder / "starts").read_text().splitlines()]
        except OSError:
            return []


class ServicesCase(unittest.TestCase):
    """Each test has a service manager of its own, and says everything through the tool."""

    def setUp(self):
        self.made = 0
        self.manager = MANAGER
        self.tools = BUILD / "libexec/varnhold"
        self.runtime = pathlib.Path(os.environ["XDG_RUNTIME_DIR"]) / "varnhold"
        if MANAGER == "systemd":
            start_session_bus()
            self.start_systemd()

    def start_systemd(self):
        self.systemd = start_user_manager()

    # -- doing ----------------------------------------------------------------------------------

    def job(self, label="com.example.agent", **values):
        self.made += 1
        return Job(self.made, label, **values)

    def command(self, *words):
        return [os.fsencode(self.tools / "launchctl"),
                *(os.fsencode(word) for word in words)]

    def launchctl(self, *words):
        done = subprocess.run(self.command(*words), stdin=subprocess.DEVNULL, check=False,
                              capture_output=True, timeout=4 * DEADLINE)
        return Said(done.returncode, os.fsdecode(done.stdout), os.fsdecode(done.stderr))

    def begin(self, *words):
        """As launchctl(), without waiting for it."""
        return subprocess.Popen(self.command(*words), stdin=subprocess.DEVNULL,
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE)

    def bootstrap(self, *jobs):
        return self.launchctl("bootstrap", DOMAIN, *(job.path for job in jobs))

    def bootout(self, job):
        return self.launchctl("bootout", job.target)

    def load(self, label="com.example.agent", **values):
        """A job that is loaded and up."""
        job = self.job(label, **values)
        self.assertEqual(self.bootstrap(job), SILENT)
        self.await_up(job)
        return job

    def load_crashing(self, label="com.example.agent", code=7, **values):
        """A job whose agent has ended at once and that waits for its next start."""
        job = self.job(label, **values)
        job.ask("exit", str(code))
        self.assertEqual(self.bootstrap(job), SILENT)
        self.await_row(job, (None, code))
        self.assertEqual(len(job.starts()), 1)
        return job

    # -- seeing ---------------------------------------------------------------------------------

    def jobs(self):
        """Label to (process id or None, last status) of every loaded job."""
        said = self.launchctl("list")
        self.assertEqual((said.code, said.error), (0, ""))
        header, *rows = said.out.splitlines()
        self.assertEqual(header, "PID\tStatus\tLabel")
        found = {}
        for row in rows:
            pid, status, label = row.split("\t")
            found[label] = (None if pid == "-" else int(pid), int(status))
        self.assertEqual(len(found), len(rows))
        return found

    def row(self, job):
        return self.jobs().get(job.label)

    def await_row(self, job, row):
        return wait_until(f"{job.label!r} is listed as {row}", lambda: self.row(job) == row)

    def await_up(self, job, other_than=None, deadline=DEADLINE):
        """Process id of the agent once it runs and has noted its start."""
        def up():
            starts = job.starts()
            row = self.row(job)
            pid = row[0] if row and starts and row[0] == starts[-1]["pid"] else None
            return pid if pid != other_than else None
        return wait_until(f"{job.label!r} is up", up, deadline)

    def agents(self):
        return {pid for pid, words in processes().items() if str(HERE / "agent.py") in words}

    def assert_nothing_is_left(self):
        self.assertEqual(self.jobs(), {})
        self.assertEqual(self.agents(), set())
        helpers = ("s6-svscan", "s6-supervise", "agent-exec", "launchctl")
        left = [words for words in processes().values()
                if any(helper in words[0] for helper in helpers)]
        self.assertEqual(left, [])
        files = [str(path.relative_to(self.runtime)) for path in self.runtime.rglob("*")]
        self.assertLessEqual(set(files), {"lock"})


def only(manager, reason):
    """For what is true of one service manager alone; docs/services.md tells why."""
    return unittest.skipIf(MANAGER != manager, reason)


def main():
    if not pathlib.Path("/proc/1/comm").read_text().startswith("bwrap"):
        sys.exit("Only runs inside a sandbox of tests/system: it ends what it finds.")
    result = unittest.main(verbosity=2, exit=False).result
    if result.skipped and len(result.skipped) == result.testsRun:
        sys.exit(77)  # for CTest, to which 0 would mean that something had passed
    sys.exit(not result.wasSuccessful())


BUILD = pathlib.Path(sys.argv.pop(1))
MANAGER = os.environ.get("SERVICE_MANAGER", "s6")
