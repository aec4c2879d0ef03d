"""What is built for a Mac: from which sources, and what the bundle holds.

test_bundle.py BUILD [TEST...]
"""
import json
import pathlib
import plistlib
import re
import struct
import subprocess
import sys
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
BUILD = pathlib.Path(sys.argv.pop(1)) if __name__ == "__main__" else None

# What a Mac doesn't have, by what sources call it.
LINUX_ONLY = re.compile(
    r"\b(pipe2|accept4|prctl|pidfd_open|inotify_\w+|epoll_\w+|eventfd|signalfd|timerfd_\w+|memfd_create|close_range"
    r"|statx|renameat2|fallocate|getrandom|O_TMPFILE|O_PATH|SOCK_CLOEXEC|SOCK_NONBLOCK|MSG_CMSG_CLOEXEC|POLLRDHUP"
    r"|PR_SET_\w+|st_mtim|st_ctim|st_atim)\b|\"/proc/|<(?:linux/|sys/(?:syscall|prctl|inotify|epoll|statfs|vfs)\.h)")
# What a Mac has no use for.
STRANGERS = re.compile(r"<(?:xcb/|X11/|systemd/|s6/|skalibs/|QDBus|QtDBus)|x11_hints|session_bus|embedded_tray")


def compiled():
    """Sources of ours that are compiled, as paths in the repository."""
    commands = json.loads((BUILD / "compile_commands.json").read_text())
    files = [pathlib.Path(command["file"]) for command in commands]
    return sorted(str(file.relative_to(ROOT)) for file in files
                  if file.is_relative_to(ROOT / "src"))


def included(sources):
    """Those, and every header of ours that they include, directly or not."""
    found = set(sources)
    open_ones = list(sources)
    while open_ones:
        text = (ROOT / open_ones.pop()).read_text(encoding="utf-8")
        for header in re.findall(r'^\s*#\s*(?:include|import)\s*"([^"]+)"', text, re.MULTILINE):
            name = f"src/{header}"
            if name not in found and (ROOT / name).is_file():
                found.add(name)
                open_ones.append(name)
    return found


def without_comments(text):
    return re.sub(r"//[^\n]*", "", text)


class BundleTest(unittest.TestCase):
    maxDiff = None

    def test_is_built_from_files_that_exist(self):
        sources = compiled()
        self.assertGreater(len(sources), 100)
        for source in sources:
            self.assertTrue((ROOT / source).is_file(), source)

    def test_has_all_that_stands_under_macos_in_it(self):
        there = {str(file.relative_to(ROOT)) for file in (ROOT / "src").glob("**/macos/*")
                 if file.suffix in (".cpp", ".mm", ".h")}
        self.assertGreater(len(there), 10)
        self.assertEqual(there - included(compiled()), set())

    def test_has_nothing_of_what_stands_under_linux_in_it(self):
        self.assertEqual([name for name in included(compiled()) if "/linux/" in name], [])

    def test_has_no_code_of_other_systems_window_and_service_managers(self):
        for name in sorted(included(compiled())):
            self.assertIsNone(re.search(r"s6|systemd|sd_bus|embedded|notifier|guardian", name), name)
            found = STRANGERS.search(without_comments((ROOT / name).read_text(encoding="utf-8")))
            self.assertIsNone(found, f"{name}: {found and found.group()}")

    def test_calls_nothing_that_only_linux_has(self):
        for name in sorted(included(compiled())):
            found = LINUX_ONLY.search(without_comments((ROOT / name).read_text(encoding="utf-8")))
            self.assertIsNone(found, f"{name}: {found and found.group()}")

    def test_is_one_program_that_starts(self):
        program = BUILD / "Varnhold.app/Contents/MacOS/Varnhold"
        told = subprocess.run([program, "--version"], capture_output=True, text=True, check=True)
        self.assertRegex(told.stdout, r"^varnhold \d+\.\d+\.\d+\n$")

    def test_is_linked_with_no_strangers(self):
        program = BUILD / "Varnhold.app/Contents/MacOS/Varnhold"
        told = subprocess.run(["readelf", "-d", program], capture_output=True, text=True, check=True)
        libraries = re.findall(r"NEEDED.*\[(.*)\]", told.stdout)
        self.assertTrue(any("Qt6Quick" in library for library in libraries), libraries)
        self.assertEqual([library for library in libraries
                          if re.search(r"xcb|X11|systemd|s6|skarnet|DBus", library)], [])

    def test_describes_itself_as_an_agent_of_the_menu_bar(self):
        contents = BUILD / "Varnhold.app/Contents"
        with open(contents / "Info.plist", "rb") as file:
            told = plistlib.load(file)
        self.assertIs(told["LSUIElement"], True)
        self.assertIs(told["NSSupportsSuddenTermination"], False)
        self.assertEqual(told["CFBundleIdentifier"], "com.ostrelleai.Varnhold")
        self.assertTrue((contents / "MacOS" / told["CFBundleExecutable"]).is_file())
        self.assertTrue((contents / "Resources" / f"{told['CFBundleIconFile']}.icns").is_file())
        self.assertIn(f"VERSION {told['CFBundleVersion']} ", (ROOT / "CMakeLists.txt").read_text())

    def test_holds_the_bots_code_that_it_was_given(self):
        for name in ("provider_telegramd", "login_scout.sh"):
            self.assertTrue((BUILD / "Varnhold.app/Contents/Resources/daemon" / name).exists(), name)

    def test_has_an_icon_of_our_drawing_in_every_size(self):
        content = (BUILD / "Varnhold.app/Contents/Resources/AppIcon.icns").read_bytes()
        kind, length = struct.unpack(">4sI", content[:8])
        self.assertEqual((kind, length), (b"icns", len(content)))
        widths = {}
        place = 8
        while place < len(content):
            kind, length = struct.unpack(">4sI", content[place:place + 8])
            picture = content[place + 8:place + length]
            self.assertEqual(picture[:8], b"\x89PNG\r\n\x1a\n")
            width, height = struct.unpack(">II", picture[16:24])
            self.assertEqual(width, height)
            widths[kind.decode()] = width
            drawn = ROOT / f"packaging/icons/{width}.png"
            if drawn.exists():
                self.assertEqual(picture, drawn.read_bytes(), width)
            place += length
        self.assertEqual(widths, {"icp4": 16, "icp5": 32, "icp6": 64, "ic07": 128, "ic08": 256, "ic09": 512,
                                  "ic10": 1024, "ic11": 32, "ic12": 64, "ic13": 256, "ic14": 512})


if __name__ == "__main__":
    unittest.main()
