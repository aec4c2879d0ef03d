"""What stays of a sign-in in its terminal window: the script's last words, until a key is pressed.

Each test runs in a sandbox and a process of its own: test_terminal.py BUILD_FOLDER TEST_NAME
"""

import os
import pathlib
import pty
import select
import subprocess
import sys
import unittest

PROMPT = "Press any key to close this window. "
DEADLINE = 20  # seconds


class TerminalTest(unittest.TestCase):
    def open(self, script, mode=0o755):
        """Does what the emulator does: gives the command a terminal of its own."""
        path = pathlib.Path(os.environ["HOME"]) / "a script's path.sh"
        path.write_text("#!/bin/sh\n" + script)
        path.chmod(mode)
        said = subprocess.run([BUILD + "/tests/print_terminal_request", path, "gemini"],
                              stdout=subprocess.PIPE, check=True).stdout.decode()
        words = said.split("\0")[:-1]
        self.assertEqual(words[:2], ["/usr/bin/xterm", "-e"])
        self.child, self.terminal = pty.fork()
        if self.child == 0:
            os.execv(words[2], words[2:])
        self.shown = ""

    def see(self, words):
        while words not in self.shown:
            ready, _, _ = select.select([self.terminal], [], [], DEADLINE)
            self.assertTrue(ready, f"{words!r} doesn't come after {self.shown!r}")
            try:
                came = os.read(self.terminal, 4096)
            except OSError:
                came = b""
            self.assertTrue(came, f"closed after {self.shown!r}")
            self.shown += came.decode()

    def press(self, key):
        os.write(self.terminal, key)

    def assert_closes(self):
        while True:
            try:
                if not os.read(self.terminal, 4096):
                    break
            except OSError:
                break  # how a terminal says that nobody is left in it
        os.waitpid(self.child, 0)

    def test_the_last_words_stay_until_a_key_is_pressed(self):
        self.open('echo "signed in to $1, $#"')
        self.see("signed in to gemini, 1")
        self.see(PROMPT)
        self.assertNotIn("failed", self.shown)
        self.press(b"x")
        self.assert_closes()

    def test_they_stay_after_a_failure_too(self):
        self.open("echo no such account; exit 3")
        self.see("no such account")
        self.see("The sign-in has failed (3).")
        self.see(PROMPT)
        self.press(b" ")
        self.assert_closes()

    def test_they_stay_after_an_interrupt_which_the_script_hears(self):
        self.open("trap 'echo given up; exit 130' INT; echo waiting; read answer")
        self.see("waiting")
        self.press(b"\x03")
        self.see("given up")
        self.see(PROMPT)
        self.press(b"q")
        self.assert_closes()

    def test_the_script_can_ask(self):
        self.open('read -r answer; echo "so $answer"')
        self.press(b"be it\n")
        self.see("so be it")
        self.see(PROMPT)
        self.press(b"\n")
        self.assert_closes()

    def test_a_script_that_cannot_be_run_is_told_of(self):
        self.open("", mode=0o644)
        self.see("The sign-in has failed (126).")
        self.see(PROMPT)
        self.press(b"x")
        self.assert_closes()


if __name__ == "__main__":
    BUILD = sys.argv.pop(1)
    unittest.main()
