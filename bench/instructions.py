#!/usr/bin/env python3
"""How many instructions core operations take, beside the counts that are kept.

    bench/instructions.py BUILD [--keep] [--kept FILE] [--only NAME...]

Counted by callgrind, which a busy machine doesn't disturb. Ends with 1 if an operation takes over 5 % more
than instructions.json says, and prints by how much. --keep writes that file anew: do so with a change that
is meant to cost more, or that has made something cheaper. The counts depend on the compiler and on the
libraries, so they are those of a release build on Debian 12.
"""

import argparse
import json
import pathlib
import re
import subprocess
import sys

KEPT = pathlib.Path(__file__).resolve().parent / "instructions.json"
TOLERANCE = 0.05
TIMES = 10


def collected(program, name, times):
    done = subprocess.run(
        ["valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null", program, name, str(times)],
        check=True, capture_output=True, text=True)
    return int(re.search(r"Collected : (\d+)", done.stderr)[1])


def count(program, name):
    """Of one operation: what a start takes with and without it is subtracted."""
    return (collected(program, name, TIMES + 1) - collected(program, name, 1)) // TIMES


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawTextHelpFormatter)
    parser.add_argument("build", type=pathlib.Path)
    parser.add_argument("--keep", action="store_true")
    parser.add_argument("--kept", type=pathlib.Path, default=KEPT, metavar="FILE")
    parser.add_argument("--only", nargs="+", metavar="NAME")
    options = parser.parse_args()
    program = options.build.resolve() / "bench/bench_core"
    names = options.only or subprocess.run([program], check=True, capture_output=True,
                                           text=True).stdout.split()
    kept = json.loads(options.kept.read_text()) if options.kept.exists() else {}
    found = {name: count(program, name) for name in names}
    dearer = []
    for name, instructions in found.items():
        before = kept.get(name)
        change = f"{instructions / before - 1:+.1%}" if before else "new"
        print(f"{name:28} {instructions:12,} {change:>8}")
        if before and instructions > before * (1 + TOLERANCE):
            dearer.append(name)
    if options.keep:
        options.kept.write_text(json.dumps({**kept, **found}, indent=1, sort_keys=True) + "\n")
    elif dearer:
        sys.exit("dearer than what is kept: " + ", ".join(dearer))


if __name__ == "__main__":
    main()
