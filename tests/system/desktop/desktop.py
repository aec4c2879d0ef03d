"""A desktop of its own for a test: a display with or without window manager, tray and message bus, and
the built supervisor over a fleet that only exists on paper.

Only ever used inside the sandbox, where all processes are ours.
"""

import json
import os
import pathlib
import re
import shutil
import subprocess
import sys

SOURCE = pathlib.Path(__file__).resolve().parents[3]
sys.path.insert(0, str(SOURCE / "tests/system/program"))
from session import await_window_manager, command_lines, wait_until  # noqa: E402

DISPLAY = ":99"
BUS = "unix:path=/tmp/runtime/bus"

NAME = "com.ostrelleai.Varnhold"
SESSIONS = "org.gnome.SessionManager"
PORTAL = "org.freedesktop.portal.Desktop"
WATCHER = "org.kde.StatusNotifierWatcher"

# Stands for the service manager's tool: prints the job list of the moment and notes every call. An
# agent that is unloaded goes on for as long as there is a file "stubborn". Notes too what it inherits.
LAUNCHCTL = """#!/bin/sh
echo "$*" >>"$HOME/calls"
if [ -n "$XDG_ACTIVATION_TOKEN" ]; then touch "$HOME/inherited"; fi
if [ "$1" = bootout ]; then while [ -e "$HOME/stubborn" ]; do sleep 0.05; done; fi
if [ "$*" = list ]; then cat "$HOME/jobs"; fi
"""


def label_of(role):
    return f"com.ostrelleai.{role}.telegramd"


