#!/usr/bin/env python3
"""One supervisor in its sandbox, at the sizes given: a line of JSON for each. beside_peers.py starts it.

    inside.py BUILD NAME IDLE_SECONDS AGENTS...
"""

import json
import os
import pathlib
import sys
import time

from alive import Alive
from ours import Varnhold, VarnholdOnSystemd, measure_program
from peers import PEERS, listed
from processes import idle_cpu, megabytes

AGENT = "/opt/homebrew/bin/python3.14"  # where the supervisor looks first for an interpreter


def measure(peer, count, idle_seconds):
    peer.prepare(count)
    alive = Alive()
    begin = time.monotonic_ns()
    peer.start()
    alive.await_count(count)
    figures = {"agents": count, "start": alive.since(begin), "list": listed(peer.list)}
    ours = isinstance(peer, Varnhold)
    if not ours:
        time.sleep(2)
        figures["memory"] = megabytes()
        figures["idle"] = idle_cpu(idle_seconds)
    if ours:
        begin = time.monotonic_ns()
        peer.restart()
        alive.await_count(count)
        figures["restart"] = alive.since(begin)
    begin = time.monotonic_ns()
    peer.stop()
    returned = (time.monotonic_ns() - begin) / 1e9
    alive.await_count(0)
    figures["quit"] = max(returned, alive.since(begin, ended=True))
    return figures


def main():
    if os.environ.get("XDG_RUNTIME_DIR") != "/tmp/runtime":
        sys.exit("Only runs inside tests/system/in-sandbox: it ends processes by their names.")
    build, name, idle_seconds = pathlib.Path(sys.argv[1]), sys.argv[2], float(sys.argv[3])
    kind = {each.name: each for each in (*PEERS, Varnhold, VarnholdOnSystemd)}[name]
    peer = kind(build, AGENT)
    for count in map(int, sys.argv[4:]):
        figures = measure(peer, count, idle_seconds)
        if isinstance(peer, Varnhold):
            figures.update(measure_program(build, count, idle_seconds))
        print(json.dumps(figures), flush=True)


main()
