"""One bot: it obeys its control files and otherwise keeps its rhythm."""

import subprocess
import sys
from collections.abc import Callable
from pathlib import Path

from provider_telegramd import chains, rhythm
from provider_telegramd.controls import Controls, number_or
from provider_telegramd.events import EventBook
from provider_telegramd.files import write_atomically

_DEFAULT_BURST = 12
_MOST_MARKERS = 100_000
_HIGHEST_STATUS = 255

# The child has to take its signal mask back, which it inherits from a bot that holds its signals
# back. It ends by itself after an hour, so that a forgotten one doesn't stay for good.
_CHILD_CODE = "import signal, time; signal.pthread_sigmask(signal.SIG_SETMASK, []); time.sleep(3600)"
_OWN_NAME = "provider_telegramd"


class Daemon:
    """All that a bot does, apart from its process: the caller owns the clock, the signals and the log.

    `turn` is to be called every few moments with a clock that never goes back. It raises
    SystemExit when a control file asks for an end.
    """

    def __init__(self, dept: str, data_dir: Path, root: Path, home: Path, log: Callable[..., None]) -> None:
        self._dept = dept
        self._data_dir = data_dir
        self._root = root
        self._ping = home / "Library/Application Support/OstrelleAI/data" / dept / "keepalive_ping"
        self._ping_seen = self._ping_stamp()
        self._log = log
        self._controls = Controls(data_dir)
        self._book = EventBook(root / "governor.db", dept)
        self._steps = rhythm.steps(dept)
        self._next = next(self._steps)
        self._due: float | None = None
        self._silent = False
        self._replies = 0
        self._children: list[subprocess.Popen] = []

    def start(self) -> None:
        """The look at the controls that only a start takes. Raises SystemExit to crash."""
        text = self._controls.read("crash-at-start")
        if text is not None:
            self._crash(text)

    def turn(self, now: float) -> None:
        self._obey()
        self._answer_ping()
        if self._due is None:
            self._due = now + self._next.pause
        if now >= self._due:
            step, self._next = self._next, next(self._steps)
            # Counted from now: after a stopped or sleeping machine the missed steps aren't made up for.
            self._due = now + self._next.pause
            self._perform(step)

    def seconds_to_next_step(self, now: float) -> float:
        return 0.0 if self._due is None else max(0.0, self._due - now)

    def stays_when_asked_to_end(self) -> bool:
        """True while a request to end is to be passed over; looked up at the moment of the request."""
        return self._controls.has("ignore-sigterm")

    def close(self) -> None:
        self._book.close()

    def _obey(self) -> None:
        # Ended children are collected, or they would linger as zombies under a living bot.
        self._children = [child for child in self._children if child.poll() is None]
        asked = self._controls.names()
        if "crash" in asked and (text := self._controls.take("crash")) is not None:
            self._crash(text)
        if "leave-child" in asked and (text := self._controls.take("leave-child")) is not None:
            self._leave_child(text)
        if "failover" in asked and self._controls.take("failover") is not None:
            self._fail_over()
        self._fall_silent("silent" in asked)
        # A request for noise waits until the request for silence is withdrawn.
        if "burst" in asked and not self._silent and (text := self._controls.take("burst")) is not None:
            self._log(*rhythm.burst_lines(number_or(text, _DEFAULT_BURST, _MOST_MARKERS)))

    def _crash(self, text: str) -> None:
        status = number_or(text, 1, _HIGHEST_STATUS)
        self._log(f"crashing on request with status {status}")
        raise SystemExit(status)

    def _leave_child(self, text: str) -> None:
        # A word from the request may name the child, for sweeps that go by the command line; the
        # bot's own name may not, since the child is to be what a sweep for bots does not find.
        words = [word for word in text.split() if _OWN_NAME not in word]
        child = subprocess.Popen(
            [sys.executable, "-c", _CHILD_CODE, *words],
            stdin=subprocess.DEVNULL,
            stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL,
            cwd="/",
            env={},
            start_new_session=True,
        )
        self._children.append(child)
        write_atomically(self._data_dir / "child.pid", str(child.pid))
        self._log(f"left a child behind, pid {child.pid}")

    def _fail_over(self) -> None:
        try:
            chains.fail_over(self._root, self._dept)
        except OSError as error:
            self._log(f"failover not stored: {error.strerror}")

    def _fall_silent(self, silent: bool) -> None:
        if silent != self._silent:
            self._silent = silent
            self._log("falling silent on request" if silent else "speaking again")

    def _answer_ping(self) -> None:
        """Notes that the supervisor asked for a warm cache. The ping itself stays where it lies."""
        stamp = self._ping_stamp()
        if stamp is not None and stamp != self._ping_seen and not self._silent:
            self._log("keepalive ping answered")
            self._record("keepalive", with_model=True)
        self._ping_seen = stamp

    def _ping_stamp(self) -> int | None:
        try:
            return self._ping.stat().st_mtime_ns
        except OSError:
            return None

    def _perform(self, step: rhythm.Step) -> None:
        if self._silent:
            return
        self._log(step.text)
        if step.event is not None:
            self._record(step.event, step.with_model)

    def _record(self, kind: str, with_model: bool) -> None:
        model = None
        if with_model:
            model = chains.model_for(self._root, self._dept, self._replies)
            self._replies += 1
        reason = self._book.record(kind, model)
        if reason is not None:
            self._log(f"event not recorded yet: {reason}")
