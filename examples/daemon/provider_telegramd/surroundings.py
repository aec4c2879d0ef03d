"""What reached this bot from whoever started it, written down for tests to read."""

import json
import os
import sys
from datetime import datetime, timezone
from pathlib import Path

from provider_telegramd.files import write_atomically

FILE_NAME = "environment.json"


def record(data_dir: Path) -> None:
    """Writes `environment.json` into the data folder. Raises OSError."""
    value = {
        "pid": os.getpid(),
        "parentPid": os.getppid(),
        "argv": sys.orig_argv,
        "cwd": _working_folder(),
        "startedAt": datetime.now(timezone.utc).isoformat(timespec="milliseconds"),
        "environment": _environment_at_start(),
    }
    # Keys and tokens stand in there: readable by the owner alone.
    write_atomically(data_dir / FILE_NAME, json.dumps(value, indent=2), mode=0o600)


def _environment_at_start() -> dict[str, str]:
    """The environment exactly as given at start.

    The kernel's copy is preferred, because the interpreter adds a locale variable of its own to
    an environment that names none, and nobody but the starter should have a say here.
    """
    try:
        block = Path("/proc/self/environ").read_bytes()
    except OSError:
        return dict(os.environ)
    pairs = [entry.partition(b"=") for entry in block.split(b"\0") if entry]
    return {os.fsdecode(name): os.fsdecode(value) for name, _, value in pairs}


def _working_folder() -> str | None:
    try:
        return os.getcwd()
    except OSError:
        return None
