"""What processes cost: of a sandbox all but the agents, the desktop and the benchmark itself."""

import os
import pathlib
import re
import time

TICKS = os.sysconf("SC_CLK_TCK")
# Who makes the desktop, or only holds the sandbox together.
SURROUNDINGS = {"bwrap", "Xvfb", "openbox", "dbus-daemon", "bench_agent", "in-sandbox", "tini"}


def managers():
    """Process ids to names of whoever looks after the agents."""
    found = {}
    for entry in pathlib.Path("/proc").iterdir():
        if not entry.name.isdigit() or int(entry.name) == os.getpid():
            continue
        try:
            program = pathlib.Path(os.readlink(entry / "exe")).name
        except OSError:
            continue
        if program not in SURROUNDINGS and not program.startswith("python3.14"):
            found[int(entry.name)] = program
    return found


def cpu_seconds(pids):
    """Own time, and that of children that were waited for."""
    total = 0.0
    for pid in pids:
        try:
            fields = pathlib.Path(f"/proc/{pid}/stat").read_text().rsplit(")", 1)[1].split()
            own = sum(int(pathlib.Path(task, "schedstat").read_text().split()[0])
                      for task in pathlib.Path(f"/proc/{pid}/task").iterdir())
        except (OSError, ValueError):
            continue
        total += own / 1e9 + (int(fields[13]) + int(fields[14])) / TICKS
    return total


def idle_cpu(seconds):
    """Milliseconds of processor time in that many seconds, scaled to 30."""
    pids = managers()
    before, begin = cpu_seconds(pids), time.monotonic()
    time.sleep(seconds)
    passed = time.monotonic() - begin
    return (cpu_seconds(pids) - before) * 1000 * 30 / passed


def megabytes(pids=None):
    """Memory that would be free without them: pages shared with others count in part (PSS)."""
    total = 0
    for pid in managers() if pids is None else pids:
        try:
            rollup = pathlib.Path(f"/proc/{pid}/smaps_rollup").read_text()
        except OSError:
            continue
        total += int(re.search(r"^Pss:\s+(\d+)", rollup, re.MULTILINE)[1])
    return total / 1024
