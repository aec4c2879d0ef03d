"""Help, man page and completions of launchctl speak of the same verbs and exit codes.

Each test runs in a sandbox of its own: test_documents.py BUILD_FOLDER TEST_NAME
"""

import re
import shutil
import subprocess
import unittest

from harness import BUILD, HERE, main

TOOLS = HERE.parents[2] / "tools"
MAN_PAGE = TOOLS / "launchctl/launchctl.1"
COMPLETIONS = {"bash": TOOLS / "completions/launchctl.bash",
               "zsh": TOOLS / "completions/_launchctl",
               "fish": TOOLS / "completions/launchctl.fish"}


class DocumentsTest(unittest.TestCase):
    def setUp(self):
        self.help = subprocess.run([BUILD / "libexec/varnhold/launchctl", "--help"], check=True,
                                   capture_output=True, text=True).stdout

    def check_syntax(self, shell):
        if not shutil.which(shell):
            self.skipTest(f"{shell} isn't here")
        done = subprocess.run([shell, "-n", COMPLETIONS[shell]], check=False, capture_output=True,
                              text=True)
        self.assertEqual((done.returncode, done.stderr), (0, ""))

    def test_every_exit_code_of_the_help_stands_in_the_man_page(self):
        codes = re.findall(r"^  (\d+) ", self.help.partition("Exit codes:")[2], re.MULTILINE)
        self.assertIn("69", codes)
        section = MAN_PAGE.read_text().partition(".SH EXIT STATUS")[2].partition(".SH ")[0]
        self.assertEqual(re.findall(r"^\.B (\d+)$", section, re.MULTILINE), codes)

    def test_every_verb_of_the_help_is_in_the_man_page_and_in_the_completions(self):
        verbs = set(re.findall(r"^  ([a-z]+) ", self.help, re.MULTILINE))
        self.assertIn("kickstart", verbs)
        for file in (MAN_PAGE, *COMPLETIONS.values()):
            words = set(re.findall(r"[a-z]+", file.read_text()))
            self.assertEqual(verbs - words, set(), file)

    def test_the_completion_for_bash_can_be_read(self):
        self.check_syntax("bash")

    def test_the_completion_for_zsh_can_be_read(self):
        self.check_syntax("zsh")

    def test_the_completion_for_fish_can_be_read(self):
        self.check_syntax("fish")


if __name__ == "__main__":
    main()
