"""Which model a bot would use now, read from the chains that the supervisor writes."""

from pathlib import Path

from circular_failover import CHAIN_KEYS, advance_position, read_positions
from provider_telegramd.files import read_json


def chain_file(root: Path, key: str) -> Path:
    return root / f"{key}_preferences.json"


def load_chain(root: Path, key: str) -> list[dict]:
    """The chain's models in failover order; empty when the file is missing or one entry is no model."""
    models = read_json(chain_file(root, key))
    if not isinstance(models, list) or not all(_is_model(model) for model in models):
        return []
    return models


def _is_model(value: object) -> bool:
    return isinstance(value, dict) and isinstance(value.get("id"), str)


def filled_chains(root: Path, role: str) -> dict[str, list[dict]]:
    """The chains that serve this bot and hold a model: those it is assigned to, else the architect's."""
    assigned = [key for key in CHAIN_KEYS if _label(role) in _assignments(root).get(key, [])]
    for keys in (assigned, ["architect"]):
        chains = {key: models for key in keys if (models := load_chain(root, key))}
        if chains:
            return chains
    return {}


def _label(role: str) -> str:
    return f"com.ostrelleai.{role}.telegramd"


def _assignments(root: Path) -> dict[str, list]:
    value = read_json(root / "chain_bot_assignments.json")
    if not isinstance(value, dict):
        return {}
    return {key: labels for key, labels in value.items() if isinstance(labels, list)}


def model_for(root: Path, role: str, turn: int) -> str | None:
    """The model's identifier, or None without any model.

    A bot of several chains goes round them by `turn`. The files are read each time: an edit in
    the settings window has its effect on a running bot without a restart.
    """
    chains = list(filled_chains(root, role).items())
    if not chains:
        return None
    key, models = chains[turn % len(chains)]
    return models[read_positions(root)[key] % len(models)]["id"]


def fail_over(root: Path, role: str) -> None:
    """Moves each of the bot's chains on to its next model, after the last to the first again."""
    for key, models in filled_chains(root, role).items():
        advance_position(root, key, len(models))
