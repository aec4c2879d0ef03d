"""Fills the failover chains from the model library, around what the person has chosen already.

Needs DAEMON_DATA_DIR. Exit status 0: done, with a short report on standard output; 2: the
architect chain has no model; 3: the coding chain has none; 1: anything else, told on standard
error. Nothing is written unless all of it can be worked out first.
"""

import os
import sys
import uuid
from pathlib import Path

from circular_failover import CHAIN_KEYS
from provider_telegramd.chains import chain_file, load_chain
from provider_telegramd.files import compact_json, read_json, write_atomically

NO_ARCHITECT = 2
NO_CODING_MODEL = 3

_LONGEST_FILLED = 4
_SEEING_PROVIDERS = ("claude", "gemini", "openai")

# Speech never leaves the machine, so the voice chain is the same two tools for everyone.
_VOICE_TOOLS = (
    ("local:whisper", "Whisper (transcription, free/local)"),
    ("local:say", "say (voice reply, free/local)"),
)

_FIELDS = ("uniqueId", "id", "name", "family", "color", "type", "provider_key")


def main() -> int:
    named = os.environ.get("DAEMON_DATA_DIR", "")
    if named == "":
        print("DAEMON_DATA_DIR must name the shared data folder", file=sys.stderr)
        return 1
    root = Path(named)
    chains = {key: load_chain(root, key) for key in CHAIN_KEYS}
    if not chains["architect"]:
        return NO_ARCHITECT
    if not chains["worker"]:
        return NO_CODING_MODEL
    filled = fill(chains, _library(root))
    try:
        for key in CHAIN_KEYS:
            write_atomically(chain_file(root, key), compact_json(filled[key]))
    except OSError as error:
        print(f"chains can't be stored: {error.strerror}", file=sys.stderr)
        return 1
    print("Chains filled: " + ", ".join(f"{key} {len(filled[key])}" for key in CHAIN_KEYS))
    return 0


def fill(chains: dict[str, list[dict]], library: list[dict]) -> dict[str, list[dict]]:
    """The six chains, each starting with the models it has, in their order, then filled up."""
    known = library or chains["architect"] + chains["worker"]
    # Reasoning-only models can't run tools or look at media.
    handy = [model for model in known if not _is_reasoning_only(model)]
    seeing = [model for model in handy if model.get("provider_key") in _SEEING_PROVIDERS]
    fast_first = sorted(known, key=lambda model: not _is_reasoning_only(model))
    offers = {
        "architect": known,
        "worker": handy,
        "photo": seeing,
        "video": seeing,
        "voice": _voice_tools(),
        "governor": fast_first,
    }
    return {key: _filled_up(chains[key], offers[key]) for key in CHAIN_KEYS}


def _filled_up(chain: list[dict], offer: list[dict]) -> list[dict]:
    filled = list(chain)
    for model in offer:
        if len(filled) >= _LONGEST_FILLED:
            break
        if all(model["id"] != present["id"] for present in filled):
            filled.append(_copy(model))
    return filled


def _copy(model: dict) -> dict:
    """The model's fields in their usual order, as a row of its own."""
    row = {**model, "uniqueId": str(uuid.uuid4()).upper()}
    return {field: row[field] for field in _FIELDS if row.get(field) is not None}


def _is_reasoning_only(model: dict) -> bool:
    return "cerebras" in (str(model.get("family")).lower(), str(model.get("provider_key")).lower())


def _voice_tools() -> list[dict]:
    common = {"family": "Local", "color": "teal", "type": "local", "provider_key": "local"}
    return [{"id": model_id, "name": name, **common} for model_id, name in _VOICE_TOOLS]


def _library(root: Path) -> list[dict]:
    """The library's models; none when the file is missing or one entry isn't whole."""
    value = read_json(root / "model_library.json")
    models = value.get("models") if isinstance(value, dict) else None
    if not isinstance(models, list) or not all(_is_whole(model) for model in models):
        return []
    return models


def _is_whole(model: object) -> bool:
    required = ("id", "name", "family", "color")
    return isinstance(model, dict) and all(isinstance(model.get(field), str) for field in required)


if __name__ == "__main__":
    sys.exit(main())
