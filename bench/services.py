#!/usr/bin/env python3
"""How long launchctl takes to start a fleet, to list it and to end it, beside the managers' own tools.

    bench/services.py BUILD_FOLDER [COUNT...]

Each manager has a sandbox of its own, and each fleet is started from nothing, one launchctl for each
agent, as the supervisor does it. Then the same jobs are listed by launchctl and by the manager's tool in
turn. Times are wall clock; of the listings, the median of nine.
"""

import os
import pathlib
import plistlib
import statistics
import subprocess
import sys
import time

HERE = pathlib.Path(__file__).resolve()
TESTS = HERE.parent.parent / "tests/system"
sys.path.append(str(TESTS))
from user_manager import start_session_bus, start_user_manager, wait_until  # noqa: E402

SANDBOXES = {"s6": TESTS / "in-sandbox", "systemd": TESTS / "in-user-session"}
COUNTS = (20, 200, 1000)
ROUNDS = 9
DEADLINE = 300  # seconds
DOMAIN = f"gui/{os.getuid()}"


def run(*words):
    return subprocess.run(words, check=True, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE).stdout


def timed(*words):
    begin = time.perf_counter()
    run(*words)
    return time.perf_counter() - begin


def write_fleet(count):
    folder = pathlib.Path(os.environ["HOME"]) / f"fleet-{count}"
    folder.mkdir()
    fleet = []
    for number in range(count):
        label = f"com.example.{number:04}.telegramd"
        path = folder / f"{label}.plist"
        path.write_bytes(plistlib.dumps({
            "Label": label, "KeepAlive": True, "RunAtLoad": True,
            "ProgramArguments": ["/bin/sleep", "100000"]}))
        fleet.append((label, path))
    return fleet


def own_tool(manager):
    """A command of the manager's own that shows state, process and last end of every job."""
    if manager == "systemd":
        return ("systemctl --user show", [
            "systemctl", "--user", "show", "varnhold-job-*",
            "--property=Id,ActiveState,MainPID,ExecMainCode,ExecMainStatus"])
    return ("s6-svstat for each", [
        "/bin/sh", "-c", 'for job in "$XDG_RUNTIME_DIR"/varnhold/jobs/*; do '
        's6-svstat -o up,pid,exitcode,signum "$job"; done'])


def measure(tool, manager, count):
    fleet = write_fleet(count)
    begin = time.perf_counter()
    for _, path in fleet:
        run(tool, "bootstrap", DOMAIN, path)
    start_all = time.perf_counter() - begin

    def all_up():
        rows = run(tool, "list").decode().splitlines()[1:]
        return len(rows) == count and not any(row.startswith("-") for row in rows)
    wait_until("every agent is up", all_up, DEADLINE)
    name, other = own_tool(manager)
    listings, others = [], []
    for _ in range(ROUNDS):
        listings.append(timed(tool, "list"))
        others.append(timed(*other))
    begin = time.perf_counter()
    for label, _ in fleet:
        run(tool, "bootout", f"{DOMAIN}/{label}")
    end_all = time.perf_counter() - begin
    print(f"{manager:8} {count:5} {start_all:10.2f} {1000 * start_all / count:10.1f} {end_all:10.2f} "
          f"{1000 * statistics.median(listings):10.1f} {1000 * statistics.median(others):10.1f}  {name}",
          flush=True)


def inside(build, manager, counts):
    if manager == "systemd":
        start_session_bus()
        start_user_manager()
    for count in counts:
        measure(build / "libexec/varnhold/launchctl", manager, count)


def main():
    build, *rest = sys.argv[1:]
    build = pathlib.Path(build).resolve()
    if rest[:1] == ["--inside"]:
        inside(build, rest[1], [int(count) for count in rest[2:]])
        return
    print("manager  agents  start-all  per agent    end-all       list  own tool")
    print("                         s         ms          s         ms        ms", flush=True)
    for manager, sandbox in SANDBOXES.items():
        done = subprocess.run([sandbox, sys.executable, HERE, build, "--inside", manager,
                               *(rest or map(str, COUNTS))], check=False)
        if done.returncode:
            print(f"{manager}: not measured (status {done.returncode})")


main()
