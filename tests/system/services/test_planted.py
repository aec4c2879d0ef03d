"""Runtime folders that somebody else has prepared, or that aren't where the environment says.

Each test runs in a sandbox of its own: test_planted.py BUILD_FOLDER TEST_NAME
"""

import os
import pathlib
import shutil
import subprocess

from harness import DOMAIN, SILENT, Said, ServicesCase, main, only, wait_until

STRANGER = 1000
HOME = pathlib.Path(os.environ["HOME"])
SHARED = pathlib.Path(f"/tmp/varnhold-{os.getuid()}")
OWN = HOME / ".local/state/varnhold/run"
LABEL = "com.example.agent"
VERBS = (("list",), ("list", LABEL), ("kickstart", "-k", f"{DOMAIN}/{LABEL}"), ("stop", LABEL),
         ("bootout", f"{DOMAIN}/{LABEL}"))
DOCUMENTS = ("letter.txt", "keys/id_ed25519", f"{LABEL}/novel.txt", f"{LABEL}/run")


class PlantedTest(ServicesCase):
    def setUp(self):
        super().setUp()
        self.documents = HOME / "documents"
        for name in DOCUMENTS:
            file = self.documents / name
            file.parent.mkdir(parents=True, exist_ok=True)
            file.write_text("dear to somebody")

    def assert_documents_are_whole(self):
        found = {str(path.relative_to(self.documents))
                 for path in self.documents.rglob("*") if path.is_file()}
        self.assertEqual(found, set(DOCUMENTS))

    def without_a_session(self):
        del os.environ["XDG_RUNTIME_DIR"]
        self.runtime = OWN

    def plant(self, *links):
        """As another user does who is first in a folder that all can write to."""
        SHARED.mkdir(mode=0o755)
        for name in links:
            (SHARED / name).symlink_to(self.documents)
        os.chown(SHARED, STRANGER, STRANGER)

    def assert_works(self, said_of_the_place):
        """All verbs work, and the first that needs the place says which it is."""
        for words in VERBS:
            self.assertNotEqual(self.launchctl(*words).code, 69, words)
        job = self.job(LABEL)
        said = self.bootstrap(job)
        self.assertEqual((said.code, said.out), (0, ""))
        self.assertIn(str(said_of_the_place), said.error)
        self.assertEqual(said.error.count("\n"), 1)
        pid = self.await_up_quietly(job)
        self.assertEqual(self.agents(), {pid})
        self.assertEqual(self.bootout(job).code, 0)
        self.assertEqual(self.agents(), set())

    def await_up_quietly(self, job):
        return wait_until("the agent is up", lambda: job.starts() and job.starts()[-1]["pid"])

    # -- a folder of somebody else's in a place for all --------------------------------------------

    @only("s6", "without a session there is no user manager")
    def test_somebody_elses_folder_in_a_shared_place_is_left_alone_and_the_fleet_comes_up(self):
        self.without_a_session()
        self.plant("jobs", "scan", "locks", "scanner-lock")
        self.assert_works(OWN)
        self.assert_documents_are_whole()
        self.assertEqual(len(list(SHARED.iterdir())), 4)

    @only("s6", "without a session there is no user manager")
    def test_a_link_of_somebody_elses_in_a_shared_place_is_left_alone(self):
        self.without_a_session()
        SHARED.symlink_to(self.documents)
        os.lchown(SHARED, STRANGER, STRANGER)
        self.assert_works(OWN)
        self.assert_documents_are_whole()

    @only("s6", "without a session there is no user manager")
    def test_jobs_and_pipes_that_somebody_else_has_planted_are_neither_listed_nor_waited_for(self):
        self.without_a_session()
        self.plant()
        supervise = SHARED / "jobs" / LABEL / "supervise"
        supervise.mkdir(parents=True)
        (SHARED / "scan").mkdir()
        (SHARED / "scan" / LABEL).symlink_to(f"../jobs/{LABEL}")
        os.mkfifo(supervise / "control")
        reader = os.open(supervise / "control", os.O_RDONLY | os.O_NONBLOCK)
        for name in ("status", "../job.plist", "../last-end"):
            os.mkfifo(supervise / name)
        self.assertEqual(self.launchctl("list").out, "PID\tStatus\tLabel\n")
        self.assert_works(OWN)
        os.close(reader)

    # -- links and files in the user's own place ----------------------------------------------------

    def assert_all_is_refused(self, reason):
        job = self.job(LABEL)
        for words in (*VERBS, ("bootstrap", DOMAIN, job.path)):
            said = self.launchctl(*words)
            self.assertEqual((said.code, said.out), (69, ""), words)
            self.assertIn(reason, said.error)
        self.assertEqual(self.agents(), set())

    def test_a_link_in_the_place_of_the_runtime_folder_is_refused_and_not_followed(self):
        self.documents.chmod(0o700)
        self.runtime.symlink_to(self.documents)
        self.assert_all_is_refused("not a private folder of this user")
        self.assert_documents_are_whole()

    def test_links_within_the_runtime_folder_are_refused_and_not_followed(self):
        self.documents.chmod(0o700)
        self.runtime.mkdir(mode=0o700)
        for name in ("jobs", "scan", "locks"):
            (self.runtime / name).symlink_to(self.documents)
        self.assert_all_is_refused("not a private folder of this user")
        self.assert_documents_are_whole()

    def test_a_link_in_the_place_of_a_jobs_folder_is_not_followed(self):
        other = self.load("com.example.other")
        (self.documents / LABEL).chmod(0o700)
        (self.runtime / "jobs" / LABEL).symlink_to(self.documents / LABEL)
        job = self.job(LABEL)
        said = self.bootstrap(job)
        self.assertEqual(said.code, 69)
        self.assertIn("not a private folder of this user", said.error)
        self.assertEqual(set(self.jobs()), {other.label})
        self.assertEqual(self.bootout(other), SILENT)
        self.assert_documents_are_whole()

    def test_files_that_are_not_ours_stay_where_they_lie(self):
        job = self.load()
        ours = self.runtime / "jobs" / job.label
        for file in (self.runtime / "letter.txt", self.runtime / "jobs/letter.txt",
                     ours / "letter.txt"):
            file.write_text("dear to somebody")
        (self.runtime / "jobs/no job/deep").mkdir(parents=True)
        (ours / "folder/deep").mkdir(parents=True)
        self.assertEqual(self.bootout(job), SILENT)
        left = {str(path.relative_to(self.runtime)) for path in self.runtime.rglob("*")}
        self.assertLessEqual(left - {"lock"}, {
            "letter.txt", "jobs", "jobs/letter.txt", "jobs/no job", "jobs/no job/deep",
            f"jobs/{job.label}", f"jobs/{job.label}/letter.txt", f"jobs/{job.label}/folder",
            f"jobs/{job.label}/folder/deep"})
        self.assertTrue((ours / "letter.txt").exists())
        again = self.load()
        self.assertEqual(self.bootout(again), SILENT)

    # -- where the environment points ---------------------------------------------------------------

    @only("s6", "without its runtime folder a user manager isn't found")
    def test_a_runtime_folder_that_points_nowhere_counts_as_none_and_that_is_said(self):
        os.environ["XDG_RUNTIME_DIR"] = "/run/user/nobody"
        self.runtime = OWN
        self.assert_works("/run/user/nobody")
        self.assertFalse(pathlib.Path("/run/user/nobody").exists())

    @only("s6", "the one that is set is the user manager's")
    def test_the_login_managers_folder_serves_where_none_is_set(self):
        login = pathlib.Path(f"/run/user/{os.getuid()}")
        login.mkdir(parents=True, mode=0o700)
        self.without_a_session()
        job = self.load()
        self.assertTrue((login / "varnhold/jobs" / job.label).exists())
        self.assertFalse(OWN.exists())
        self.assertEqual(self.bootout(job), SILENT)

    @only("s6", "this is about which folder is taken")
    def test_a_login_managers_folder_of_somebody_elses_is_not_taken(self):
        login = pathlib.Path(f"/run/user/{os.getuid()}")
        login.mkdir(parents=True, mode=0o777)
        os.chown(login, STRANGER, STRANGER)
        self.without_a_session()
        self.assert_works(OWN)
        self.assertEqual(list(login.iterdir()), [])

    @only("s6", "this is about which folder is taken")
    def test_root_does_not_use_a_users_runtime_folder(self):
        session = pathlib.Path("/run/user/1000")
        session.mkdir(parents=True, mode=0o700)
        os.chown(session, STRANGER, STRANGER)
        os.environ["XDG_RUNTIME_DIR"] = str(session)
        self.assert_all_is_refused(f"{session} belongs to another user")
        self.assertEqual(list(session.iterdir()), [])

    @only("s6", "this is about which folder is taken")
    def test_a_user_who_has_inherited_roots_runtime_folder_uses_his_own(self):
        home = pathlib.Path("/tmp/users-home")
        home.mkdir(mode=0o700)
        os.chown(home, STRANGER, STRANGER)
        # The checkout may lie where only its owner gets.
        self.tools = pathlib.Path(shutil.copytree(self.tools, "/tmp/users-tools"))
        job = self.job(LABEL)
        for path in (HOME, job.path, job.folder):
            path.chmod(0o777)

        def as_user(*words):
            done = subprocess.run(
                self.command(*words), user=STRANGER, group=STRANGER, extra_groups=(),
                env={**os.environ, "HOME": str(home)}, stdin=subprocess.DEVNULL,
                capture_output=True, check=False)
            return Said(done.returncode, done.stdout.decode(), done.stderr.decode())

        said = as_user("bootstrap", f"gui/{STRANGER}", job.path)
        self.assertEqual((said.code, said.out), (0, ""))
        self.assertIn(os.environ["XDG_RUNTIME_DIR"], said.error)
        self.assertIn(LABEL, as_user("list").out)
        self.assertEqual(as_user("bootout", f"gui/{STRANGER}/{LABEL}").code, 0)
        self.assertEqual(self.agents(), set())


if __name__ == "__main__":
    main()
