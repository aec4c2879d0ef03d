#!/usr/bin/env python3
"""Lays the sample fleet into a home folder, ready for Varnhold to find.

Usage: make_fleet.py HOME_DIR [--bots N]

Without --bots it is the six sample bots with all their settings. With --bots N it is N plain bots
that keep the sample's chains and preferences, for trying out large fleets. A home that already
has any of the files is left as it is.
"""

import argparse
import json
import sys
from pathlib import Path

SAMPLE = Path(__file__).resolve().parent / "fleet"
SETTINGS_FOLDER = Path("Library/Application Support/Varnhold")
PING_FOLDER = Path("Library/Application Support/OstrelleAI/data")

MOST_BOTS = 999

_ICONS = "🦊🐢🦉🐝🦔🐙🦋🐳🦎🦥🦜🐌"

# Written for the sample's own bots, so a generated fleet gets its own or none.
_TIED_TO_SAMPLE_BOTS = ("bots.json", "chain_bot_assignments.json", "custom_groups.json")


class FleetExists(Exception):
    """The home already holds settings; the message names the first file that is in the way."""


def lay_fleet(home: Path, bots: int | None = None) -> Path:
    """Lays the fleet into `home` and gives the settings folder.

    Raises FleetExists, with nothing written, when one of the files is there already.
    """
    target = home / SETTINGS_FOLDER
    contents = _sample_contents() if bots is None else _plain_contents(bots)
    for name in contents:
        if (target / name).exists():
            raise FleetExists(f"{target / name} is there already; nothing was changed")
    for folder in ("data", "locks"):
        (target / folder).mkdir(parents=True, exist_ok=True)
    for name, content in contents.items():
        (target / name).parent.mkdir(parents=True, exist_ok=True)
        (target / name).write_bytes(content)
    # The supervisor asks only those bots for a warm cache that have this folder from an earlier run.
    for bot in json.loads(contents["bots.json"]):
        (home / PING_FOLDER / bot["role"]).mkdir(parents=True, exist_ok=True)
    return target


def _sample_contents() -> dict[str, bytes]:
    files = sorted(path for path in SAMPLE.rglob("*") if path.is_file())
    return {str(path.relative_to(SAMPLE)): path.read_bytes() for path in files}


def _plain_contents(count: int) -> dict[str, bytes]:
    contents = {
        name: content
        for name, content in _sample_contents().items()
        if "/" not in name and name not in _TIED_TO_SAMPLE_BOTS
    }
    bots = [_plain_bot(number) for number in range(1, count + 1)]
    assignments = {"architect": [bot["launchdLabel"] for bot in bots]}
    contents["bots.json"] = _compact(bots)
    contents["chain_bot_assignments.json"] = _compact(assignments)
    return contents


def _plain_bot(number: int) -> dict[str, str]:
    role = f"bot-{number:03}"
    return {
        "icon": _ICONS[(number - 1) % len(_ICONS)],
        "title": f"Bot {number:03}",
        # Without a token nobody is ever asked for the bot's name.
        "token": "",
        "role": role,
        "launchdLabel": f"com.ostrelleai.{role}.telegramd",
        "service": "Telegram",
    }


def _compact(value: object) -> bytes:
    return json.dumps(value, ensure_ascii=False, separators=(",", ":")).encode()


def _bot_count(text: str) -> int:
    number = int(text)
    if not 0 <= number <= MOST_BOTS:
        raise argparse.ArgumentTypeError(f"must be from 0 to {MOST_BOTS}")
    return number


def main() -> int:
    parser = argparse.ArgumentParser(description="Lays the sample fleet into a home folder.")
    parser.add_argument("home", metavar="HOME_DIR", type=Path)
    parser.add_argument("--bots", metavar="N", type=_bot_count, help="N plain bots instead of the six")
    options = parser.parse_args()
    try:
        target = lay_fleet(options.home, options.bots)
    except (FleetExists, OSError) as error:
        print(error, file=sys.stderr)
        return 1
    print(f"The fleet is ready in {target}")
    return 0


if __name__ == "__main__":
    sys.exit(main())