class Desktop:
    def __init__(self, build, manager=False, bus=False, screen="1280x800x24"):
        self.build = pathlib.Path(build)
        self.home = pathlib.Path(os.environ["HOME"])
        self.prefix = self.home / ".local"
        self.support = self.home / "Library/Application Support/Varnhold"
        self.environment = dict(os.environ, DISPLAY=DISPLAY)
        self.started = []
        self.supervisor = None
        for folder in ("bin", "libexec/varnhold"):
            (self.prefix / folder).mkdir(parents=True)
        self.support.mkdir(parents=True)
        for program in ("bin/varnhold", "libexec/varnhold/supervisor"):
            shutil.copy2(self.build / program, self.prefix / program)
        tool = self.prefix / "libexec/varnhold/launchctl"
        tool.write_text(LAUNCHCTL)
        tool.chmod(0o755)
        self.set_fleet({})

        if bus:
            self.environment["DBUS_SESSION_BUS_ADDRESS"] = BUS
            self.spawn("dbus-daemon", "--session", "--nofork", f"--address={BUS}")
            wait_until("the bus", lambda: self.bus_names())
        self.screen = self.start_display(screen)
        if manager:
            self.spawn("openbox")
            await_window_manager(self.tool)

    def start_display(self, screen):
        display = self.spawn("Xvfb", DISPLAY, "-screen", "0", screen, "-nolisten", "tcp",
                             "-noreset")  # or it starts anew when its first guest leaves
        wait_until("the display", lambda: self.tool("xdpyinfo").returncode == 0)
        return display

    # -- the fleet ------------------------------------------------------------------------------

    def set_fleet(self, states, paused=()):
        """Role to "running", "stopped" or "crashed", in order."""
        column = {"running": "4711\t0", "stopped": "-\t0", "crashed": "-\t1"}
        (self.home / "jobs").write_text("PID\tStatus\tLabel\n" + "".join(
            f"{column[state]}\t{label_of(role)}\n" for role, state in states.items()))
        bots = [{"icon": "🤖", "title": role.capitalize(), "token": "", "role": role,
                 "launchdLabel": label_of(role), "service": "Telegram",
                 "isPaused": role in paused} for role in states]
        (self.support / "bots.json").write_text(json.dumps(bots))

    def calls(self, word):
        """Calls of the service manager's tool that hold the word."""
        try:
            return [call for call in (self.home / "calls").read_text().splitlines() if word in call]
        except OSError:
            return []

    def burst(self, role):
        with open(f"/tmp/vh-{role}.log", "a", encoding="utf-8") as log:
            log.write("[PROCESS] [CHAIN] [MSG] [NOTIFY]\n")

    def notify(self, *notices):
        """Hands notices over as the daemons do: (message, affects a chain)."""
        part = self.support / "pending_model_notices.part"
        part.write_text(json.dumps([{"message": message, "in_chain": chain}
                                    for message, chain in notices]))
        part.rename(self.support / "pending_model_notices.json")

    # -- processes ------------------------------------------------------------------------------

    def spawn(self, *command, **more):
        child = subprocess.Popen([str(word) for word in command], env=self.environment,
                                 stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, **more)
        self.started.append(child)
        return child

    def start(self, *wrapper, **environment):
        """Starts the supervisor, by way of another command if one is given."""
        (self.home / "calls").unlink(missing_ok=True)
        self.supervisor = subprocess.Popen([*wrapper, self.prefix / "bin/varnhold"],
                                           env=dict(self.environment, **environment))
        self.started.append(self.supervisor)
        return self.supervisor

    def await_launched(self):
        """Waits until the launch-time start has been through the fleet and has been followed by a poll."""
        bots = len(json.loads((self.support / "bots.json").read_text()))
        def done():
            calls = self.calls("")
            started = [i for i, call in enumerate(calls) if call.startswith("bootstrap")]
            return len(started) >= bots and "list" in calls[started[-1]:]
        wait_until("the launch is over", done)

    def start_tray(self):
        tray = self.spawn("trayer", "--edge", "bottom", "--align", "right", "--widthtype", "request",
                          "--heighttype", "pixel", "--height", "24", "--SetDockType", "true")
        wait_until("the tray", lambda: self.windows("panel"))
        return tray

    def start_panel(self):
        """A panel that shows tray icons which describe themselves over the bus."""
        panel = self.spawn(self.build / "tests/fake_desktop", "panel")
        wait_until("the panel", lambda: WATCHER in self.bus_names())
        return panel

    def start_list(self):
        """A list of icons that nobody shows."""
        keeper = self.spawn(self.build / "tests/fake_desktop", "list")
        wait_until("the list", lambda: WATCHER in self.bus_names())
        return keeper

    def start_host(self):
        """One that shows icons of another's list, as some desktops have it."""
        host = self.spawn(self.build / "tests/fake_desktop", "host")
        wait_until("the host", lambda: "org.kde.StatusNotifierHost-" in self.bus_names())
        return host

    def start_portal(self):
        """Tells the wish for light, and for what set_wish says then."""
        portal = self.spawn(self.build / "tests/fake_desktop", "portal", stdin=subprocess.PIPE,
                            text=True)
        wait_until("the portal", lambda: PORTAL in self.bus_names())
        return portal

    def start_sessions(self):
        """A session manager, which ends the session when it is told."""
        manager = self.spawn(self.build / "tests/fake_desktop", "sessions", stdin=subprocess.PIPE,
                             text=True)
        wait_until("the session manager", lambda: SESSIONS in self.bus_names())
        return manager

    def session_guest(self):
        """Who has registered there last: name, and what it was started under."""
        return self.ask("get-property", SESSIONS, "/org/gnome/SessionManager", SESSIONS, "Guests")

    def start_dying(self):
        """What is left of a supervisor that has crashed, as long as the bus hasn't noticed."""
        dying = self.spawn(self.build / "tests/fake_desktop", "dying")
        wait_until("the name", lambda: NAME in self.bus_names())
        return dying

    @staticmethod
    def set_wish(portal, key, value):
        portal.stdin.write(f"{key} {value}\n")
        portal.stdin.flush()

    def end(self):
        for child in reversed(self.started):
            if child.poll() is None:
                child.kill()
            child.wait()

    def reset(self):
        """Clears the home for another desktop after this one's end."""
        # The bus has started it, and it writes there until it has noticed that the bus is gone.
        wait_until("no settings daemon", lambda: not any(
            "xfconfd" in line for line in command_lines().values()))
        shutil.rmtree(self.home)
        self.home.mkdir()

    def run_second(self, **environment):
        return subprocess.run([self.prefix / "bin/varnhold"],
                              env=dict(self.environment, **environment), check=False)

    def tool(self, *command):
        return subprocess.run([str(word) for word in command], env=self.environment,
                              capture_output=True, text=True, check=False)

    def bus_names(self):
        return self.tool("busctl", f"--address={BUS}", "list", "--no-legend").stdout

    def has_open(self, process, name):
        """Whether a process has a file of this name open."""
        try:
            files = [each.resolve() for each in pathlib.Path(f"/proc/{process.pid}/fd").iterdir()]
        except OSError:
            return False
        return any(file.name == name for file in files)

    def instances(self):
        return [pid for pid, line in command_lines().items() if "bin/varnhold" in line]

    # -- a tray icon over the bus ---------------------------------------------------------------

    def ask(self, *words):
        """Answer of a call on the bus as plain data; None if there is none."""
        done = self.tool("busctl", f"--address={BUS}", "--json=short", "--", *words)
        return json.loads(done.stdout)["data"] if done.returncode == 0 and done.stdout else None

    def notifier(self):
        """Name on the bus of the tray icon that has announced itself last."""
        def last():
            items = self.ask("get-property", WATCHER, "/StatusNotifierWatcher", WATCHER,
                             "RegisteredStatusNotifierItems")
            return re.split("[@/]", items[-1])[0] if items else None  # some name the object too
        return wait_until("a tray icon", last)

    def notifier_property(self, name):
        return self.ask("get-property", self.notifier(), "/StatusNotifierItem",
                        "org.kde.StatusNotifierItem", name)

    def menu_call(self, method, *words):
        path = self.notifier_property("Menu")
        return self.ask("call", self.notifier(), path, "com.canonical.dbusmenu", method, *words)

    def exported_rows(self):
        """Rows of the menu as the panel gets them: id and properties."""
        _, (_, _, rows) = self.menu_call("GetLayout", "iias", "0", "-1", "0")
        return [(row["data"][0], {name: value["data"] for name, value in row["data"][1].items()})
                for row in rows]

    def exported_labels(self):
        return [row.get("label", "-") for _, row in self.exported_rows()]

    def click_exported(self, label):
        row = next(number for number, row in self.exported_rows() if row.get("label") == label)
        self.menu_call("Event", "isvu", str(row), "clicked", "s", "", "0")

    # -- what is on the screen ------------------------------------------------------------------

    def windows(self, name):
        return self.tool("xdotool", "search", "--onlyvisible", "--name", name).stdout.split()

    def strip(self, words="^Varnhold, "):
        return wait_until(f'the strip that says "{words}"', lambda: self.windows(words))[0]

    def geometry(self, window):
        """Left, top, width and height on the screen, without any frame."""
        said = self.tool("xwininfo", "-id", window).stdout
        found = [re.search(rf"{name}: +(-?\d+)", said)
                 for name in ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")]
        return tuple(int(each.group(1)) for each in found) if all(found) else (0, 0, 0, 0)

    def set_screen(self, width, height):
        """Another size for the screen; no larger than it was at first."""
        for words in (("--newmode", "small", "0", width, 0, 0, width, height, 0, 0, height),
                      ("--addmode", "screen", "small"), ("--output", "screen", "--mode", "small")):
            done = self.tool("xrandr", *words)
            assert done.returncode == 0, done.stderr

    def our_windows(self):
        return self.tool("xdotool", "search", "--onlyvisible", "--class", "varnhold").stdout.split()

    def menus(self):
        return self.windows("^Varnhold menu$")

    def click(self, x, y, button=1):
        self.tool("xdotool", "mousemove", x, y, "click", button)

    def click_window(self, window, button=1):
        x, y, width, height = self.geometry(window)
        self.click(x + width // 2, y + height // 2, button)

    def key(self, *keys):
        self.tool("xdotool", "key", *keys)

    def pixels(self, window):
        """Red, green and blue of every pixel of a window, row by row."""
        _, _, width, height = self.geometry(window)
        raw = subprocess.run(["import", "-window", window, "-depth", "8", "rgb:-"],
                             env=self.environment, capture_output=True, check=False).stdout
        if len(raw) != width * height * 3:
            return []
        return [tuple(raw[i:i + 3]) for i in range(0, len(raw), 3)]

    def focused(self):
        return self.tool("xdotool", "getwindowfocus").stdout.strip()

    def coloured(self, window):
        """How many pixels of a window are of a strong colour."""
        return sum(max(pixel) - min(pixel) > 100 for pixel in self.pixels(window))

    def is_dark(self, window):
        pixels = self.pixels(window)
        return bool(pixels) and sum(map(sum, pixels)) < len(pixels) * 3 * 128

    def picture(self, path):
        self.tool("import", "-window", "root", path)
