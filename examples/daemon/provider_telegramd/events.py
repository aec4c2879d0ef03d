"""The bot's side of the shared event database."""

import sqlite3
from collections import deque
from datetime import datetime, timezone
from pathlib import Path

# Many bots write here and the supervisor reads: whoever is held up longer than this lets go and
# tries again with its next event, rather than answering a request to end late.
_BUSY_SECONDS = 0.2

# The supervisor wants each bot's newest model only, and a file that is left alone for days
# should stay small, so each bot keeps no more than its latest rows.
_ROWS_KEPT = 100
_EVENTS_BETWEEN_TRIMS = 25

_WAITING_AT_MOST = 32

_SCHEMA = """CREATE TABLE IF NOT EXISTS agent_events (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    dept TEXT NOT NULL,
    model TEXT,
    kind TEXT NOT NULL,
    at TEXT NOT NULL)"""

# Each bot looks for rows of its own only.
_INDEX = "CREATE INDEX IF NOT EXISTS agent_events_of_dept ON agent_events (dept)"


class EventBook:
    """Records one bot's events. Nothing here raises: what can't be written now waits for the next event."""

    def __init__(self, path: Path, dept: str) -> None:
        self._path = path
        self._dept = dept
        self._connection: sqlite3.Connection | None = None
        self._waiting: deque[tuple] = deque(maxlen=_WAITING_AT_MOST)
        self._until_trim = 0

    def record(self, kind: str, model: str | None) -> str | None:
        """Writes this event and those that wait. Gives the reason when they have to wait on."""
        at = datetime.now(timezone.utc).isoformat(timespec="milliseconds")
        self._waiting.append((self._dept, model, kind, at))
        try:
            self._write_waiting()
        except sqlite3.Error as error:
            self.close()
            return str(error)
        return None

    def close(self) -> None:
        if self._connection is not None:
            self._connection.close()
            self._connection = None

    def _write_waiting(self) -> None:
        connection = self._connection = self._connection or self._open()
        with connection:
            connection.executemany(
                "INSERT INTO agent_events (dept, model, kind, at) VALUES (?, ?, ?, ?)", self._waiting
            )
            if self._until_trim <= 0:
                self._trim(connection)
        self._until_trim -= len(self._waiting)
        self._waiting.clear()

    def _open(self) -> sqlite3.Connection:
        connection = sqlite3.connect(self._path, timeout=_BUSY_SECONDS)
        try:
            # With a write-ahead log a writing bot never stands in the way of the reading supervisor.
            connection.execute("PRAGMA journal_mode=WAL")
            connection.execute("PRAGMA synchronous=NORMAL")
            connection.execute(_SCHEMA)
            connection.execute(_INDEX)
        except sqlite3.Error:
            connection.close()
            raise
        return connection

    def _trim(self, connection: sqlite3.Connection) -> None:
        connection.execute(
            "DELETE FROM agent_events WHERE dept = ? AND id <="
            " (SELECT id FROM agent_events WHERE dept = ? ORDER BY id DESC LIMIT 1 OFFSET ?)",
            (self._dept, self._dept, _ROWS_KEPT),
        )
        self._until_trim = _EVENTS_BETWEEN_TRIMS
