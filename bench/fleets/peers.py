"""Other supervisors, each as its own handbook would have it look after trivial agents.

Each has: a name; `largest`, the largest fleet that it is asked for; missing(), what isn't installed;
prepare(), which does beforehand what no start should be charged with; start() and stop(), which return
when the peer's own command has; and the command of its own that lists the fleet.
"""

import json
import os
import pathlib
import shutil
import signal
import statistics
import subprocess
import sys
import time

HERE = pathlib.Path(__file__).resolve().parent
sys.path.append(str(HERE.parent.parent / "tests/system"))
from user_manager import start_session_bus, start_user_manager, wait_until  # noqa: E402

HOME = pathlib.Path(os.environ.get("HOME", "/"))


def run(*words, **more):
    return subprocess.run([str(word) for word in words], check=True, stdin=subprocess.DEVNULL,
                          stdout=subprocess.DEVNULL, **more)


class Peer:
    largest = 1000
    needs = ()
    daemon = None

    def __init__(self, build, agent):
        self.build, self.agent = build, agent

    def missing(self):
        return [name for name in self.needs if shutil.which(name) is None]

    def names(self, count):
        return [f"bench-{number:04}" for number in range(count)]

    def spawn(self, *words):
        self.daemon = subprocess.Popen([str(word) for word in words], stdin=subprocess.DEVNULL,
                                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def end_daemon(self, number):
        self.daemon.send_signal(number)
        self.daemon.wait()


class Floor(Peer):
    """Not a peer: processes started and ended, with nobody to look after them."""
    name = "bare posix_spawn"

    def prepare(self, count):
        self.count = count

    def start(self):
        self.daemon = subprocess.Popen([self.build / "bench/bench_floor", str(self.count), self.agent],
                                       stdin=subprocess.PIPE)

    def stop(self):
        self.daemon.communicate(b"\n")

    list = None


class Supervisord(Peer):
    """Told by its own client: as it starts by itself, it lets a second pass before it starts anything."""
    name = "supervisord"
    needs = ("supervisord", "supervisorctl")

    def prepare(self, count):
        if self.daemon:
            self.end_daemon(signal.SIGTERM)
        file, socket = HOME / "supervisord.conf", HOME / "supervisor.sock"
        lines = [f"[supervisord]\nnodaemon=true\nminfds=16384\nlogfile=/dev/null\nlogfile_maxbytes=0\n"
                 f"pidfile={HOME}/supervisord.pid\n[unix_http_server]\nfile={socket}\n"
                 "[rpcinterface:supervisor]\nsupervisor.rpcinterface_factory = "
                 "supervisor.rpcinterface:make_main_rpcinterface\n"
                 f"[supervisorctl]\nserverurl=unix://{socket}\n"]
        lines += [f"[program:{name}]\ncommand={self.agent}\nautostart=false\nstartsecs=0\n"
                  "stdout_logfile=/dev/null\nstderr_logfile=/dev/null\nstdout_logfile_maxbytes=0\n"
                  "stderr_logfile_maxbytes=0\n" for name in self.names(count)]
        file.write_text("".join(lines))
        self.spawn("supervisord", "-c", file)
        self.client = ("supervisorctl", "-c", file)
        self.list = (*self.client, "status")
        wait_until("supervisord answers", lambda: subprocess.run(
            [*self.client, "pid"], check=False, capture_output=True).returncode == 0)

    def start(self):
        run(*self.client, "start", "all")

    def stop(self):
        run(*self.client, "stop", "all")


class Pm2(Peer):
    name = "pm2"
    largest = 200  # a thousand take minutes

    @property
    def program(self):
        own = self.build / "peers/node_modules/.bin/pm2"
        return str(own) if own.exists() else shutil.which("pm2")

    def missing(self):
        return [] if self.program and shutil.which("node") else ["pm2"]

    def prepare(self, count):
        self.file = HOME / "fleet.json"
        self.file.write_text(json.dumps({"apps": [
            {"name": name, "script": str(self.agent), "interpreter": "none", "exec_mode": "fork",
             "out_file": "/dev/null", "error_file": "/dev/null"} for name in self.names(count)]}))
        run(self.program, "ping")
        self.list = (self.program, "jlist")

    def start(self):
        run(self.program, "start", self.file)

    def stop(self):
        run(self.program, "kill")


class ServiceFolders(Peer):
    """A folder with a script for each, as s6 and runit have them."""

    def prepare(self, count):
        self.folder = HOME / "services"
        shutil.rmtree(self.folder, ignore_errors=True)
        for name in self.names(count):
            script = self.folder / name / "run"
            script.parent.mkdir(parents=True)
            script.write_text(f"#!/bin/sh\nexec {self.agent}\n")
            script.chmod(0o755)


class S6(ServiceFolders):
    name = "s6"
    needs = ("s6-svscan", "s6-svstat")

    def prepare(self, count):
        super().prepare(count)
        self.list = ("/bin/sh", "-c", f"for job in {self.folder}/*; do s6-svstat -o up,pid,exitcode $job; done")

    def start(self):
        self.spawn("s6-svscan", "-c", "2000", self.folder)

    def stop(self):
        self.end_daemon(signal.SIGTERM)


class Runit(ServiceFolders):
    name = "runit"
    needs = ("runsvdir", "sv")

    def prepare(self, count):
        super().prepare(count)
        self.list = ("/bin/sh", "-c", f"sv status {self.folder}/*")

    def start(self):
        self.spawn("runsvdir", self.folder)

    def stop(self):
        self.end_daemon(signal.SIGHUP)


class Systemctl(Peer):
    """Units of the user manager, all in one command, which starts them side by side."""
    name = "systemctl --user"
    needs = ("systemctl",)
    sandbox = "in-user-session"
    manager = None

    def prepare(self, count):
        if Systemctl.manager is None:
            start_session_bus()
            Systemctl.manager = start_user_manager()
        folder = HOME / ".config/systemd/user"
        folder.mkdir(parents=True, exist_ok=True)
        self.units = [f"{name}.service" for name in self.names(count)]
        for unit in self.units:
            (folder / unit).write_text(f"[Service]\nExecStart={self.agent}\nRestart=always\n")
        run("systemctl", "--user", "daemon-reload")
        self.list = ("systemctl", "--user", "list-units", "--plain", "--no-legend", "bench-*")

    def start(self):
        run("systemctl", "--user", "start", *self.units)

    def stop(self):
        run("systemctl", "--user", "stop", *self.units)


PEERS = (Floor, Supervisord, Pm2, S6, Runit, Systemctl)


def listed(command, rounds=9, enough=2):
    """Median seconds of a listing. Of one that takes long, fewer rounds do: those of so many seconds."""
    if not command:
        return None
    times = []
    while len(times) < rounds and sum(times) < enough:
        begin = time.perf_counter()
        run(*command)
        times.append(time.perf_counter() - begin)
    return statistics.median(times)
