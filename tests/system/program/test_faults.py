"""The built supervisor in a world that fails it: tools that hang or are gone, starters with odd habits.

Each test runs in a sandbox and a process of its own: test_faults.py BUILD_FOLDER TEST_NAME
"""

import contextlib
import os
import pathlib
import signal
import socket
import subprocess
import sys
import unittest

from session import Session, agents, label_of, send, wait_until

CRASHING = "fire-drill"
RUNNING = ("planner", "researcher", "builder", "customer-desk", CRASHING)
ROW_RESTART, ROW_FIRST_BOT = 4, 5
FAR_AHEAD = 4_000_000_000  # seconds on the wall clock


class FaultsTest(unittest.TestCase):
    def setUp(self):
        self.session = Session(BUILD)
        self.addCleanup(self.session.end)
        (self.session.support / "data" / CRASHING / "crash-at-start").unlink()
        self.tool = self.session.prefix / "libexec/varnhold/launchctl"

    def launch(self):
        self.session.start()
        for role in RUNNING:
            self.session.await_up(role)
        self.session.await_title("5 of 6 bots running$")

    def put_in_place_of_the_tool(self, script):
        """The real one is kept beside it, as launchctl-real."""
        self.tool.rename(self.tool.with_name("launchctl-real"))
        if script:
            self.tool.write_text(f"#!/bin/sh\nreal=$0-real\n{script}\n")
            self.tool.chmod(0o755)

    def take_tool_back(self):
        self.tool.with_name("launchctl-real").replace(self.tool)

    def supervisor_descriptors(self):
        return len(os.listdir(f"/proc/{self.session.supervisor.pid}/fd"))

    def assert_fleet_is_down(self):
        wait_until("the fleet is down", lambda: not agents())
        self.assertEqual(self.session.jobs(), {})

    # -- the service tool ----------------------------------------------------------------------------

    def test_a_listing_that_hangs_holds_up_neither_menu_nor_window_nor_quit(self):
        self.put_in_place_of_the_tool('[ "$1" = list ] && exec sleep 600; exec "$real" "$@"')
        self.session.start()
        self.session.await_title("0 of 6 bots running$")
        self.session.open_menu()
        self.session.tool("xdotool", "key", "Escape")
        second = self.session.tool(self.session.prefix / "bin/varnhold")
        self.assertEqual(second.returncode, 0)
        wait_until("the window", lambda: self.session.windows("^Varnhold$"))
        send(self.session.supervisor.pid, signal.SIGTERM)
        self.assertEqual(self.session.supervisor.wait(60), 0)
        self.take_tool_back()
        self.assert_fleet_is_down()

    def test_a_tool_that_is_gone_costs_no_descriptor_and_is_used_again_once_it_is_back(self):
        self.launch()
        self.put_in_place_of_the_tool("")
        self.session.await_title("0 of 6 bots running$")
        before = self.supervisor_descriptors()
        for _ in range(5):  # each tries to start it, and polls
            self.session.choose(ROW_FIRST_BOT)
        self.session.open_menu()
        self.session.tool("xdotool", "key", "Escape")
        wait_until("no descriptor more than before", lambda: self.supervisor_descriptors() <= before)
        self.take_tool_back()
        self.session.await_title("5 of 6 bots running$")

    # -- the start -----------------------------------------------------------------------------------

    def test_hears_the_end_and_reads_its_children_whatever_signals_it_was_started_with(self):
        def starter():
            signal.pthread_sigmask(signal.SIG_BLOCK, [signal.SIGTERM, signal.SIGCHLD])
            signal.signal(signal.SIGCHLD, signal.SIG_IGN)
        self.session.supervisor = subprocess.Popen([self.session.prefix / "bin/varnhold"],
                                                   env=self.session.environment, preexec_fn=starter)
        self.session.await_title("5 of 6 bots running$")
        send(self.session.supervisor.pid, signal.SIGTERM)
        self.assertEqual(self.session.supervisor.wait(60), 0)
        self.assert_fleet_is_down()

    def test_says_at_its_start_where_the_bots_code_belongs_that_is_missing(self):
        code = self.session.prefix / "lib/varnhold/Contents/Resources/daemon"
        said = self.session.home / "said"

        def start():
            with open(said, "w", encoding="utf-8") as file:
                self.session.supervisor = subprocess.Popen(
                    [self.session.prefix / "bin/varnhold"], env=self.session.environment, stderr=file)
            self.session.await_title("of 6 bots running")
            send(self.session.supervisor.pid, signal.SIGTERM)
            self.assertEqual(self.session.supervisor.wait(60), 0)
            return said.read_text()
        self.assertNotIn("provider_telegramd", start())
        code.rename(code.with_name("elsewhere"))
        self.assertIn(f"varnhold: there is no provider_telegramd in {self.session.prefix}/lib/daemon, "
                      "so no bot can run", start())

    def test_a_lock_file_that_was_left_behind_locks_nobody_out(self):
        folder = pathlib.Path(os.environ["XDG_RUNTIME_DIR"]) / "varnhold"
        folder.mkdir(mode=0o700)
        lock = folder / "supervisor.lock"
        lock.write_text("1")  # a process that is there
        lock.chmod(0o600)
        os.utime(lock, (FAR_AHEAD, FAR_AHEAD))
        self.session.start()
        self.session.await_title("of 6 bots running$")
        second = self.session.tool(self.session.prefix / "bin/varnhold")
        self.assertEqual(second.returncode, 0)  # it has found the first by the same lock
        wait_until("the window", lambda: self.session.windows("^Varnhold$"))
        send(self.session.supervisor.pid, signal.SIGTERM)
        self.assertEqual(self.session.supervisor.wait(60), 0)
        self.session.start()
        self.session.await_title("5 of 7 bots running$")  # the window has added one

    def say(self, words):
        """To the running program, as a second start does; keeps the connection if there are none."""
        with contextlib.ExitStack() as stack:
            guest = stack.enter_context(socket.socket(socket.AF_UNIX))
            guest.connect(f"{os.environ['XDG_RUNTIME_DIR']}/varnhold/supervisor.socket")
            guest.settimeout(1)
            if words is None:
                stack.pop_all()
                return guest
            with contextlib.suppress(OSError):  # it needn't hear all of it
                guest.sendall(words)
                guest.shutdown(socket.SHUT_WR)
            return None

    def test_whatever_is_said_to_it_by_those_who_knock_it_goes_on_and_keeps_no_descriptor(self):
        self.launch()
        self.session.tool(self.session.prefix / "bin/varnhold")
        wait_until("the window", lambda: self.session.windows("^Varnhold$"))
        before = self.supervisor_descriptors()
        silent = [self.say(None) for _ in range(50)]
        for words in (b"", b"\n", b"\n" * 1000, bytes(60_000), b"x" * 1_000_000, os.urandom(50_000),
                      b"\xff\xfe_TIME", b"a\nb_TIME99999999999999999999", b"_TIME-1"):
            for _ in range(10):
                self.say(words)
        for guest in silent:
            guest.close()
        second = self.session.tool(self.session.prefix / "bin/varnhold")
        self.assertEqual(second.returncode, 0)
        # Some are its own, for children and files of the moment.
        wait_until("nobody is left", lambda: self.supervisor_descriptors() < before + 10)
        self.assertIsNone(self.session.supervisor.poll())
        send(self.session.supervisor.pid, signal.SIGTERM)
        self.assertEqual(self.session.supervisor.wait(60), 0)

    def run_without_display(self, *words):
        before = sorted(self.session.home.rglob("*"))
        environment = {name: value for name, value in self.session.environment.items()
                       if name != "DISPLAY"}
        done = subprocess.run([self.session.prefix / "bin/varnhold", *words], env=environment,
                              capture_output=True, text=True, check=False)
        self.assertEqual(sorted(self.session.home.rglob("*")), before)
        return done.returncode, done.stdout, done.stderr

    def test_tells_about_itself_without_a_display(self):
        code, out, err = self.run_without_display("--help")
        self.assertEqual((code, err), (0, ""))
        self.assertTrue(out.startswith("Usage: varnhold\n"))
        code, out, err = self.run_without_display("--version")
        self.assertEqual((code, err), (0, ""))
        self.assertRegex(out, r"^varnhold \d+\.\d+\.\d+\n$")

    def test_refuses_words_that_it_does_not_know(self):
        code, out, err = self.run_without_display("--start")
        self.assertEqual((code, out), (64, ""))
        self.assertIn('"--start"', err)

    def test_says_so_in_one_sentence_where_a_part_of_it_is_missing(self):
        program = self.session.prefix / "libexec/varnhold/supervisor"
        program.unlink()
        self.assertEqual(self.run_without_display(),
                         (69, "", f"varnhold: {program}: No such file or directory.\n"))

    def test_says_so_in_one_sentence_where_there_is_no_display(self):
        self.assertEqual(self.run_without_display(),
                         (69, "", "varnhold: there is no display to show itself on.\n"))


if __name__ == "__main__":
    if os.getpid() > 1000 or os.environ.get("XDG_RUNTIME_DIR") != "/tmp/runtime":
        sys.exit("Only runs inside tests/system/in-sandbox: it ends processes by their names.")
    BUILD = sys.argv.pop(1)
    unittest.main()
