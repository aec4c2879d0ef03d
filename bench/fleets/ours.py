"""Varnhold, measured as its peers are: its fleet operations by themselves, then the whole program."""

import json
import shutil
import signal
import sys
import time

from alive import Alive
from peers import HERE, HOME, Peer, run
from processes import idle_cpu, megabytes

sys.path.append(str(HERE.parent.parent / "tests/system/program"))
from session import Session, label_of  # noqa: E402
from user_manager import start_session_bus, start_user_manager  # noqa: E402

PREFIX = HOME / "prefix"
SUPPORT = HOME / "Library/Application Support/Varnhold"


def lay_bots(count):
    roles = [f"bench{number:04}" for number in range(count)]
    SUPPORT.mkdir(parents=True, exist_ok=True)
    (SUPPORT / "bots.json").write_text(json.dumps([
        {"icon": "x", "title": role, "token": "", "role": role, "launchdLabel": label_of(role),
         "service": "Telegram"} for role in roles]))
    (SUPPORT / "chain_bot_assignments.json").write_text("{}")


class Varnhold(Peer):
    name = "Varnhold on s6"
    restarts = True

    def prepare(self, count):
        """Laid out as it is installed: the agents' folder is that of the daemon code."""
        if not PREFIX.exists():
            shutil.copytree(self.build / "libexec", PREFIX / "libexec")
            (PREFIX / "bin").mkdir()
            shutil.copy(self.build / "bench/bench_fleet", PREFIX / "bin")
            (PREFIX / "lib/daemon").mkdir(parents=True)
        lay_bots(count)
        self.list = (PREFIX / "libexec/varnhold/launchctl", "list")

    def fleet(self, word):
        run(PREFIX / "bin/bench_fleet", word)

    def start(self):
        self.fleet("start")

    def restart(self):
        self.fleet("restart")

    def stop(self):
        self.fleet("quit")


class VarnholdOnSystemd(Varnhold):
    name = "Varnhold on systemd"
    sandbox = "in-user-session"
    manager = None

    def prepare(self, count):
        if VarnholdOnSystemd.manager is None:
            start_session_bus()
            VarnholdOnSystemd.manager = start_user_manager()
        super().prepare(count)


def measure_program(build, count, idle_seconds):
    """The built program on a display, from its start to its end."""
    for former in (".local", "Library"):
        shutil.rmtree(HOME / former, ignore_errors=True)
    session = Session(str(build), 0)
    lay_bots(count)
    alive = Alive()
    try:
        begin = time.monotonic_ns()
        supervisor = session.start()
        alive.await_count(count)
        figures = {"launch": alive.since(begin)}
        session.await_title(f"{count} of {count} bots running")
        time.sleep(3)  # the strip and its bars come to rest
        figures["memory"] = megabytes()
        figures["memory_of_program"] = megabytes([supervisor.pid])
        figures["idle"] = idle_cpu(idle_seconds)
        begin = time.monotonic_ns()
        supervisor.send_signal(signal.SIGTERM)
        supervisor.wait(600)
        figures["quit_program"] = (time.monotonic_ns() - begin) / 1e9
        alive.await_count(0)
        return figures
    finally:
        (SUPPORT / "bots.json").write_text("[]")
        session.end()
