"""The orphan sweep in a session with a user manager, which adopts what agents leave behind.

Each test runs in a sandbox of its own: test_sweep.py BUILD_FOLDER TEST_NAME
"""

import pathlib
import subprocess

from harness import BUILD, SILENT, ServicesCase, is_alive, main, wait_until

TOOL = "/opt/homebrew/bin/claude"


class SweepTest(ServicesCase):
    def sweep(self, *kind):
        script = subprocess.run([BUILD / "tests/print_orphan_sweep", *kind], check=True, text=True,
                                capture_output=True).stdout
        swept = subprocess.run(["/bin/sh", "-c", script], text=True, check=False,
                               capture_output=True)
        self.assertEqual((swept.returncode, swept.stdout, swept.stderr), (0, "", ""))

    def parent_of(self, pid):
        fields = pathlib.Path(f"/proc/{pid}/stat").read_text().rpartition(")")[2].split()
        return int(fields[1])

    def load_with_tool(self, label):
        job = self.job(label)
        job.ask("leave-child", TOOL)
        self.assertEqual(self.bootstrap(job), SILENT)
        self.await_up(job)
        return job, job.starts()[-1]["child"]

    def orphan(self, label):
        job, tool = self.load_with_tool(label)
        self.assertEqual(self.bootout(job), SILENT)
        self.assertTrue(is_alive(tool))
        wait_until("the tool is adopted", lambda: self.parent_of(tool) == self.systemd.pid)
        return tool

    def test_kills_what_the_user_manager_has_adopted_and_spares_what_has_a_parent(self):
        orphan = self.orphan("com.example.gone")
        living, tool = self.load_with_tool("com.example.here")
        self.sweep()
        wait_until("the orphan is gone", lambda: not is_alive(orphan))
        self.assertTrue(is_alive(tool))
        self.assertEqual(self.row(living)[0], self.parent_of(tool))

    def test_kills_an_orphan_from_outside_the_session_too(self):
        left = subprocess.run(["/bin/sh", "-c", f"bash -c 'exec -a {TOOL} sleep 1000' >/dev/null 2>&1 & echo $!"],
                              check=True, capture_output=True, text=True).stdout
        orphan = int(left)
        wait_until("it is an orphan", lambda: self.parent_of(orphan) == 1)
        wait_until("it has its name", lambda: TOOL in
                   pathlib.Path(f"/proc/{orphan}/cmdline").read_text())
        self.sweep()
        wait_until("the orphan is gone", lambda: not is_alive(orphan))

    def test_the_plain_sweep_knows_nothing_of_user_managers(self):
        orphan = self.orphan("com.example.gone")
        self.sweep("mac")
        self.assertTrue(is_alive(orphan))


if __name__ == "__main__":
    main()
