"""Reading and writing the small files that bots and supervisor share."""

import json
import os
from pathlib import Path
from typing import Any


def read_json(path: Path) -> Any:
    """The file's JSON value, or None when it is missing or can't be understood.

    The supervisor writes most files in place, so a bot may meet one half-written: that is an
    ordinary moment, not an error.
    """
    try:
        return json.loads(path.read_text(encoding="utf-8"))
    except (OSError, ValueError):
        return None


def compact_json(value: Any) -> str:
    """One line without blanks, in the form that the supervisor itself writes."""
    return json.dumps(value, ensure_ascii=False, separators=(",", ":"))


def write_atomically(path: Path, text: str, mode: int = 0o666) -> None:
    """Puts `text` at `path` by rename, so that no reader ever sees a part of it.

    Makes the parent folder if need be. `mode` is narrowed by the umask. Raises OSError.
    """
    path.parent.mkdir(parents=True, exist_ok=True)
    # The leading dot keeps the draft out of the way of whoever watches the folder.
    draft = path.with_name(f".{path.name}.{os.getpid()}")
    handle = os.open(draft, os.O_WRONLY | os.O_CREAT | os.O_TRUNC, mode)
    with os.fdopen(handle, "w", encoding="utf-8", newline="") as file:
        file.write(text)
    os.replace(draft, path)
