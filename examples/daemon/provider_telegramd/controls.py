"""Requests to a bot, made by putting a file of a known name into its data folder."""

import os
import time
from pathlib import Path

# A file that is empty and this young may still be waiting for its content (`echo 7 > crash`
# creates first and writes second), so it is left for the next look.
_SETTLING_SECONDS = 0.05


class Controls:
    """The control files of one data folder. A file that can't be read or removed is as good as absent."""

    def __init__(self, folder: Path) -> None:
        self._folder = folder

    def names(self) -> set[str]:
        """What lies in the folder now: one listing per look keeps a large fleet cheap."""
        try:
            return set(os.listdir(self._folder))
        except OSError:
            return set()

    def has(self, name: str) -> bool:
        return (self._folder / name).exists()

    def read(self, name: str) -> str | None:
        """The request's text without outer blanks, or None when there is no such request."""
        try:
            return (self._folder / name).read_text(encoding="utf-8", errors="replace").strip()
        except OSError:
            return None

    def take(self, name: str) -> str | None:
        """As `read`, but the file is consumed; None also while it looks half-written."""
        path = self._folder / name
        text = self.read(name)
        try:
            if text is None or (text == "" and 0 <= _age(path) < _SETTLING_SECONDS):
                return None
            path.unlink()
        except OSError:
            return None
        return text


def _age(path: Path) -> float:
    return time.time() - path.stat().st_mtime


def number_or(text: str, default: int, most: int) -> int:
    """The whole number that `text` holds; `default` for any other text and for one above `most`."""
    if text.isascii() and text.isdigit() and int(text) <= most:
        return int(text)
    return default
