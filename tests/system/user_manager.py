"""Waiting for conditions, and a bus with a systemd user manager as a login makes them.

Only ever used inside a sandbox, where XDG_RUNTIME_DIR is ours.
"""

import os
import pathlib
import subprocess
import time

DEADLINE = 60  # seconds; conditions are met in a fraction of it unless something is broken


def wait_until(what, condition, deadline=DEADLINE):
    """Waits for a condition and gives its value; fails with the words for it."""
    end = time.monotonic() + deadline
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise AssertionError(f"gave up waiting: {what}")
        time.sleep(0.02)


def start_session_bus():
    """The address is in the environment afterwards."""
    bus = "unix:path=" + os.environ["XDG_RUNTIME_DIR"] + "/bus"
    os.environ["DBUS_SESSION_BUS_ADDRESS"] = bus
    subprocess.run(["dbus-daemon", "--session", f"--address={bus}", "--fork"], check=True,
                   stdin=subprocess.DEVNULL)


def start_user_manager():
    """Needs the bus. Gives the manager's process once it answers."""
    pathlib.Path("/run/systemd/system").mkdir(parents=True, exist_ok=True)
    with open("/tmp/user-manager.log", "ab") as log:
        manager = subprocess.Popen(
            ["/lib/systemd/systemd", "--user", "--log-target=console"],
            stdin=subprocess.DEVNULL, stdout=log, stderr=log)
    wait_until("the user manager answers", lambda: subprocess.run(
        ["systemctl", "--user", "show", "--property=Version"], check=False,
        capture_output=True).returncode == 0)
    return manager
