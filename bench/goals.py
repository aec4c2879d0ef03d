"""What is aimed at, beside what was measured, what a peer took in the same run and what can't be undercut; and
why a goal was missed, if it was."""

from report import shown

OURS, SYSTEMD, FLOOR = "Varnhold on s6", "Varnhold on systemd", "bare posix_spawn"
PEER, PEER_OF_UNITS = "supervisord", "systemctl --user"

# Title, unit, whose figure, its key, goals by number of agents, the peer beside it, why it may be missed.
FLEET_GOALS = (
    ("start all on s6", "s", OURS, "start", {20: 0.15, 200: 1.0, 1000: 5.5}, PEER, "processes"),
    ("start all on systemd", "s", SYSTEMD, "start", {20: 0.2, 200: 1.5, 1000: 9}, PEER_OF_UNITS, "units"),
    ("end all on s6", "s", OURS, "quit", {20: 0.15, 200: 1.0, 1000: 6}, PEER, "processes"),
    ("idling, processor time of 30 s", "ms", OURS, "idle", {20: 30, 200: 45, 1000: 120}, PEER, "listing"),
)
REASONS = {
    "processes": "Starts and ends on s6: each agent takes a `launchctl` of its own, written for and waited for before "
                 "the next, then s6's supervisor, the run script's `agent-exec` and the agent. What is left is "
                 "the making of those processes, which follow each other in the order that is promised.",
    "units": "Starts on systemd: `systemctl --user` hands all units over at once, and the manager works on them side "
             "by side. One after the other, each start waits for `launchctl`'s own process, for the answer of the "
             "manager, and for the command that keeps the pause between two starts, which has to come before the agent.",
    "listing": "Idling: what is left is `launchctl list`, run at every poll, which opens each job's folder and "
               "status anew and so grows with the fleet, and the reading of its answer.",
    "supervisord": "Beside supervisord: it starts its programs from one process that is up already, without "
                   "waiting for one before the next, and its client's own start of 0.2 s weighs less the more "
                   "agents there are.",
    "restart": "Restart: besides all ends and starts it waits for the killing by pattern, for the orphan sweep, "
               "which walks through all processes four times, and for the resetting of the chains, a process of its own.",
    "growth": "Growth: `s6-svscan` looks at every one of its folders for each job that comes or goes, and has no "
              "command for a single one; so a part of each start grows with the fleet. s6 by itself, which "
              "looks once, grows too, for the same reason: the more processes, the dearer each.",
    "strip": "Process start to strip shown: the loading of the toolkit, its fonts and its connection to the display "
             "come before anything of ours is drawn.",
    "memory": "Memory: it is mostly the toolkit's libraries, fonts and caches. Where other programs use the same "
              "libraries, pages are shared and count in part; on a machine that runs nothing else they count in full.",
    "items": "First opening: nearly all of it is the making of the page's items, of which many bots and models need "
             "many; later openings show the same page again.",
    "edit": "A keystroke: all files are written, in the order that is promised, before it is over.",
    "second": "Second start: it is over when the first has heard it, whose main thread may be at work for a large "
              "window; the floor is a program that does nothing, started in the same way.",
    "writer": "Writers: their own writing is part of their wait, and on a busy machine the wait for a processor; no poll "
              "holds its lock for longer than a step of two thousand rows, which takes a millisecond.",
    "bars": "Bar image: the painting of one rectangle after the other.",
}


def _figures(results, name, size, key):
    for figures in results.get(name, []):
        if figures["agents"] == size:
            return figures.get(key)
    return None


def _row(cells):
    return "| " + " | ".join(cells) + " |"


def _text(value, unit):
    if value is None:
        return "–"
    return shown(value * 1000 if unit == "ms of s" else value)


def _verdict(value, goal):
    return "–" if value is None or goal is None else "yes" if value <= goal else "**no**"


def _simple_goals(results, sizes):
    for title, unit, name, key, goals, peer, reason in FLEET_GOALS:
        for size in sizes:
            value, goal = _figures(results, name, size, key), goals.get(size)
            yield ((f"{title}, {unit}", str(size), _text(value, unit), _text(goal, unit),
                    f"{_text(_figures(results, peer, size, key), unit)} ({peer})",
                    _text(_figures(results, FLOOR, size, key), unit), _verdict(value, goal)), reason)


