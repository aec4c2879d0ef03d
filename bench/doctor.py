#!/usr/bin/env python3
"""How long the doctor takes: on the sample fleet, and on a thousand bots of which all are loaded.

    tests/system/in-sandbox /usr/bin/python3 "$PWD/bench/doctor.py" BUILD_FOLDER [BOTS]

Nothing runs but the doctor: the listing comes from a stand-in that prints as many jobs as there are
bots, and their folders stand where the service tools would keep them. Property lists, logs and a
database of events are there.
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
sys.path.append(str(SOURCE / "examples"))
from make_fleet import lay_fleet  # noqa: E402

HOME = pathlib.Path(os.environ["HOME"])
RUNTIME = pathlib.Path(os.environ["XDG_RUNTIME_DIR"])
DATA = HOME / "Library/Application Support/Varnhold"
ROUNDS = 11


def lay(bots, prefix):
    shutil.rmtree(HOME, ignore_errors=True)
    HOME.mkdir()
    shutil.rmtree(RUNTIME / "varnhold", ignore_errors=True)
    lay_fleet(HOME)
    if bots is None:
        records = json.loads((DATA / "bots.json").read_text())
    else:
        records = [{"icon": "x", "title": f"Bot {i}", "token": f"token-of-bot-{i}", "role": f"b{i}",
                    "launchdLabel": f"com.ostrelleai.b{i}.telegramd", "service": "Telegram"}
                   for i in range(bots)]
        (DATA / "bots.json").write_text(json.dumps(records))
        (DATA / "chain_bot_assignments.json").write_text(
            json.dumps({"architect": [record["launchdLabel"] for record in records]}))
    rows = ["PID\tStatus\tLabel"]
    (HOME / "Library/LaunchAgents").mkdir(parents=True)
    for number, record in enumerate(records):
        label, role = record["launchdLabel"], record["role"]
        content = plistlib.dumps({
            "Label": label, "KeepAlive": True, "RunAtLoad": True,
            "EnvironmentVariables": {"HOME": str(HOME), "TELEGRAM_BOT_TOKEN": record["token"]},
            "ProgramArguments": ["/usr/bin/python3", "-m", "provider_telegramd"],
            "WorkingDirectory": "/tmp", "StandardOutPath": f"/tmp/vh-{role}.log",
            "StandardErrorPath": f"/tmp/vh-{role}-error.log"})
        (HOME / f"Library/LaunchAgents/{label}.plist").write_bytes(content)
        folder = RUNTIME / "varnhold/jobs" / label
        folder.mkdir(parents=True)
        (folder / "job.plist").write_bytes(content)
        (folder / "starts").write_text("3")
        pathlib.Path(f"/tmp/vh-{role}.log").write_text("[MSG] one\n" * 800)
        crashed = number % 10 == 5
        rows.append(f"{'-' if crashed else os.getpid()}\t{3 if crashed else 0}\t{label}")
    tool = prefix / "libexec/varnhold/launchctl"
    (prefix / "listing").write_text("\n".join(rows) + "\n")
    tool.write_text(f"#!/bin/sh\nexec cat {prefix}/listing\n")
    with sqlite3.connect(DATA / "governor.db") as database:
        database.execute("CREATE TABLE agent_events (id INTEGER PRIMARY KEY, dept TEXT, model TEXT)")
        database.executemany("INSERT INTO agent_events (dept, model) VALUES (?, 'm')",
                             [(record["role"],) for record in records] * 100)


def measure(prefix, *words):
    times = []
    for _ in range(ROUNDS):
        start = time.perf_counter()
        subprocess.run([prefix / "bin/varnhold-doctor", *words], check=False,
                       stdout=subprocess.DEVNULL)
        times.append((time.perf_counter() - start) * 1000)
    return statistics.median(times), max(times)


def main():
    build = pathlib.Path(sys.argv[1])
    bots = int(sys.argv[2]) if len(sys.argv) > 2 else 1000
    prefix = pathlib.Path("/tmp/prefix")
    for folder in ("bin", "libexec/varnhold"):
        (prefix / folder).mkdir(parents=True)
    shutil.copy(build / "bin/varnhold-doctor", prefix / "bin")
    tool = prefix / "libexec/varnhold/launchctl"
    tool.touch()
    tool.chmod(0o755)
    for name, count in (("sample fleet", None), (f"{bots} bots", bots)):
        lay(count, prefix)
        for words in ((), ("--json",), ("fleet",), ("files",), ("--without", "claude")):
            middle, worst = measure(prefix, *words)
            print(f"{name:14} {' '.join(words) or 'all checks':18} "
                  f"{middle:7.1f} ms, at worst {worst:7.1f} ms")


if __name__ == "__main__":
    main()
