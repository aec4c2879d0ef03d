#!/usr/bin/env python3
"""What a person waits for, and what the program takes while nobody asks anything of it; medians.

    bench/budgets.py BUILD [--rounds N]
    bench/all BUILD --only budgets           the same, into docs/performance.md

Needs a build with VARNHOLD_BENCH. All is done in the sandbox of the system tests, on a display of its own,
with the sample fleet, and again with 200 bots and 500 models; the agents are those that do nothing. What
the program takes while it idles, beside_peers.py measures.
"""

import argparse
import json
import os
import pathlib
import statistics
import subprocess
import sys
import time

SOURCE = pathlib.Path(__file__).resolve().parent.parent
AGENT = "/opt/homebrew/bin/python3.14"  # where the supervisor looks first for an interpreter
FLEETS = ("sample fleet", "200 bots and 500 models")


class Windows:
    """When windows of the program come to be seen."""

    def __init__(self, build, session):
        self.watcher = subprocess.Popen([build / "bench/bench_shown", "arnhold"], env=session.environment,
                                        stdout=subprocess.PIPE, text=True)
        self.watcher.stdout.readline()

    def milliseconds(self, begin):
        """From a moment of time.monotonic_ns() to the next window that is shown."""
        return (int(self.watcher.stdout.readline()) - begin) / 1e6

    def end(self):
        self.watcher.terminate()
        self.watcher.wait()


def lay_large(home):
    """Two hundred bots, and a library of five hundred models."""
    from make_fleet import lay_fleet
    support = lay_fleet(home, 200)
    library = json.loads((support / "model_library.json").read_text())
    pattern = library["models"]
    library["models"] = [dict(pattern[number % len(pattern)], uniqueId=f"model-{number}", id=f"model-{number}",
                              name=f"Model {number}") for number in range(500)]
    (support / "model_library.json").write_text(json.dumps(library))


def start_once(session, windows):
    """The supervisor, and the milliseconds until its strip was shown."""
    begin = time.monotonic_ns()
    supervisor = session.start()
    return supervisor, windows.milliseconds(begin)


def quit_program(session):
    session.supervisor.terminate()
    session.supervisor.wait()


def window_figures(build, name, rounds, figures):
    from alive import Alive
    from processes import megabytes
    from session import Session, wait_until
    session = Session(build)
    alive = Alive()
    agents = sum(not bot.get("isPaused") for bot in session.bots()) if name == FLEETS[0] else 200
    if name != FLEETS[0]:
        subprocess.run(["rm", "-rf", session.support], check=True)
        lay_large(session.home)
    windows = Windows(build, session)

    def knock():
        begin = time.perf_counter()
        subprocess.run([session.prefix / "bin/varnhold"], env=session.environment, check=True)
        return (time.perf_counter() - begin) * 1000

    def nothing():
        """Started as a second start is: what none can undercut."""
        begin = time.perf_counter()
        subprocess.run(["/usr/bin/true"], env=session.environment, check=True)
        return (time.perf_counter() - begin) * 1000

    def opening():
        begin = time.monotonic_ns()
        alone = knock()
        return windows.milliseconds(begin) - alone, alone

    def add(what, value):
        figures.setdefault(f"{name}: {what}", []).append(value)

    try:
        for _ in range(rounds):
            supervisor, strip = start_once(session, windows)
            add("process start to strip shown, ms", strip)
            alive.await_count(agents)
            time.sleep(1)
            add("memory before the window, MB", megabytes([supervisor.pid]))
            first, alone = opening()
            add("first opening besides the second start, ms", first)
            time.sleep(1)  # a first run's sheets come
            add("memory with the window, MB", megabytes([supervisor.pid]))
            for _ in range(3):
                session.close_window(session.windows("^Varnhold$")[0])
                wait_until("no window", lambda: not session.windows("^Varnhold$"))
                later, alone = opening()
                add("later opening besides the second start, ms", later)
            time.sleep(1)  # it is asked at rest, not while it still draws what was asked for last
            add("second start, ms", knock())
            add("a program that does nothing, ms", nothing())
            quit_program(session)
    finally:
        windows.end()
        session.end()


def edit_figures(build, name, rounds, figures):
    """A record, its files and the page in one process, on a display that nobody sees."""
    from make_fleet import lay_fleet
    home = pathlib.Path("/tmp/edits") / name.replace(" ", "-")
    home.mkdir(parents=True)
    if name == FLEETS[0]:
        lay_fleet(home)
    else:
        lay_large(home)
    done = subprocess.run([build / "bench/bench_edits", name, str(rounds)], check=True,
                          capture_output=True, text=True, env={**os.environ, "HOME": str(home)})
    for line in done.stdout.splitlines():
        what, median, _ = line.split("\t")
        figures[f"{what}, ms"] = [float(median)]


def picture_figures(build, figures):
    done = subprocess.run([build / "bench/bench_redraw"], check=True, capture_output=True, text=True)
    for line in done.stdout.splitlines():
        what, median, _ = line.split("\t")
        if what.endswith(" 60 bots"):
            figures[f"{FLEETS[0]}: {what}, ms"] = [float(median)]


def inside(build, options):
    """One fleet; a sandbox has one home."""
    sys.path += [str(SOURCE / place) for place in ("bench/fleets", "tests/system/program", "examples")]
    figures = {}
    edit_figures(build, options.fleet, options.rounds * 20, figures)
    if options.fleet == FLEETS[0]:
        picture_figures(build, figures)
    window_figures(build, options.fleet, options.rounds, figures)
    print(json.dumps({what: statistics.median(values) for what, values in figures.items()}))


def measure(build, rounds):
    """Figures by "FLEET: WHAT, UNIT"."""
    figures = {}
    for fleet in FLEETS:
        done = subprocess.run(
            [SOURCE / "tests/system/in-sandbox", "--tmpfs", "/opt", "--ro-bind", build / "bench/bench_agent",
             AGENT, sys.executable, __file__, build, "--inside", "--fleet", fleet,
             "--rounds", str(rounds)], check=True, stdout=subprocess.PIPE, text=True)
        figures.update(json.loads(done.stdout.splitlines()[-1]))
    return figures


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawTextHelpFormatter)
    parser.add_argument("build", type=pathlib.Path)
    parser.add_argument("--rounds", type=int, default=9)
    parser.add_argument("--inside", action="store_true", help=argparse.SUPPRESS)
    parser.add_argument("--fleet", default=FLEETS[0], help=argparse.SUPPRESS)
    options = parser.parse_args()
    build = options.build.resolve()
    if options.inside:
        inside(build, options)
        return
    for what, value in measure(build, options.rounds).items():
        print(f"{what:78} {value:9.3f}", flush=True)


if __name__ == "__main__":
    main()
