"""Whether verbs that ran side by side answered as if they had run one after the other."""

import typing

DONE, IO_ERROR, NO_PROCESS, NO_SERVICE = 0, 5, 3, 113
# Verb and answer to what must hold of the job before, and what holds after; None: as before.
MEANINGS = {
    ("bootstrap", DONE): (False, True),
    ("bootstrap", IO_ERROR): (True, None),
    ("bootout", DONE): (True, False),
    ("bootout", NO_PROCESS): (False, None),
    ("kickstart", DONE): (True, None),
    ("kickstart", NO_SERVICE): (False, None),
    ("stop", DONE): (True, None),
    ("stop", NO_PROCESS): (False, None),
    ("list", DONE): (True, None),
    ("list", NO_SERVICE): (False, None),
}


class Call(typing.NamedTuple):
    begun: float
    ended: float
    verb: str
    code: int


def after(call, loaded):
    """Whether the job is loaded after the call; None if it couldn't have answered so."""
    before, then = MEANINGS[call.verb, call.code]
    if before != loaded:
        return None
    return loaded if then is None else then


def next_calls(history, done):
    """Those that could be the next in an order: none that is left had ended before they began."""
    candidates = []
    first_end = float("inf")
    for number, call in enumerate(history):
        if call.begun > first_end:
            break
        if not done >> number & 1:
            candidates.append(number)
            first_end = min(first_end, call.ended)
    return [number for number in candidates if history[number].begun <= first_end]


def has_valid_order(calls, loaded=False):
    """Of the calls on one job, which is loaded before them or not: is there an order that explains all
    answers, and in which no call stands before one that had ended before it began?"""
    history = sorted(calls)
    everything = (1 << len(history)) - 1
    seen = set()
    open_ends = [(0, loaded)]
    while open_ends:
        here = open_ends.pop()
        done, state = here
        if done == everything:
            return True
        if here in seen:
            continue
        seen.add(here)
        for number in next_calls(history, done):
            then = after(history[number], state)
            if then is not None:
                open_ends.append((done | 1 << number, then))
    return False
