"""Where and when figures were taken, in a sentence."""

import datetime
import os
import pathlib
import platform
import re


def load():
    return os.getloadavg()[0]


def _value(file, pattern):
    found = re.search(pattern, pathlib.Path(file).read_text(), re.MULTILINE)
    return found[1] if found else "unknown"


def sentence(build, before, after):
    system = _value("/etc/os-release", r'^PRETTY_NAME="?([^"\n]*)')
    processor = _value("/proc/cpuinfo", r"^model name\s*:\s*(.*)$")
    memory = int(_value("/proc/meminfo", r"^MemTotal:\s+(\d+)")) / 1024 / 1024
    kind = _value(pathlib.Path(build) / "CMakeCache.txt", r"^CMAKE_BUILD_TYPE:\w+=(.*)$")
    today = datetime.date.today()
    return (f"Measured on {today.day} {today:%B %Y}, {system} with Linux {platform.release()}, {os.cpu_count()} "
            f"processors ({processor}), {memory:.0f} GB,\nbuild {kind}; the load was {before:.1f} before the first "
            f"figure and {after:.1f} between the steps, whose own work is part of it.")
