"""An agent for the tests of the service tools: notes what it was given at each start, then obeys.

    agent.py FOLDER [ANYTHING...]

Each start adds a line to FOLDER/starts. Files in the folder ask for more: "exit" with a code and
"signal" with a number end it at once, "ignore-term" makes it deaf to a polite end, "note-term" makes it
add a line to FOLDER/terms for each one instead, "exit-on-term" with a code makes it end with that, and
"leave-child" makes it start a child in a session of its own, under the name that the file holds.
"""

import json
import os
import pathlib
import signal
import subprocess
import sys
import time

FOLDER = pathlib.Path(sys.argv[1])


def asked(name):
    try:
        return (FOLDER / name).read_text()
    except OSError:
        return None


def descriptors():
    found = {}
    for number in os.listdir("/proc/self/fd"):
        try:
            found[number] = os.readlink(f"/proc/self/fd/{number}")
        except OSError:
            pass  # the one that read the folder
    return found


def process_status(name):
    for line in pathlib.Path("/proc/self/status").read_text().splitlines():
        if line.startswith(name + ":"):
            return line.split()[1]
    return None


def note(name, line):
    notes = os.open(FOLDER / name, os.O_WRONLY | os.O_CREAT | os.O_APPEND, 0o600)
    os.write(notes, line)
    os.close(notes)


def surroundings():
    # As it was handed over: the interpreter adds to its own environment.
    entries = pathlib.Path("/proc/self/environ").read_bytes().split(b"\0")
    words = pathlib.Path("/proc/self/cmdline").read_bytes().split(b"\0")[:-1]
    mask = os.umask(0)
    os.umask(mask)
    return {
        "time": time.clock_gettime(time.CLOCK_BOOTTIME),
        "pid": os.getpid(),
        "session": os.getsid(0),
        "arguments": [os.fsdecode(word) for word in words],
        "environment": [os.fsdecode(entry) for entry in entries if entry],
        "folder": os.getcwd(),
        "descriptors": descriptors(),
        "blocked": process_status("SigBlk"),
        "umask": mask,
    }


def main():
    start = surroundings()
    if asked("ignore-term") is not None:
        signal.signal(signal.SIGTERM, signal.SIG_IGN)
    elif asked("note-term") is not None:
        signal.signal(signal.SIGTERM, lambda *_: note("terms", b"asked to end\n"))
    elif (last := asked("exit-on-term")) is not None:
        signal.signal(signal.SIGTERM, lambda *_: os._exit(int(last)))
    if (name := asked("leave-child")) is not None:
        child = subprocess.Popen([name or "sleep", "1000"], executable="/bin/sleep",
                                 start_new_session=True)
        start["child"] = child.pid
    line = json.dumps(start).encode() + b"\n"
    note("starts", line)
    print(f"started as {start['pid']}", flush=True)
    print("trouble", file=sys.stderr, flush=True)
    if (number := asked("signal")) is not None:
        os.kill(os.getpid(), int(number))
    if (code := asked("exit")) is not None:
        sys.exit(int(code))
    while True:
        signal.pause()


main()
