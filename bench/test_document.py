#!/usr/bin/env python3
"""What bench/all writes, of made-up figures: which goals count as reached, and that the prose stays."""

import contextlib
import importlib.machinery
import importlib.util
import io
import pathlib
import sys
import tempfile
import unittest

HERE = pathlib.Path(__file__).resolve().parent
sys.dont_write_bytecode = True
sys.path += [str(HERE), str(HERE / "fleets")]
import goals  # noqa: E402
from document import Document  # noqa: E402
from report import FIGURES, plot, table  # noqa: E402


def load_all():
    loader = importlib.machinery.SourceFileLoader("bench_all", str(HERE / "all"))
    module = importlib.util.module_from_spec(importlib.util.spec_from_loader("bench_all", loader))
    loader.exec_module(module)
    return module


def figures(agents, **values):
    return {key: None for key, *_ in FIGURES} | {"agents": agents} | values


def results(start, end=0.1, both=0.1):
    ours = [figures(size, start=time, quit=end, restart=both, idle=10) for size, time in start.items()]
    return {goals.OURS: ours, goals.PEER: [figures(size, start=1, quit=1, idle=20) for size in start]}


class DocumentTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.file = pathlib.Path(folder.name) / "README.md"

    def test_only_what_stands_between_the_marks_is_written_anew(self):
        self.file.write_text("Before.\n<!-- figures: one -->\nold\n<!-- end of figures -->\nBetween.\n"
                             "<!-- figures: two -->\nkept\n<!-- end of figures -->\nAfter.\n")
        for _ in range(2):
            Document(self.file).replace("one", "| \\1 new |\n")
        self.assertEqual(self.file.read_text(),
                         "Before.\n<!-- figures: one -->\n\n| \\1 new |\n\n<!-- end of figures -->\nBetween.\n"
                         "<!-- figures: two -->\nkept\n<!-- end of figures -->\nAfter.\n")

    def test_a_place_that_is_missing_is_told(self):
        self.file.write_text("Nothing here.\n")
        with self.assertRaisesRegex(SystemExit, "no one place for one"):
            Document(self.file).replace("one", "new")

    def test_the_kept_document_has_a_place_for_all(self):
        text = (HERE.parent / "docs/performance.md").read_text()
        for name in (*load_all().STEPS, "goals", "surroundings"):
            self.assertEqual(text.count(f"<!-- figures: {name} -->"), 1, name)


class ClockTest(unittest.TestCase):
    def test_a_fleet_is_measured_only_while_the_other_steps_have_their_time(self):
        module = load_all()
        steps = ["fleets", "budgets"]
        minutes = (module.SECONDS_OF_OTHERS["budgets"] + 600) / 60
        self.assertTrue(module.Clock(minutes, steps).allows(500))
        self.assertFalse(module.Clock(minutes, steps).allows(700))


class GoalsTest(unittest.TestCase):
    def test_a_goal_is_reached_up_to_its_number(self):
        said = goals.fleet_goals(results({20: 0.15}))
        self.assertIn("| start all on s6, s | 20 | 0.15 | 0.15 | 1 (supervisord) | – | yes |", said)
        said = goals.fleet_goals(results({20: 0.16}))
        self.assertIn("| start all on s6, s | 20 | 0.16 | 0.15 | 1 (supervisord) | – | **no** |", said)

    def test_a_missed_goal_brings_its_reason_and_a_reached_one_none(self):
        self.assertNotIn("Where a goal was missed", goals.fleet_goals(results({20: 0.1}, both=0.2)))
        said = goals.fleet_goals(results({20: 0.1}, both=0.3))
        self.assertIn(goals.REASONS["restart"], said)
        self.assertNotIn(goals.REASONS["processes"], said)

    def test_growth_is_told_where_both_sizes_were_measured(self):
        said = goals.fleet_goals(results({200: 0.5, 1000: 3.5}))
        self.assertIn("| growth of start all on s6, times | 200 to 1,000 | 7 | 6 |", said)
        self.assertNotIn("growth", goals.fleet_goals(results({20: 0.1, 200: 0.5})))

    def test_every_goal_has_a_reason_ready(self):
        used = {row[-1] for row in (*goals.FLEET_GOALS, *goals.BUDGETS)} | {"supervisord", "restart", "growth", "writer"}
        self.assertEqual(used, set(goals.REASONS))

    def test_what_a_person_waits_for_is_held_against_the_goal_of_its_fleet(self):
        from budgets import FLEETS
        key = "a keystroke in the master prompt, ms"
        said = goals.budget_tables({f"{FLEETS[0]}: {key}": 0.5, f"{FLEETS[1]}: {key}": 5.5})
        self.assertIn(f"| {key} | 0.5 | 5.5 | 1 / 5 | yes / **no** |", said)

    def test_a_writer_that_waited_too_long_is_seen_among_others(self):
        header = "     rows  table    writes    whole ms  one more ms unchanged  writer waits\n"
        rows = ["     1000  plain    journal        0.5         0.12      0.007          0.0\n",
                "     1000  plain    WAL            0.5         0.12      0.007        201.0\n"]
        self.assertIn("| 0 | 200 | yes |", goals.poll_goal(header + rows[0]))
        said = goals.poll_goal(header + "".join(rows))
        self.assertIn("| 201 | 200 | **no** |", said)
        self.assertIn(goals.REASONS["writer"], said)


class ReportTest(unittest.TestCase):
    def test_tables_and_plot_have_whoever_was_measured(self):
        found = results({20: 0.1, 200: 1.0})
        for text in (table(found), plot(found)):
            self.assertIn(goals.OURS, text)
            self.assertIn(goals.PEER, text)


if __name__ == "__main__":
    with contextlib.redirect_stdout(io.StringIO()):
        load_all()
    unittest.main()
