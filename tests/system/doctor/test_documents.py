"""Findings, help, man page, completions and pages of the doctor speak of the same things.

Each test runs in a sandbox of its own: test_documents.py BUILD_FOLDER TEST_NAME
"""

import pathlib
import re
import shutil
import subprocess
import sys
import unittest

sys.path.append(str(pathlib.Path(__file__).resolve().parents[1] / "services"))
from harness import BUILD, main  # noqa: E402

SOURCE = pathlib.Path(__file__).resolve().parents[3]
PAGE = SOURCE / "docs/doctor.md"
MAN_PAGE = SOURCE / "tools/doctor/varnhold-doctor.1"
COMPLETIONS = {"bash": SOURCE / "tools/completions/varnhold-doctor.bash",
               "zsh": SOURCE / "tools/completions/_varnhold-doctor",
               "fish": SOURCE / "tools/completions/varnhold-doctor.fish"}
CATALOGUE = SOURCE / "src/doctor/catalogue.h"


class DocumentsTest(unittest.TestCase):
    def setUp(self):
        self.help = subprocess.run([BUILD / "bin/varnhold-doctor", "--help"], check=True,
                                   capture_output=True, text=True).stdout

    def test_every_finding_has_a_section_and_every_section_a_finding(self):
        ids = re.findall(r'= "([a-z-]+)";|=\s+"([a-z-]+)";', CATALOGUE.read_text())
        ids = [one or other for one, other in ids]
        self.assertIn("file-rejected", ids)
        self.assertEqual(len(ids), len(set(ids)))
        self.assertEqual(sorted(re.findall(r"^### (.+)$", PAGE.read_text(), re.MULTILINE)),
                         sorted(ids))

    def test_every_finding_is_made_somewhere(self):
        names = re.findall(r"string_view (\w+) =", CATALOGUE.read_text())
        sources = "".join(path.read_text() for path in (SOURCE / "src/doctor").glob("*.cpp"))
        self.assertEqual([name for name in names if f"ids::{name}" not in sources], [])

    def test_checks_and_options_of_the_help_are_in_man_page_page_and_completions(self):
        checks = re.findall(r"^  ([a-z]+) ", self.help, re.MULTILINE)
        options = re.findall(r"--([a-z-]+)", self.help)
        self.assertIn("keepalive", checks)
        self.assertIn("without", options)
        for file in (MAN_PAGE, *COMPLETIONS.values()):
            text = file.read_text().replace("\\-", "-")
            for word in checks + options:
                self.assertRegex(text, rf"\b{word}\b", file)
        for check in checks:
            self.assertIn(f"\n## {check}\n", PAGE.read_text())

    def test_every_exit_code_of_the_help_stands_in_the_man_page(self):
        codes = re.findall(r"^  (\d+) ", self.help.partition("Exit codes:")[2], re.MULTILINE)
        section = MAN_PAGE.read_text().partition(".SH EXIT STATUS")[2].partition(".SH ")[0]
        self.assertEqual(re.findall(r"^\.B (\d+)$", section, re.MULTILINE), codes)

    def test_the_completions_can_be_read(self):
        for shell, file in COMPLETIONS.items():
            with self.subTest(shell=shell):
                self.assertTrue(shutil.which(shell))
                done = subprocess.run([shell, "-n", file], check=False, capture_output=True,
                                      text=True)
                self.assertEqual((done.returncode, done.stderr), (0, ""))

    def test_wrong_use_is_told_in_one_line(self):
        said = subprocess.run([BUILD / "bin/varnhold-doctor", "fles"], check=False,
                              capture_output=True, text=True)
        self.assertEqual((said.returncode, said.stdout), (64, ""))
        self.assertEqual(said.stderr, 'varnhold-doctor: there is no check "fles"\n'
                                      "Try: varnhold-doctor --help\n")


if __name__ == "__main__":
    main()
