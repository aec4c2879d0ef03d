"""What the tests of the stand-in share: a sandbox, bots as real processes, waiting with a deadline."""

import json
import os
import signal
import sqlite3
import subprocess
import sys
import tempfile
import time
import unittest
from collections.abc import Callable
from pathlib import Path

EXAMPLES = Path(__file__).resolve().parent.parent
DAEMON = EXAMPLES / "daemon"
FLEET = EXAMPLES / "fleet"

for folder in (DAEMON, EXAMPLES):
    if str(folder) not in sys.path:
        sys.path.insert(0, str(folder))

MARKERS = ("[PROCESS]", "[CHAIN]", "[NOTIFY]", "[MSG]")

LAST_MODELS = (
    "SELECT dept, model FROM agent_events a1 WHERE id = (SELECT MAX(id) FROM agent_events a2"
    " WHERE a1.dept = a2.dept AND model IS NOT NULL)"
)

_PATIENCE_SECONDS = 10


def wait_until(condition: Callable[[], object], what: str) -> object:
    """The condition's first true value. Fails with `what` when it takes too long."""
    deadline = time.monotonic() + _PATIENCE_SECONDS
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > deadline:
            raise AssertionError(f"waited in vain until {what}")
        time.sleep(0.01)


def count_markers(text: str) -> int:
    return sum(text.count(marker) for marker in MARKERS)


def is_alive(pid: int) -> bool:
    """False for a zombie, too: it has ended and only waits to be collected."""
    try:
        stat = Path(f"/proc/{pid}/stat").read_text()
    except OSError:
        return False
    return stat.rpartition(")")[2].split()[0] != "Z"


def model(model_id: str, key: str = "claude", family: str = "Anthropic", **more: str) -> dict:
    return {
        "id": model_id,
        "name": model_id.title(),
        "family": family,
        "color": "blue",
        "type": "cli",
        "provider_key": key,
        **more,
    }


class Bot:
    """One running stand-in and the files around it."""

    def __init__(self, process: subprocess.Popen, log: Path, data_dir: Path) -> None:
        self.process = process
        self.data_dir = data_dir
        self._log = log

    def log(self) -> str:
        return self._log.read_text(encoding="ascii")

    def wait_for_log(self, text: str) -> None:
        wait_until(lambda: text in self.log(), f"the log says {text!r}")

    def ask(self, name: str, content: str = "") -> None:
        (self.data_dir / name).write_text(content)

    def wait_consumed(self, name: str) -> None:
        wait_until(lambda: not (self.data_dir / name).exists(), f"{name} is consumed")

    def ended(self) -> int:
        return self.process.wait(timeout=_PATIENCE_SECONDS)

    def surroundings(self) -> dict:
        path = self.data_dir / "environment.json"
        wait_until(path.exists, "environment.json is written")
        return json.loads(path.read_text())

    def child(self) -> int:
        path = self.data_dir / "child.pid"
        wait_until(path.exists, "child.pid is written")
        return int(path.read_text())


class SandboxTest(unittest.TestCase):
    """A home folder of its own for each test, gone with it."""

    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.home = Path(folder.name) / "home"
        self.root = self.home / "Library/Application Support/Varnhold"
        (self.root / "data").mkdir(parents=True)

    def environment(self) -> dict[str, str]:
        """What a service manager hands to a bot, and nothing else."""
        return {
            "HOME": str(self.home),
            "PATH": "/usr/local/bin:/usr/bin:/bin",
            "PYTHONPATH": str(DAEMON),
            "DAEMON_RESOURCES": str(DAEMON),
            "DAEMON_DATA_DIR": str(self.root),
        }

    def data_dir(self, role: str) -> Path:
        return self.root / "data" / role

    def start(self, role: str = "atlas", **more: str) -> Bot:
        log = self.home / f"{role}.log"
        command = [sys.executable, "-m", "provider_telegramd", "--dept", role]
        with open(log, "ab") as output:
            process = subprocess.Popen(
                [*command, "--data-dir", str(self.data_dir(role))],
                env=self.environment() | more,
                cwd=DAEMON,
                stdin=subprocess.DEVNULL,
                stdout=output,
                stderr=output,
            )
        self.addCleanup(_end, process)
        return Bot(process, log, self.data_dir(role))

    def request_before_start(self, role: str, name: str, content: str = "") -> None:
        self.data_dir(role).mkdir(parents=True, exist_ok=True)
        (self.data_dir(role) / name).write_text(content)

    def end_at_cleanup(self, pid: int) -> None:
        def end() -> None:
            if is_alive(pid):
                os.kill(pid, signal.SIGKILL)

        self.addCleanup(end)

    def write_json(self, name: str, value: object) -> None:
        (self.root / name).write_text(json.dumps(value))

    def rows(self, sql: str = "SELECT id, dept, model, kind FROM agent_events ORDER BY id") -> list[tuple]:
        """The query's rows; none while there is no database to ask."""
        connection = sqlite3.connect(self.root / "governor.db")
        try:
            return connection.execute(sql).fetchall()
        except sqlite3.OperationalError:
            return []
        finally:
            connection.close()


def _end(process: subprocess.Popen) -> None:
    if process.poll() is None:
        process.kill()
    process.wait()
