"""The process around a bot: arguments, log, clock and signals."""

import argparse
import os
import signal
import sys
import time
from pathlib import Path

from provider_telegramd import surroundings
from provider_telegramd.daemon import Daemon

# How long a control file may lie there before it is looked at.
_LOOK_SECONDS = 0.15

_STDOUT = 1


def write_log(*lines: str) -> None:
    """Appends lines with the time of day, in one write, so that a reader never meets half a line.

    Only ASCII goes out. A full disk or a reader that went away is no reason for a bot to die.
    """
    stamp = time.strftime("%H:%M:%S")
    text = "".join(f"{stamp} {line}\n" for line in lines)
    try:
        os.write(_STDOUT, text.encode("ascii", "backslashreplace"))
    except OSError:
        pass


def main() -> int:
    """Runs one bot until it is asked to end. Gives the exit status.

    SIGTERM and SIGINT must be blocked already: they are waited for here, never delivered.
    """
    options = _parse_arguments()
    root = os.environ.get("DAEMON_DATA_DIR", "")
    if root == "":
        print("DAEMON_DATA_DIR must name the shared data folder", file=sys.stderr)
        return 2
    try:
        options.data_dir.mkdir(parents=True, exist_ok=True)
        surroundings.record(options.data_dir)
    except OSError as error:
        print(f"data folder can't be used: {error.strerror}", file=sys.stderr)
        return 1
    home = Path(os.environ.get("HOME", "/"))
    daemon = Daemon(options.dept, options.data_dir, Path(root), home, write_log)
    write_log(f"up as {options.dept!r}, pid {os.getpid()}")
    daemon.start()
    _run(daemon)
    daemon.close()
    write_log("asked to end, ending")
    return 0


def _parse_arguments() -> argparse.Namespace:
    parser = argparse.ArgumentParser(
        prog="provider_telegramd", description="A stand-in bot that needs no network.", allow_abbrev=False
    )
    parser.add_argument("--dept", required=True, help="the bot's department key")
    parser.add_argument("--data-dir", required=True, type=Path, help="the bot's own data folder")
    return parser.parse_args()


def _run(daemon: Daemon) -> None:
    while True:
        now = time.monotonic()
        daemon.turn(now)
        wait = min(_LOOK_SECONDS, daemon.seconds_to_next_step(now))
        caught = signal.sigtimedwait({signal.SIGTERM, signal.SIGINT}, wait)
        if caught is None:
            continue
        if caught.si_signo == signal.SIGINT or not daemon.stays_when_asked_to_end():
            return
        write_log("asked to end, staying")
