"""The rhythm of a bot's day: bursts of work, with quiet stretches in between.

The supervisor calls a bot active when the markers in the last few kilobytes of its log grow
denser. So the quiet matters as much as the bursts: it is told in long lines without a marker,
which push the old markers out of that window and make room for the next burst to be seen.
Everything is plain ASCII, since a window that begins inside a character can't be read at all.
"""

import random
from collections.abc import Iterator
from dataclasses import dataclass

MARKERS = ("[PROCESS]", "[CHAIN]", "[NOTIFY]", "[MSG]")

_WORK = (
    "[PROCESS] reading",
    "[PROCESS] thinking",
    "[CHAIN] model asked",
    "[CHAIN] model answered",
    "[NOTIFY] progress told",
)

_CHORES = (
    "tidied the conversation store: nothing expired, nothing to compact, all indexes in order and warm",
    "looked after the attachment folder: no new files, no leftovers from earlier questions to be removed",
    "compared the settings with those read before: same chains, same budgets, same effort, nothing to do",
    "waiting for the next message: the inbox is empty, no reminders are due and no task is unfinished",
)


@dataclass(frozen=True)
class Step:
    """One line of the log, `pause` seconds after the line before it.

    `event` is the kind of the database row that goes with it, if any; `with_model` tells
    whether that row names the model.
    """

    pause: float
    text: str
    event: str | None = None
    with_model: bool = False


def steps(role: str) -> Iterator[Step]:
    """The endless day of the bot `role`: the same for each start, different from bot to bot."""
    dice = random.Random(f"rhythm of {role}")
    tempo = dice.uniform(0.7, 1.5)
    # A first burst early on, so that a fresh fleet shows its models without a long wait.
    yield from _burst(dice, first_pause=dice.uniform(0.3, 1.2))
    while True:
        yield from _quiet(dice, seconds=dice.uniform(7, 18) * tempo)
        yield from _burst(dice, first_pause=dice.uniform(0.5, 1.5))


def _burst(dice: random.Random, first_pause: float) -> Iterator[Step]:
    yield Step(first_pause, "[MSG] question", event="message")
    for _ in range(dice.randint(7, 16)):
        yield Step(dice.uniform(0.2, 0.7), dice.choice(_WORK))
    yield Step(dice.uniform(0.2, 0.7), "[MSG] reply", event="reply", with_model=True)


def _quiet(dice: random.Random, seconds: float) -> Iterator[Step]:
    while seconds > 0:
        pause = dice.uniform(0.8, 1.6)
        seconds -= pause
        yield Step(pause, dice.choice(_CHORES))


def burst_lines(count: int) -> list[str]:
    """`count` lines with one marker each, all four markers in turn."""
    return [f"{MARKERS[index % len(MARKERS)]} on request" for index in range(count)]
