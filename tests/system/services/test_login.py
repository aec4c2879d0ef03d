"""What is installed for login: agents come up with the session, whether or not the supervisor starts.

Each test runs in a sandbox of its own: test_login.py BUILD_FOLDER TEST_NAME
"""

import os
import pathlib
import shutil
import subprocess

from harness import ALREADY_LOADED, BUILD, SILENT, ServicesCase, main, only, wait_until

HOME = pathlib.Path(os.environ["HOME"])


class LoginTest(ServicesCase):
    def setUp(self):
        """Installs below the user's home, and leaves property lists there, before the session starts."""
        self.made = 0
        self.prefix = HOME / 'odd %h $HOME `a` b'
        self.prefix.mkdir()
        (HOME / ".local").symlink_to(self.prefix)  # where the user manager looks for units
        self.libexec = self.prefix / "libexec/varnhold"
        shutil.copytree(BUILD / "libexec/varnhold", self.libexec)
        subprocess.run(["cmake", f"-DCMAKE_INSTALL_PREFIX={self.prefix}", "-P",
                        BUILD / "tools/login/install-login.cmake"], check=True,
                       stdout=subprocess.DEVNULL)
        self.lists = HOME / "Library/LaunchAgents"
        self.lists.mkdir(parents=True)
        self.agents_at_login = [self.agent("com.example.a b"), self.agent("com.example.b")]
        super().setUp()

    def agent(self, label):
        job = self.job(label)
        shutil.copy(job.path, self.lists / f"{label}.plist")
        return job

    def log_in(self):
        done = subprocess.run([self.libexec / "load-agents"], check=False, capture_output=True,
                              text=True)
        return done.returncode, done.stdout, done.stderr

    def test_the_agents_are_loaded_and_a_second_time_left_alone(self):
        if self.manager == "systemd":  # the session's start has done it
            wait_until("the agents are up", lambda: all(self.row(job) for job in self.agents_at_login))
        else:
            self.assertEqual(self.log_in(), tuple(SILENT))
        pids = [self.await_up(job) for job in self.agents_at_login]
        self.assertEqual(self.log_in(), (5, "", ALREADY_LOADED * 2))
        self.assertEqual([self.row(job)[0] for job in self.agents_at_login], pids)

    def test_without_property_lists_nothing_is_done(self):
        shutil.rmtree(self.lists)
        self.assertEqual(self.log_in(), tuple(SILENT))

    @only("systemd", "s6 has no session of its own")
    def test_a_list_that_cannot_be_used_does_not_fail_the_session(self):
        (self.lists / "bad.plist").write_text("bad")
        subprocess.run(["systemctl", "--user", "restart", "varnhold-agents"], check=True)
        failed = subprocess.run(["systemctl", "--user", "is-failed", "varnhold-agents"], check=False,
                                capture_output=True, text=True)
        self.assertNotEqual(failed.stdout, "failed\n")

    def test_the_autostart_entry_names_what_was_installed(self):
        entry = self.prefix / "etc/xdg/autostart/varnhold-agents.desktop"
        written = r'odd %%h \\$HOME \\`a\\` b'  # quoted once for the command, once for any text
        self.assertIn(f'Exec="{HOME}/{written}/libexec/varnhold/load-agents"\n', entry.read_text())
        self.assertNotIn("@", entry.read_text())


if __name__ == "__main__":
    main()
