"""Many jobs, and many tools at work at the same time.

Each test runs in a sandbox of its own: test_fleets.py BUILD_FOLDER TEST_NAME
"""

import concurrent.futures

from harness import ALREADY_LOADED, DOMAIN, SILENT, ServicesCase, main, processes, wait_until


class FleetsTest(ServicesCase):
    def sleepers(self, count):
        """Plain agents that cost next to nothing; told apart by their argument."""
        return [self.job(f"com.example.{number:03}.telegramd",
                         ProgramArguments=["/bin/sleep", str(100000 + number)])
                for number in range(count)]

    def running_sleepers(self):
        return {pid for pid, words in processes().items()
                if words[0] == "/bin/sleep" and words[1].startswith("100")}

    def assert_all_up_once(self, jobs):
        wait_until("every agent is up", lambda: (
            len(self.running_sleepers()) == len(jobs)
            and {row[0] for row in self.jobs().values()} == self.running_sleepers()),
            deadline=180)
        self.assertEqual(set(self.jobs()), {job.label for job in jobs})

    def test_two_hundred_agents_start_with_one_command_and_leave_nothing(self):
        jobs = self.sleepers(200)
        self.assertEqual(self.bootstrap(*jobs), SILENT)
        self.assert_all_up_once(jobs)
        for job in jobs:
            self.assertEqual(self.bootout(job), SILENT)
        self.assertEqual(self.running_sleepers(), set())
        self.assert_nothing_is_left()

    def test_fifty_agents_start_and_end_with_a_tool_for_each_at_the_same_time(self):
        jobs = self.sleepers(50)
        with concurrent.futures.ThreadPoolExecutor(50) as pool:
            self.assertEqual(set(pool.map(self.bootstrap, jobs)), {SILENT})
            self.assert_all_up_once(jobs)
            self.assertEqual(set(pool.map(self.bootout, jobs)), {SILENT})
        self.assertEqual(self.running_sleepers(), set())
        self.assert_nothing_is_left()

    def test_of_many_who_load_one_label_exactly_one_wins(self):
        job = self.job()
        with concurrent.futures.ThreadPoolExecutor(12) as pool:
            said = list(pool.map(self.bootstrap, [job] * 12))
        self.assertEqual(said.count(SILENT), 1)
        self.assertEqual(said.count((5, "", ALREADY_LOADED)), 11)
        pid = self.await_up(job)
        self.assertEqual(len(job.starts()), 1)
        self.assertEqual(self.agents(), {pid})

    def test_of_many_who_unload_one_label_exactly_one_wins(self):
        job = self.load()
        with concurrent.futures.ThreadPoolExecutor(8) as pool:
            codes = sorted(said.code for said in pool.map(self.bootout, [job] * 8))
        self.assertEqual(codes, [0] + [3] * 7)
        self.assert_nothing_is_left()

    def test_a_bootout_that_races_a_bootstrap_leaves_the_job_loaded_or_not(self):
        job = self.sleepers(1)[0]
        for _ in range(15):
            load = self.begin("bootstrap", DOMAIN, job.path)
            unload = self.begin("bootout", job.target)
            codes = (load.wait(60), unload.wait(60))
            load.communicate()
            unload.communicate()
            self.assertIn(codes, ((0, 0), (0, 3)))
            loaded = codes == (0, 3)
            self.assertEqual(job.label in self.jobs(), loaded)
            if loaded:
                self.assert_all_up_once([job])
                self.assertEqual(self.bootout(job), SILENT)
            self.assertEqual(self.running_sleepers(), set())
        self.assert_nothing_is_left()

    def test_kickstarts_at_the_same_time_leave_one_agent(self):
        job = self.load()
        with concurrent.futures.ThreadPoolExecutor(6) as pool:
            said = pool.map(lambda _: self.launchctl("kickstart", "-k", job.target), range(6))
            self.assertEqual(set(said), {SILENT})
        wait_until("one agent", lambda: self.agents() == {(self.row(job) or (0,))[0]})
        self.assertEqual(self.bootout(job), SILENT)
        self.assert_nothing_is_left()

    def test_a_job_that_is_kicked_and_unloaded_at_the_same_time_is_gone(self):
        for _ in range(8):
            job = self.load()
            kick = self.begin("kickstart", "-k", job.target)
            self.assertEqual(self.bootout(job), SILENT)
            kick.communicate(timeout=60)
            self.assertIn(kick.returncode, (0, 113))
            self.assert_nothing_is_left()

    def test_listings_during_changes_are_whole(self):
        jobs = self.sleepers(30)
        load = self.begin("bootstrap", DOMAIN, *(job.path for job in jobs))
        seen = 0
        while load.poll() is None:
            found = set(self.jobs())
            self.assertLessEqual(found, {job.label for job in jobs})
            self.assertGreaterEqual(len(found), seen)
            seen = len(found)
        load.communicate()
        self.assertEqual(load.returncode, 0)
        self.assert_all_up_once(jobs)


if __name__ == "__main__":
    main()
