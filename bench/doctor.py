#!/usr/bin/env python3
"""How long the doctor takes: on the sample fleet, and on a thousand bots, all of them loaded.

    tests/system/in-sandbox /usr/bin/python3 "$PWD/bench/doctor.py" BUILD_FOLDER [BOTS]

The jobs are real ones, loaded and listed by the build's own launchctl; their agents only sleep, but for
every hundredth, which crashes. Property lists, logs and a database of events are there.
"""

import json
import os
import pathlib
import plistlib
import shutil
import sqlite3
import statistics
import subprocess
import sys
import time

SOURCE = pathlib.Path(__file__).resolve().parent.parent
sys.path += [str(SOURCE / "examples"), str(SOURCE / "tests/system")]
from make_fleet import lay_fleet  # noqa: E402
from user_manager import wait_until  # noqa: E402

HOME = pathlib.Path(os.environ["HOME"])
PREFIX = pathlib.Path("/tmp/prefix")
LAUNCHCTL = PREFIX / "libexec/varnhold/launchctl"
DATA = HOME / "Library/Application Support/Varnhold"
AGENTS = HOME / "Library/LaunchAgents"
DOMAIN = f"gui/{os.getuid()}"
ROUNDS = 11
DEADLINE = 300  # seconds


def records_of(bots):
    """Of the sample fleet, or of so many bots in its place."""
    lay_fleet(HOME)
    if bots is None:
        return json.loads((DATA / "bots.json").read_text())
    records = [{"icon": "x", "title": f"Bot {i}", "token": f"token-of-bot-{i}", "role": f"b{i}",
                "launchdLabel": f"com.ostrelleai.b{i}.telegramd", "service": "Telegram"}
               for i in range(bots)]
    (DATA / "bots.json").write_text(json.dumps(records))
    (DATA / "chain_bot_assignments.json").write_text(
        json.dumps({"architect": [record["launchdLabel"] for record in records]}))
    return records


def listed():
    rows = subprocess.run([LAUNCHCTL, "list"], check=True, capture_output=True, text=True).stdout
    return [row.split("\t") for row in rows.splitlines()[1:]]


def load(records):
    AGENTS.mkdir(parents=True, exist_ok=True)
    for number, record in enumerate(records):
        label, role = record["launchdLabel"], record["role"]
        crashes = number % 100 == 5
        path = AGENTS / f"{label}.plist"
        path.write_bytes(plistlib.dumps({
            "Label": label, "KeepAlive": True, "RunAtLoad": True,
            "EnvironmentVariables": {"HOME": str(HOME), "TELEGRAM_BOT_TOKEN": record["token"]},
            "ProgramArguments": ["/bin/false"] if crashes else ["/bin/sleep", "100000"],
            "WorkingDirectory": "/tmp", "StandardOutPath": f"/tmp/vh-{role}.log",
            "StandardErrorPath": f"/tmp/vh-{role}-error.log"}))
        pathlib.Path(f"/tmp/vh-{role}.log").write_text("[MSG] one\n" * 800)
        subprocess.run([LAUNCHCTL, "bootstrap", DOMAIN, path], check=True)
    expected = sum(number % 100 != 5 for number in range(len(records)))
    wait_until("every agent is up",
               lambda: sum(row[0] != "-" for row in listed()) >= expected, DEADLINE)
    with sqlite3.connect(DATA / "governor.db") as database:
        database.execute("CREATE TABLE agent_events (id INTEGER PRIMARY KEY, dept TEXT, model TEXT)")
        database.executemany("INSERT INTO agent_events (dept, model) VALUES (?, 'm')",
                             [(record["role"],) for record in records] * 100)


def unload(records):
    for record in records:
        subprocess.run([LAUNCHCTL, "bootout", f"{DOMAIN}/{record['launchdLabel']}"], check=True)
    shutil.rmtree(HOME)
    HOME.mkdir()


def measure(*command):
    times = []
    for _ in range(ROUNDS):
        start = time.perf_counter()
        subprocess.run(command, check=False, stdout=subprocess.DEVNULL)
        times.append((time.perf_counter() - start) * 1000)
    return statistics.median(times), max(times)


def main():
    build = pathlib.Path(sys.argv[1])
    bots = int(sys.argv[2]) if len(sys.argv) > 2 else 1000
    shutil.copytree(build / "libexec", PREFIX / "libexec")
    (PREFIX / "bin").mkdir()
    doctor = shutil.copy(build / "bin/varnhold-doctor", PREFIX / "bin")
    print(f"load {os.getloadavg()[0]:.1f} on {os.cpu_count()} processors")
    for name, count in (("sample fleet", None), (f"{bots} bots", bots)):
        records = records_of(count)
        load(records)
        commands = {"launchctl list": (LAUNCHCTL, "list")} | {
            " ".join(words) or "all checks": (doctor, *words)
            for words in ((), ("--json",), ("fleet",), ("files",), ("--without", "claude"))}
        for title, command in commands.items():
            middle, worst = measure(*command)
            print(f"{name:14} {title:18} {middle:7.1f} ms, at worst {worst:7.1f} ms", flush=True)
        unload(records)


if __name__ == "__main__":
    main()
