#!/usr/bin/env python3
"""CPU time that an idle supervisor of 20 agents takes in 60 seconds.

Runs inside the sandbox, on a display of its own, with the built program and real agents:

    tests/system/in-sandbox /usr/bin/python3 bench/idle_cpu.py build/dev [SECONDS]
"""

import json
import os
import pathlib
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "tests/system/program"))
from session import Session, agents, label_of, wait_until  # noqa: E402

AGENTS = 20
TICKS = os.sysconf("SC_CLK_TCK")


def cpu_seconds(pid):
    fields = pathlib.Path(f"/proc/{pid}/stat").read_text().rsplit(")", 1)[1].split()
    own = int(fields[11]) + int(fields[12])
    children = int(fields[13]) + int(fields[14])  # those it has waited for: each poll's tool
    return own / TICKS, children / TICKS


def main():
    if os.environ.get("XDG_RUNTIME_DIR") != "/tmp/runtime":
        sys.exit("Only runs inside tests/system/in-sandbox: it starts the supervisor.")
    seconds = float(sys.argv[2]) if len(sys.argv) > 2 else 60
    session = Session(str(pathlib.Path(sys.argv[1]).resolve()))
    try:
        bots = [{"icon": "🤖", "title": f"Agent {i}", "token": "", "role": f"agent{i}",
                 "launchdLabel": label_of(f"agent{i}"), "service": "Telegram"}
                for i in range(AGENTS)]
        (session.support / "bots.json").write_text(json.dumps(bots))
        supervisor = session.start()
        session.await_title(f"{AGENTS} of {AGENTS} bots running")
        wait_until("the agents are up", lambda: len(agents()) >= AGENTS)
        before = cpu_seconds(supervisor.pid)
        start = time.monotonic()
        time.sleep(seconds)
        passed = time.monotonic() - start
        own, children = (after - earlier for after, earlier in
                         zip(cpu_seconds(supervisor.pid), before))
        print(f"{AGENTS} agents, {passed:.0f} s: supervisor {own:.2f} s of CPU "
              f"({own / passed:.2%} of one core), its children {children:.2f} s")
    finally:
        session.end()


if __name__ == "__main__":
    main()