def _compared_goals(results, sizes):
    """Those whose goal is another figure of the same run."""
    for size in sizes:
        start, peer = _figures(results, OURS, size, "start"), _figures(results, PEER, size, "start")
        yield (("no more than supervisord, s", str(size), _text(start, "s"), _text(peer, "s"),
                f"{_text(peer, 's')} ({PEER})", _text(_figures(results, FLOOR, size, "start"), "s"),
                _verdict(start, peer)), "supervisord")
    for name in (OURS, SYSTEMD):
        for size in sizes:
            start, end, both = (_figures(results, name, size, key) for key in ("start", "quit", "restart"))
            goal = start + end if start is not None and end is not None else None
            yield ((f"restart all, without pauses, no more than both ({name.split()[-1]}), s", str(size),
                    _text(both, "s"), _text(goal, "s"), "–", "–", _verdict(both, goal)), "restart")


def _growth(results, sizes):
    if 200 not in sizes or 1000 not in sizes:
        return
    for key, title in (("start", "start all"), ("quit", "end all")):
        def times(name, key=key):
            small, large = (_figures(results, name, size, key) for size in (200, 1000))
            return large / small if small and large else None
        yield ((f"growth of {title} on s6, times", "200 to 1,000", _text(times(OURS), ""), "6",
                f"{_text(times(PEER), '')} ({PEER}), {_text(times('s6'), '')} (s6)", _text(times(FLOOR), ""),
                _verdict(times(OURS), 6)), "growth")


def _with_reasons(header, rows):
    rows = list(rows)
    lines = [_row(header), "|" + "---|" * len(header), *(_row(cells) for cells, _ in rows)]
    missed = dict.fromkeys(reason for cells, reason in rows if "no" in cells[-1])
    if missed:
        lines += ["", "Where a goal was missed:", "", *(f"- {REASONS[reason]}" for reason in missed)]
    return "\n".join(lines)


def fleet_goals(results):
    sizes = sorted({figures["agents"] for each in results.values() for figures in each})
    rows = [*_simple_goals(results, sizes), *_compared_goals(results, sizes), *_growth(results, sizes)]
    return _with_reasons(("what", "agents", "ours", "goal", "peer, same run", "floor", "reached?"), rows)


# What a person waits for: title, key, goals with the sample fleet and with the large one, why it may be missed.
BUDGETS = (
    ("a keystroke in the master prompt, ms", "a keystroke in the master prompt, ms", 1, 5, "edit"),
    ("a keystroke in a bot's prompt, ms", "a keystroke in a bot's prompt, ms", 1, 5, "edit"),
    ("the same until it is drawn, ms", "a keystroke in a bot's prompt, drawn, ms", None, None, "edit"),
    ("a hover over a chain, ms", "a hover over a chain, ms", None, None, "edit"),
    ("a step of a drag in a chain of 100, ms", "a step of a drag in a chain of 100, ms", 8, 8, "edit"),
    ("process start to strip shown, ms", "process start to strip shown, ms", 100, 100, "strip"),
    ("memory before the window (PSS), MB", "memory before the window, MB", 30, 30, "memory"),
    ("first opening besides the second start, ms", "first opening besides the second start, ms", 350, 450, "items"),
    ("memory with the window (PSS), MB", "memory with the window, MB", 80, 80, "memory"),
    ("later opening besides the second start, ms", "later opening besides the second start, ms", 25, 25, "items"),
    ("second start, ms", "second start, ms", 15, 15, "second"),
    ("floor of it: a program that does nothing, ms", "a program that does nothing, ms", None, None, "second"),
    ("bar image of 60 bots, ms", "bar image of 60 bots, ms", 0.1, None, "bars"),
    ("strip of 60 bots, ms", "strip of 60 bots, ms", None, None, "bars"),
)


def poll_goal(printed):
    """Of what bench_poll has printed, whose last column is how long a writer waited."""
    longest = max(float(line.split()[-1]) for line in printed.splitlines() if line.split()[0].isdigit())
    row = ("longest wait of a writer, ms", _text(longest, "ms"), "200", _verdict(longest, 200))
    return _with_reasons(("what", "ours", "goal", "reached?"), [(row, "writer")])


def budget_tables(figures):
    from budgets import FLEETS
    rows = []
    for title, key, *goals, reason in BUDGETS:
        values = [figures.get(f"{fleet}: {key}") for fleet in FLEETS]
        verdicts = [_verdict(value, goal) for value, goal in zip(values, goals)]
        given = list(dict.fromkeys(str(goal) for goal in goals if goal is not None))
        known = list(dict.fromkeys(each for each in verdicts if each != "–"))
        rows.append(((title, *(_text(value, "ms") for value in values), " / ".join(given),
                      " / ".join(verdicts) if len(known) > 1 else "".join(known)), reason))
    return _with_reasons(("", "sample fleet", "200 bots, 500 models", "goal", "reached?"), rows)
