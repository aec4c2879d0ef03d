"""script/run: the program on a user's own fleet and bots' code.

Each test runs in a sandbox and a process of its own: test_run.py BUILD_FOLDER TEST_NAME
"""

import os
import shutil
import subprocess
import sys
import unittest

from session import SOURCE, Session, agents

CODE = SOURCE / "examples/daemon"


class RunTest(unittest.TestCase):
    def setUp(self):
        self.session = Session(BUILD)
        self.addCleanup(self.session.end)
        shutil.rmtree(self.session.prefix / "lib")
        self.checkout = self.session.home / "checkout"
        shutil.copytree(SOURCE / "script", self.checkout / "script")
        self.session.environment["VARNHOLD_BUILD"] = str(self.session.prefix)

    def command(self, *folder):
        return [self.checkout / "script/run", *folder]

    def refusal(self, *folder):
        return self.session.tool(*self.command(*folder))

    def launch(self, *folder):
        self.session.supervisor = subprocess.Popen(self.command(*folder), env=self.session.environment)
        for role in ("planner", "researcher", "builder"):
            self.session.await_up(role)

    def quit(self):
        self.session.supervisor.terminate()
        self.assertEqual(self.session.supervisor.wait(timeout=60), 0)
        self.assertEqual(agents(), {})

    def test_a_folder_of_bots_code_is_run_and_remembered(self):
        self.launch(CODE)
        self.quit()
        self.launch()
        self.quit()

    def test_a_folder_without_bots_code_is_refused(self):
        refused = self.refusal(self.session.home)
        self.assertEqual(refused.returncode, 64)
        self.assertIn("has no folder provider_telegramd", refused.stderr)
        self.assertEqual(agents(), {})

    def test_without_a_folder_at_the_first_start_it_asks_for_one(self):
        refused = self.refusal()
        self.assertEqual(refused.returncode, 1)
        self.assertIn("Where is the daemon code?", refused.stderr)
        self.assertEqual(agents(), {})


if __name__ == "__main__":
    if os.getpid() > 1000 or os.environ.get("XDG_RUNTIME_DIR") != "/tmp/runtime":
        sys.exit("Only runs inside tests/system/in-sandbox: it ends processes by their names.")
    BUILD = sys.argv.pop(1)
    unittest.main()
