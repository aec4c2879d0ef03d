"""Where each failover chain stands: which of its models is tried first.

The positions are one small file that all bots share. The supervisor puts them back during a full
restart, in a moment when no bot runs.
"""

import os
from datetime import datetime, timezone
from pathlib import Path

from provider_telegramd.files import compact_json, read_json, write_atomically

CHAIN_KEYS = ("architect", "worker", "photo", "video", "voice", "governor")


def reset_all_chain_positions() -> None:
    """Puts every chain of the folder that DAEMON_DATA_DIR names back to its first model.

    Each call leaves one line in `data/chain_resets.log`. Raises KeyError without the variable
    and OSError when the folder can't be written.
    """
    root = Path(os.environ["DAEMON_DATA_DIR"])
    _write_positions(root, dict.fromkeys(CHAIN_KEYS, 0))
    at = datetime.now(timezone.utc).isoformat(timespec="milliseconds")
    with open(root / "data" / "chain_resets.log", "a", encoding="ascii") as log:
        log.write(f"{at} all chain positions reset\n")


def read_positions(root: Path) -> dict[str, int]:
    """The position of each chain; 0 for a chain whose position is missing or makes no sense."""
    stored = read_json(_positions_file(root))
    if not isinstance(stored, dict):
        stored = {}
    return {key: value if _is_position(value := stored.get(key)) else 0 for key in CHAIN_KEYS}


def advance_position(root: Path, key: str, length: int) -> None:
    """Moves one chain of `length` models on by one, round to the first again. Raises OSError.

    Two bots that do so at once may lose one of the two moves; the next failure makes up for it.
    """
    positions = read_positions(root)
    positions[key] = (positions[key] + 1) % length
    _write_positions(root, positions)


def _is_position(value: object) -> bool:
    return type(value) is int and value >= 0


def _positions_file(root: Path) -> Path:
    return root / "data" / "chain_positions.json"


def _write_positions(root: Path, positions: dict[str, int]) -> None:
    write_atomically(_positions_file(root), compact_json(positions))
