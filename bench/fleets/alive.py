"""What the agents of the benchmarks tell of themselves: how many are alive, and when the last came or went.

The layout is that of bench/alive.h.
"""

import mmap
import pathlib
import struct
import time

FILE = pathlib.Path("/tmp/bench-alive")
LAYOUT = struct.Struct("QQQ")
DEADLINE = 600  # seconds


class Alive:
    def __init__(self):
        FILE.write_bytes(bytes(LAYOUT.size))
        with FILE.open("r+b") as file:
            self.map = mmap.mmap(file.fileno(), LAYOUT.size)

    def read(self):
        return LAYOUT.unpack(self.map[:])

    def await_count(self, count):
        """Looks seldom enough to leave the processors to those that are measured."""
        end = time.monotonic() + DEADLINE
        while self.read()[0] != count:
            if time.monotonic() > end:
                raise AssertionError(f"{self.read()[0]} agents are alive and not {count}")
            time.sleep(0.005)

    def since(self, begin, ended=False):
        """Seconds from a moment of time.monotonic_ns() to the last start, or to the last end."""
        return (self.read()[2 if ended else 1] - begin) / 1e9
