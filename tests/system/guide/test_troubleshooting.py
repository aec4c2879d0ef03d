"""The guide's commands by symptom, run as they stand there on a home that has the fault.

Each test runs in a sandbox and a process of its own: test_troubleshooting.py BUILD_FOLDER TEST_NAME
"""

import pathlib
import re
import shutil
import subprocess
import sys
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[3]
sys.path.append(str(SOURCE / "tests/system/program"))
from session import Session, label_of, wait_until  # noqa: E402

PAGE = (SOURCE / "docs/guide/troubleshooting.md").read_text(encoding="utf-8")
CRASHING = "fire-drill"


def commands(symptom):
    """The command lines under a heading."""
    block = re.search(rf"^## {re.escape(symptom)}\n.*?```sh\n(.*?)```", PAGE, re.MULTILINE | re.DOTALL)
    return block.group(1).splitlines()


class TroubleshootingTest(unittest.TestCase):
    def setUp(self):
        self.session = Session(BUILD)
        self.addCleanup(self.session.end)
        (self.session.prefix / "bin/varnhold-launchctl").symlink_to("../libexec/varnhold/launchctl")

    def launch(self, title):
        self.session.start()
        self.session.await_title(title)

    def replace_in_bots_file(self, old, new):
        """Once; the end takes it back."""
        file = self.session.support / "bots.json"
        good = file.read_text()
        self.addCleanup(file.write_text, good)
        file.write_text(good.replace(old, new, 1))

    def type(self, command, role="planner"):
        """What a shell says to a line of the guide."""
        path = "Library/Application\\ Support/Varnhold"
        self.assertIn(f"S=~/{path}", PAGE)
        line = f"S=~/{path}\n" + command.replace("ROLE", role).replace("LABEL", label_of(role))
        environment = dict(self.session.environment,
                           PATH=f"{self.session.prefix}/bin:{self.session.environment['PATH']}")
        done = subprocess.run(["bash", "-c", line], env=environment, capture_output=True, text=True,
                              check=False)
        return done.stdout + done.stderr

    def test_a_bot_that_is_paused_is_in_no_listing(self):
        self.launch("4 of 6 bots running, 1 crashed")
        listing = commands("My bot isn't started")[0]
        paused = next(bot["role"] for bot in self.session.bots() if bot.get("isPaused"))
        self.assertEqual(self.type(listing, paused), "")
        self.assertRegex(self.type(listing), rf"^\d+\t0\t{label_of('planner')}\n$")

    def test_a_bot_that_fails_shows_its_status_and_its_log_says_why(self):
        self.launch("4 of 6 bots running, 1 crashed")
        listing, log = commands("My bot isn't started")
        self.assertRegex(self.type(listing, CRASHING), rf"^-\t1\t{label_of(CRASHING)}\n$")
        self.assertIn("crashing on request with status 1", self.type(log, CRASHING))

    def test_bots_whose_code_is_missing_show_that_they_can_not_be_started(self):
        shutil.rmtree(self.session.prefix / "lib/varnhold")
        self.launch("0 of 6 bots running, 5 crashed")
        self.assertRegex(self.type(commands("My bot isn't started")[0]), rf"^-\t78\t{label_of('planner')}\n$")
        self.assertIn("| `-  78 …`", PAGE)

    def test_a_mistake_in_the_bots_file_is_shown_with_its_place(self):
        self.replace_in_bots_file("},", "}")
        self.assertRegex(self.type(commands("0/0, and no bots in the window")[0]), r"line 1 column \d+")

    def test_a_record_that_lacks_something_is_named_by_the_doctor(self):
        self.replace_in_bots_file('"role"', '"rolle"')
        said = self.type(commands("0/0, and no bots in the window")[1])
        self.assertIn("bots.json", said)
        self.assertIn("role", said)

    def test_the_models_that_bots_have_used_are_told_and_a_bot_without_one_is_missing(self):
        self.launch("4 of 6 bots running, 1 crashed")
        question = commands("The menu says Idle")[0]
        said = wait_until("a bot has noted a model", lambda: self.type(question)
                          if "planner|" in self.type(question) else None)
        self.assertNotIn(CRASHING, said)

    def test_a_bot_that_is_in_no_list_any_more_is_unloaded(self):
        self.launch("4 of 6 bots running, 1 crashed")
        self.session.await_up("planner")
        listing, unload = commands("A bot doesn't end, or comes back")
        self.assertIn(label_of("planner"), self.type(listing))
        self.type(unload)
        wait_until("it is gone", lambda: label_of("planner") not in self.type(listing))


if __name__ == "__main__":
    BUILD = sys.argv.pop(1)
    unittest.main()
