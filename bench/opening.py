#!/usr/bin/env python3
"""How long the settings window takes to open, first and later, and what memory the supervisor takes.

Runs inside the sandbox, on a display of its own, with the built program and the sample fleet:

    tests/system/in-sandbox /usr/bin/python3 bench/opening.py build/release

Each time runs from the second start that asks for the window until the window is on screen; the second
start itself is measured alone too, with the window open already.
"""

import os
import pathlib
import re
import subprocess
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "tests/system/program"))
from session import Session, wait_until  # noqa: E402

LATER = 5  # openings


def memory(pid):
    """Megabytes in RAM: all, and of those what no file backs."""
    status = pathlib.Path(f"/proc/{pid}/status").read_text()
    return [int(re.search(rf"{name}:\s+(\d+)", status)[1]) / 1024 for name in ("VmRSS", "RssAnon")]


def main():
    if os.environ.get("XDG_RUNTIME_DIR") != "/tmp/runtime":
        sys.exit("Only runs inside tests/system/in-sandbox: it starts the supervisor.")
    session = Session(str(pathlib.Path(sys.argv[1]).resolve()))

    def knock():
        subprocess.run([session.prefix / "bin/varnhold"], env=session.environment, check=True)

    def window():
        return session.windows("^Varnhold$")

    def opening():
        begin = time.perf_counter()
        knock()
        wait_until("the window", window)
        return time.perf_counter() - begin

    def report(what):
        everything, anonymous = memory(supervisor.pid)
        print(f"memory {what}: {everything:.0f} MB, of which no file backs {anonymous:.0f} MB")

    try:
        supervisor = session.start()
        session.await_title("of 6 bots running")
        report("before the first opening")
        first = opening()
        time.sleep(2)  # the sheets of a first run come, and the page settles
        report("with the window open")
        begin = time.perf_counter()
        knock()
        alone = time.perf_counter() - begin
        later = []
        for _ in range(LATER):
            session.close_window(window()[0])
            wait_until("no window", lambda: not window())
            later.append(opening())
        session.close_window(window()[0])
        wait_until("no window", lambda: not window())
        report(f"after {LATER + 1} openings, closed")
        print(f"first opening {first * 1000:.0f} ms, later {sorted(later)[LATER // 2] * 1000:.0f} ms; "
              f"of each the second start takes {alone * 1000:.0f} ms")
    finally:
        session.end()


if __name__ == "__main__":
    main()
