"""Property lists, labels and runtime folders as somebody makes them who means harm.

Each storm runs in a sandbox of its own: test_hostile.py BUILD_FOLDER TEST_NAME
"""

import os
import pathlib
import plistlib
import random
import shutil
import stat
import subprocess
import time

from storm import DOMAIN, SILENT, StormCase, main
from storm_measure import figure, measure

HOME = pathlib.Path(os.environ["HOME"])
ANSWERS = {0, 3, 5, 64, 69, 113, 125}
LONGEST = 15  # seconds; a verb waits ten for somebody else's lock


class HostileTest(StormCase):
    # -- property lists -----------------------------------------------------------------------------

    @staticmethod
    def changed(content, dice):
        """As a bad disk or a bad person would: bytes other than they were, cut, doubled, or moved."""
        changed = bytearray(content)
        for _ in range(dice.randint(1, 8)):
            place = dice.randrange(len(changed))
            way = dice.randrange(4)
            if way == 0:
                changed[place] = dice.randrange(256)
            elif way == 1:
                del changed[place:place + dice.randint(1, 20)]
            elif way == 2:
                changed[place:place] = changed[place:place + 50] * dice.choice((1, 2, 100))
            else:
                changed[place:place] = dice.choice((b"\0", b"\xff\xfe", b"<dict>" * 500, b"&#0;",
                                                    b"<!ENTITY a '&a;'>", b"\x80" * 64))
            if not changed:
                return b"\0"
        return bytes(changed)

    def plant_lists(self, folder, count, dice):
        """Lists of jobs that would harm nobody if they were loaded, each spoilt."""
        values = {"Label": "com.example.bad", "KeepAlive": False, "RunAtLoad": False,
                  "ProgramArguments": ["/bin/true"], "EnvironmentVariables": {"A": "b" * 50},
                  "StandardOutPath": "/dev/null", "StandardErrorPath": "/dev/null"}
        for number in range(count):
            kind = dice.choice((plistlib.FMT_XML, plistlib.FMT_BINARY))
            values["Label"] = f"com.example.bad{number}"
            (folder / f"{number:05}.plist").write_bytes(
                self.changed(plistlib.dumps(values, fmt=kind), dice))

    def plant_classics(self, folder):
        (folder / "deep.plist").write_bytes(
            b'<plist version="1.0">' + b"<array>" * 200_000 + b"</array>" * 200_000 + b"</plist>")
        (folder / "nul.plist").write_bytes(
            b'<plist version="1.0"><dict><key>a&#0;b</key><string>c</string></dict></plist>')
        with open(folder / "large.plist", "wb") as large:
            large.truncate(4 << 30)
        (folder / "endless.plist").symlink_to("/dev/zero")
        os.mkfifo(folder / "pipe.plist")
        (folder / "nowhere.plist").symlink_to("/nowhere")
        (folder / "self.plist").symlink_to("self.plist")

    def test_no_list_however_spoilt_keeps_another_from_loading(self):
        folder = HOME / "lists"
        folder.mkdir()
        self.plant_lists(folder, measure(150, 3000), random.Random(17))
        self.plant_classics(folder)
        good = [self.job(f"com.example.good{number}") for number in range(3)]
        for job, place in zip(good, ("00000-before", "00099-within", "zzz-last")):
            shutil.copy(job.path, folder / f"{place}.plist")
        began = time.monotonic()
        done = subprocess.run(["prlimit", f"--as={1 << 30}", *self.command("bootstrap", DOMAIN, folder)],
                              capture_output=True, check=False)
        figure(f"{len(os.listdir(folder))} spoilt lists, looked at in", time.monotonic() - began, "s")
        self.assertEqual((done.returncode, done.stdout), (5, b""))
        for job in good:
            self.await_up(job)
        for label in self.jobs():
            self.launchctl("bootout", f"{DOMAIN}/{label}")
        self.assert_nothing_is_left()

    # -- words ----------------------------------------------------------------------------------------

    def test_words_of_any_bytes_are_answered(self):
        job = self.load()
        row = self.row(job)
        dice = random.Random(19)
        for _ in range(measure(100, 2000)):
            label = bytes(dice.randrange(1, 256) for _ in range(dice.choice((0, 1, 5, 60, 300))))
            label = dice.choice((label, b"../" * dice.randint(1, 90) + label, b"%" + label, b"." + label))
            words = dice.choice((
                ("list", label), ("stop", label), (label,), ("bootstrap", DOMAIN, label),
                (dice.choice(("bootout", "kickstart")), os.fsencode(DOMAIN) + b"/" + label)))
            self.assertIn(self.launchctl(*words).code, ANSWERS, words)
        self.assertEqual(self.jobs(), {job.label: row})
        self.assertEqual(self.bootout(job), SILENT)

    # -- the runtime folder -------------------------------------------------------------------------

    def plant_anything(self, place, dice, documents):
        """Something at a place where our own things may stand."""
        folder = place.parent
        if os.path.realpath(folder.parent) == str(folder.parent) and dice.random() < 0.7:
            try:
                folder.mkdir(mode=0o700)
            except OSError:
                pass  # something was planted there
        if os.path.realpath(folder) != str(folder) or not folder.is_dir() or os.path.lexists(place):
            return
        what = dice.randrange(7)
        if what == 0:
            place.symlink_to(documents)
        elif what == 1:
            os.mkfifo(place)
        elif what == 2:
            place.mkdir(mode=dice.choice((0o700, 0o777, 0)))
        elif what == 3:
            place.write_bytes(dice.randbytes(dice.choice((0, 3, 5000))))
        elif what == 4:
            place.symlink_to("/dev/zero")
        elif what == 5:
            os.mknod(place, stat.S_IFSOCK | 0o600)
        else:
            place.symlink_to(place.name)

    def test_whatever_is_planted_in_the_folder_no_verb_hangs_or_touches_what_is_not_ours(self):
        documents = HOME / "documents"
        documents.mkdir(mode=0o700)
        for name in ("job.plist", "letter", "run", "lock"):
            (documents / name).write_text("dear to somebody")
        dice = random.Random(23)
        label = "com.example.agent"
        job = self.job(label)
        job.write(KeepAlive=False, RunAtLoad=False)
        names = ("lock", "jobs", "scan", "locks", "scanner-lock", f"jobs/{label}", f"locks/{label}",
                 f"scan/{label}", "scan/.s6-svscan", "scan/.s6-svscan/control", f"jobs/{label}/supervise",
                 f"jobs/{label}/supervise/control", f"jobs/{label}/supervise/status",
                 f"jobs/{label}/supervise/lock", f"jobs/{label}/job.plist", f"jobs/{label}/last-end",
                 f"jobs/{label}/wake", f"jobs/{label}/is-unit", f"jobs/{label}/leaving")
        longest = 0
        for _ in range(measure(10, 120)):
            self.runtime.mkdir(mode=0o700)
            for name in names:
                if dice.random() < 0.5:
                    self.plant_anything(self.runtime / name, dice, documents)
            for words in (("list",), ("list", label), ("kickstart", "-k", job.target), ("stop", label),
                          ("bootstrap", DOMAIN, job.path), ("bootout", job.target)):
                began = time.monotonic()
                self.assertIn(self.launchctl(*words).code, ANSWERS, words)
                longest = max(longest, time.monotonic() - began)
            subprocess.run(self.command("bootout", job.target), capture_output=True, check=False)
            shutil.rmtree(self.runtime)
        figure("longest verb on a folder with planted things", longest, "s")
        self.assertLess(longest, LONGEST)
        self.assertEqual({path.name: path.read_text() for path in documents.iterdir()},
                         {name: "dear to somebody" for name in ("job.plist", "letter", "run", "lock")})


if __name__ == "__main__":
    main()
