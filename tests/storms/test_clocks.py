"""Clocks that jump by years while agents run.

Each storm runs in a sandbox of its own: test_clocks.py BUILD_FOLDER TEST_NAME
"""

import os
import pathlib
import random
import shutil
import struct
import subprocess
import time

from storm import BUILD, SILENT, StormCase, main, send, wait_until
from storm_measure import figure, measure

CLOCKS = pathlib.Path("/tmp/clocks")
DAY = 86_400
SECOND = 1_000_000_000
FARTHEST = 20_000  # days
THROTTLE = 10  # seconds from one start to the next


class ClocksTest(StormCase):
    def setUp(self):
        self.set_clocks(0, 0)
        # For all that is started from now on, whatever environment it is given.
        etc = pathlib.Path("/tmp/etc")
        shutil.copytree("/etc", etc, symlinks=True, ignore_dangling_symlinks=True,
                        ignore=lambda folder, names: [name for name in names if
                                                      name in ("shadow", "gshadow", "shadow-", "gshadow-")])
        (etc / "ld.so.preload").write_text(f"{BUILD}/tests/libclock_jump.so\n")
        subprocess.run(["mount", "--bind", etc, "/etc"], check=True)
        super().setUp()

    @staticmethod
    def set_clocks(wall_days, boot_days):
        words = struct.pack("=qq", wall_days * DAY * SECOND, boot_days * DAY * SECOND)
        if not CLOCKS.exists():
            CLOCKS.write_bytes(words)
        with open(CLOCKS, "r+b") as file:
            file.write(words)

    def wall_clock(self):
        return float(subprocess.run(["date", "+%s"], capture_output=True, check=True).stdout)

    def test_agents_run_on_come_back_and_crash_at_their_pace_whatever_the_clocks_say(self):
        before = self.wall_clock()
        self.set_clocks(100, 0)
        self.assertGreater(self.wall_clock() - before, 99 * DAY)  # or nothing here would jump
        self.set_clocks(0, 0)
        jobs = self.load_many(measure(5, 30))
        crashing = self.load_crashing("com.example.crashing")
        dice = random.Random(29)
        jumps = measure(6, 40)
        farthest_boot = 0
        for _ in range(jumps):
            rows = self.jobs()
            # The boot clock never goes back.
            farthest_boot = dice.randint(farthest_boot, FARTHEST)
            self.set_clocks(dice.randint(-FARTHEST // 2, FARTHEST // 2), farthest_boot)
            self.assertEqual({label: row for label, row in self.jobs().items() if row[0]},
                             {label: row for label, row in rows.items() if row[0]})
            job = dice.choice(jobs)
            pid = rows[job.label][0]
            if dice.random() < 0.5:
                send(pid)
            else:
                self.assertEqual(self.launchctl("kickstart", "-k", job.target), SILENT)
            self.await_up(job, other_than=pid)
            self.assertEqual(len(self.agents()) - len(jobs) in (0, 1), True)  # one crashes
        self.await_all_up(jobs + self.crashing_no_more(crashing))
        figure("jumps of the clocks survived, by up to 20,000 days", jumps, "")
        self.unload_all([*jobs, crashing])

    def crashing_no_more(self, job):
        before = len(job.starts())
        began = time.monotonic()
        wait_until("the crash loop goes on", lambda: len(job.starts()) > before, 2 * THROTTLE)
        self.assertLess(time.monotonic() - began, 2 * THROTTLE)
        job.ask_no_more("exit")
        self.await_up(job)
        return [job]

    def test_a_clock_that_is_set_back_holds_up_no_start(self):
        self.set_clocks(FARTHEST, FARTHEST)
        job = self.load()
        pid = self.row(job)[0]
        self.set_clocks(-1, 0)  # as if the machine had been started anew over a kept folder
        send(pid)
        self.await_up(job, other_than=pid, deadline=2 * THROTTLE)
        self.assertEqual(self.bootout(job), SILENT)
        self.assert_nothing_is_left()


if __name__ == "__main__":
    os.umask(0o022)
    main()
