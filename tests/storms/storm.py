"""What the storms over the service tools stand on: the harness of their tests, and fleets of it."""

import pathlib
import sys

HERE = pathlib.Path(__file__).resolve().parent
sys.path.append(str(HERE.parent / "system/services"))
from harness import (BUILD, DOMAIN, SILENT, ServicesCase, is_alive, kill_after,  # noqa: E402, F401
                     main, only, processes, send, wait_until)

class StormCase(ServicesCase):
    def load_many(self, count, **values):
        """Jobs that are loaded, all by one call, and up."""
        jobs = [self.job(f"com.example.{number}", **values) for number in range(count)]
        said = self.bootstrap(*jobs)
        self.assertEqual((said.code, said.error), (0, ""))
        self.await_all_up(jobs)
        return jobs

    def are_up(self, jobs):
        """Whether each has one agent, which is the one listed and has come to itself."""
        rows = self.jobs()
        pids = [rows.get(job.label, (None,))[0] for job in jobs]
        return all(pids) and all(job.starts() and job.starts()[-1]["pid"] == pid
                                 for job, pid in zip(jobs, pids))

    def await_all_up(self, jobs):
        wait_until("all are up", lambda: self.are_up(jobs), 180)
        self.assert_one_agent_each(jobs)

    def assert_one_agent_each(self, jobs):
        rows = self.jobs()
        self.assertEqual(self.agents(), {rows[job.label][0] for job in jobs})
        self.assertEqual(len(self.agents()), len(jobs))

    def most_agents_of_one_job(self):
        """Agents are told apart by their folders."""
        folders = [words[-1] for pid, words in processes().items() if pid in self.agents()]
        return max((folders.count(folder) for folder in folders), default=0)

    def unload_all(self, jobs):
        for job in jobs:
            self.assertIn(self.bootout(job).code, (0, 3))
        wait_until("all have ended", lambda: not self.agents())
        self.assert_nothing_is_left()
