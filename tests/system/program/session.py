"""One desktop session for a test: a home with the sample fleet, a display, and the built supervisor.

Only ever used inside the sandbox, where all processes are ours.
"""

import json
import os
import pathlib
import shutil
import signal
import subprocess
import sys

SOURCE = pathlib.Path(__file__).resolve().parents[3]
sys.path.append(str(SOURCE / "tests/system"))
from user_manager import start_session_bus, start_user_manager, wait_until  # noqa: E402

DISPLAY = ":99"


def command_lines():
    """Process id to command line of everything in the sandbox, zombies left out."""
    lines = {}
    for entry in pathlib.Path("/proc").iterdir():
        if not entry.name.isdigit():
            continue
        try:
            words = (entry / "cmdline").read_bytes().split(b"\0")
        except OSError:
            continue
        if words != [b""]:
            lines[int(entry.name)] = " ".join(word.decode(errors="replace") for word in words)
    return lines


def await_window_manager(tool):
    """Waits until a window manager acts on what it is asked, given a function that runs a tool.

    It tells that it is there before it is. What comes in between openbox reads and then lets lie until
    something else happens: a window that is mapped just then would never be seen.
    """
    for desk in ("1", "0"):
        def switched():
            tool("xdotool", "set_desktop", desk)
            return tool("xdotool", "get_desktop").stdout.strip() == desk
        wait_until("the window manager", switched)


class Session:
    def __init__(self, build, bots=None):
        """With the sample fleet, or with a number of plain bots instead."""
        self.is_under_systemd = os.environ.get("SERVICE_MANAGER") == "systemd"
        if self.is_under_systemd:
            start_session_bus()
            self.user_manager = start_user_manager()
        # The build folder is laid out like an installed prefix; a copy takes the daemon code in.
        self.home = pathlib.Path(os.environ["HOME"])
        self.prefix = self.home / ".local"
        for folder in ("bin", "libexec"):
            shutil.copytree(pathlib.Path(build) / folder, self.prefix / folder)
        shutil.copytree(SOURCE / "examples/daemon",
                        self.prefix / "lib/varnhold/Contents/Resources/daemon")
        fleet = [] if bots is None else ["--bots", str(bots)]
        subprocess.run([SOURCE / "examples/make_fleet.py", self.home, *fleet], check=True,
                       stdout=subprocess.DEVNULL)
        self.support = self.home / "Library/Application Support/Varnhold"
        self.environment = dict(os.environ, DISPLAY=DISPLAY)
        self.screen = subprocess.Popen(
            ["Xvfb", DISPLAY, "-screen", "0", "1400x1000x24", "-nolisten", "tcp", "-noreset"],
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        wait_until("the display", lambda: self.tool("xdpyinfo").returncode == 0)
        self.window_manager = subprocess.Popen(["openbox"], env=self.environment,
                                               stdout=subprocess.DEVNULL,
                                               stderr=subprocess.DEVNULL)
        await_window_manager(self.tool)
        self.supervisor = None

    # -- the supervisor -------------------------------------------------------------------------

    def start(self):
        self.supervisor = subprocess.Popen([self.prefix / "bin/varnhold"], env=self.environment)
        return self.supervisor

    def end(self):
        """Ends what a test has left; a test of Quit has nothing left by then."""
        if self.supervisor and self.supervisor.poll() is None:
            self.supervisor.kill()
            self.supervisor.wait()
        for bot in self.bots():
            self.launchctl("bootout", f"gui/{os.getuid()}/{bot['launchdLabel']}")
        for process in (self.window_manager, self.screen):
            process.kill()
            process.wait()

    def await_title(self, words):
        """Waits until the strip says the words, as in "4 of 6 bots running"."""
        return wait_until(f'the strip says "{words}"', lambda: self.windows(words))

    # -- desktop tools --------------------------------------------------------------------------

    def tool(self, *command):
        return subprocess.run([str(word) for word in command], env=self.environment,
                              capture_output=True, text=True, check=False)

    def windows(self, name):
        return self.tool("xdotool", "search", "--onlyvisible", "--name", name).stdout.split()

    def close_window(self, window):
        """As the close button of a window manager does, which has to be running."""
        self.tool("wmctrl", "-i", "-c", window)

    def open_menu(self):
        strip = wait_until("the strip", lambda: self.windows("^Varnhold, "))[0]
        before = set(self.all_windows())
        self.tool("xdotool", "mousemove", "--window", strip, "20", "14", "click", "1")
        wait_until("the menu", lambda: set(self.all_windows()) - before)

    def all_windows(self):
        return self.tool("xdotool", "search", "--onlyvisible", "--class", ".").stdout.split()

    def choose(self, row):
        """Opens the menu and chooses the row, counted from 1 over those that can be chosen."""
        self.open_menu()
        self.tool("xdotool", "key", *["Down"] * row, "Return")

    # -- the fleet ------------------------------------------------------------------------------

    def launchctl(self, *arguments):
        return self.tool(self.prefix / "libexec/varnhold/launchctl", *arguments)

    def jobs(self):
        """Label to (process id or None, last status) of every loaded job."""
        rows = self.launchctl("list").stdout.splitlines()[1:]
        jobs = {}
        for row in rows:
            pid, status, label = row.split("\t")
            jobs[label] = (None if pid == "-" else int(pid), int(status))
        return jobs

    def pid_of(self, role):
        return self.jobs().get(label_of(role), (None, 0))[0]

    def bots(self):
        return json.loads((self.support / "bots.json").read_text())

    def surroundings(self, role):
        """What the agent wrote down of itself at its start; None before it has."""
        try:
            return json.loads((self.support / "data" / role / "environment.json").read_text())
        except OSError:
            return None

    def control(self, role, name, content=""):
        folder = self.support / "data" / role
        folder.mkdir(parents=True, exist_ok=True)
        (folder / name).write_text(content)

    def await_up(self, role, other_than=None):
        """Waits until the agent runs and has come to itself, with another process id if one is given."""
        def up():
            pid = self.pid_of(role)
            found = self.surroundings(role)
            return pid if pid and pid != other_than and found and found["pid"] == pid else None
        return wait_until(f"{role} is up", up)


def label_of(role):
    return f"com.ostrelleai.{role}.telegramd"


def agents():
    return {pid: line for pid, line in command_lines().items() if "provider_telegramd" in line}


def send(pid, number=signal.SIGKILL):
    os.kill(pid, number)
