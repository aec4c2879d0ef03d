#!/usr/bin/env python3
"""Varnhold beside other supervisors, in one run: how long each takes to start a fleet of trivial agents, to
list it and to end it, and what it costs while nothing happens.

    bench/beside_peers.py BUILD [--sizes 20 200 1000] [--only NAME...] [--idle SECONDS] [--rounds N]
                          [--install] [--json FILE] [--table FILE] [--plot FILE]

Needs a build with VARNHOLD_BENCH. A peer that isn't installed is left out; --install gets them from
Debian and npm. Each has a sandbox of its own, with a home and a runtime folder that go with it. Sizes are
measured in turn; of several rounds the median counts.
"""

import argparse
import json
import pathlib
import statistics
import subprocess
import sys

SOURCE = pathlib.Path(__file__).resolve().parent.parent
sys.path.append(str(SOURCE / "bench/fleets"))
from ours import Varnhold, VarnholdOnSystemd  # noqa: E402
from peers import PEERS  # noqa: E402
from report import plot, table  # noqa: E402

SANDBOXES = SOURCE / "tests/system"
AGENT = "/opt/homebrew/bin/python3.14"
CANT_BE = 77  # the exit status of a sandbox that this system doesn't allow


def install(build):
    subprocess.run(["apt-get", "install", "-y", "--no-install-recommends", "supervisor", "runit", "s6",
                    "systemd", "nodejs", "npm"], check=True)
    subprocess.run(["npm", "install", "--prefix", build / "peers", "pm2"], check=True)


def measure(build, kind, sizes, idle):
    """A dictionary of figures for each size; none where it can't be measured, and says so."""
    absent = kind(build, AGENT).missing()
    if absent:
        print(f"{kind.name}: not installed ({', '.join(absent)})", flush=True)
        return []
    sandbox = SANDBOXES / getattr(kind, "sandbox", "in-sandbox")
    done = subprocess.run(
        [sandbox, "--tmpfs", "/opt", "--ro-bind", build / "bench/bench_agent", AGENT,
         sys.executable, SOURCE / "bench/fleets/inside.py", build, kind.name, str(idle),
         *[str(size) for size in sizes if size <= kind.largest]], check=False, stdout=subprocess.PIPE)
    if done.returncode == CANT_BE:
        print(f"{kind.name}: not measured, the system doesn't allow the sandbox", flush=True)
    elif done.returncode:
        sys.exit(f"{kind.name}: ended with {done.returncode}")
    return [json.loads(line) for line in done.stdout.splitlines() if line.startswith(b"{")]


def medians(rounds):
    """Of figures for each size, from several rounds."""
    found = {}
    for figures in (each for one in rounds for each in one):
        found.setdefault(figures["agents"], []).append(figures)
    return [{key: statistics.median(values) if None not in values else None
             for key in each[0] for values in [[one[key] for one in each]]}
            for each in found.values()]


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawTextHelpFormatter)
    parser.add_argument("build", type=pathlib.Path)
    parser.add_argument("--sizes", type=int, nargs="+", default=[20, 200, 1000])
    parser.add_argument("--only", nargs="+", metavar="NAME")
    parser.add_argument("--idle", type=float, default=30, help="seconds of idling that are measured")
    parser.add_argument("--rounds", type=int, default=1)
    parser.add_argument("--install", action="store_true")
    parser.add_argument("--json", type=pathlib.Path)
    parser.add_argument("--table", type=pathlib.Path)
    parser.add_argument("--plot", type=pathlib.Path)
    options = parser.parse_args()
    build = options.build.resolve()
    if options.install:
        install(build)
    kinds = [kind for kind in (Varnhold, VarnholdOnSystemd, *PEERS)
             if not options.only or kind.name in options.only]
    rounds = {kind.name: [] for kind in kinds}
    for _ in range(options.rounds):
        for kind in kinds:
            rounds[kind.name].append(measure(build, kind, options.sizes, options.idle))
    results = {name: medians(each) for name, each in rounds.items() if any(each)}
    if options.json:
        options.json.write_text(json.dumps(results, indent=1) + "\n")
    text = table(results)
    print(text)
    if options.table:
        options.table.write_text(text)
    if options.plot:
        options.plot.write_text(plot(results))


if __name__ == "__main__":
    main()
