"""A bot's inner life, with a clock that the test moves."""

import sqlite3
import unittest
from itertools import islice

from support import LAST_MODELS, SandboxTest, count_markers, model

from provider_telegramd import rhythm
from provider_telegramd.daemon import Daemon
from provider_telegramd.events import EventBook

ROLES = ("planner", "researcher", "builder", "customer-desk", "night-watch", "bot-001")

# As the supervisor looks at a log: this often, and at this much of its end.
SAMPLE_SECONDS = 2
TAIL_BYTES = 6144


class RhythmTest(unittest.TestCase):
    def test_is_the_same_at_each_start_and_differs_between_bots(self) -> None:
        days = {role: list(islice(rhythm.steps(role), 200)) for role in ROLES}
        self.assertEqual(days["planner"], list(islice(rhythm.steps("planner"), 200)))
        self.assertEqual(len({tuple(day) for day in days.values()}), len(ROLES))

    def test_all_four_markers_appear_and_never_two_in_a_line(self) -> None:
        for role in ROLES:
            lines = [step.text for step in islice(rhythm.steps(role), 500)]
            self.assertLessEqual(max(map(count_markers, lines)), 1)
            for marker in rhythm.MARKERS:
                self.assertTrue(any(marker in line for line in lines), marker)

    def test_first_burst_comes_soon(self) -> None:
        for role in ROLES:
            self.assertLess(next(rhythm.steps(role)).pause, 1.5)

    def test_bursts_show_and_quiet_stretches_stay_quiet(self) -> None:
        for role in ROLES:
            with self.subTest(role=role):
                bursts, seen, false_alarms = sampled_day(role, seconds=3600)
                self.assertGreater(bursts, 50)
                # Now and then old markers leave the window as fast as new ones come in.
                self.assertGreater(seen / bursts, 0.9)
                self.assertEqual(false_alarms, 0)


def sampled_day(role: str, seconds: float) -> tuple[int, int, int]:
    """How many bursts there were, how many the sampler saw, and how often it saw one in the quiet."""
    now, log, marks = 0.0, "", 0
    next_sample = float(SAMPLE_SECONDS)
    number, shown, false_alarms, wrote = 0, set(), 0, False
    for step in rhythm.steps(role):
        now += step.pause
        while next_sample <= now:
            before, marks = marks, count_markers(log[-TAIL_BYTES:])
            if marks > before:
                shown.add(number)
                false_alarms += not wrote
            wrote = False
            next_sample += SAMPLE_SECONDS
        if now > seconds:
            return number, len(shown), false_alarms
        number += step.event == "message"
        wrote = wrote or count_markers(step.text) > 0
        log += f"00:00:00 {step.text}\n"
    raise AssertionError("a day has no end")


class DriveTest(SandboxTest):
    def setUp(self) -> None:
        super().setUp()
        self.data_dir("atlas").mkdir()
        self.lines: list[str] = []
        self.clock = 0.0

    def make_bot(self) -> Daemon:
        bot = Daemon("atlas", self.data_dir("atlas"), self.root, self.home, lambda *lines: self.lines.extend(lines))
        self.addCleanup(bot.close)
        return bot

    def drive(self, bot: Daemon, seconds: float) -> None:
        end = self.clock + seconds
        while self.clock < end:
            bot.turn(self.clock)
            self.clock += 0.1

    def test_silence_means_no_markers_and_no_events(self) -> None:
        silent = self.data_dir("atlas") / "silent"
        silent.touch()
        bot = self.make_bot()
        self.drive(bot, 120)
        self.assertEqual(self.lines, ["falling silent on request"])
        self.assertEqual(self.rows(), [])
        silent.unlink()
        self.drive(bot, 120)
        self.assertGreater(count_markers("\n".join(self.lines)), 0)
        self.assertNotEqual(self.rows(), [])

    def test_missed_time_is_not_made_up_for(self) -> None:
        bot = self.make_bot()
        self.drive(bot, 5)
        written = len(self.lines)
        self.clock += 3600
        bot.turn(self.clock)
        bot.turn(self.clock)
        self.assertLessEqual(len(self.lines), written + 1)

    def test_without_any_model_events_name_none(self) -> None:
        self.drive(self.make_bot(), 60)
        self.assertEqual({row[2] for row in self.rows()}, {None})
        self.assertEqual(self.rows(LAST_MODELS), [])

    def test_each_burst_records_a_message_and_a_reply_with_the_model(self) -> None:
        self.write_json("architect_preferences.json", [model("first")])
        self.drive(self.make_bot(), 120)
        kinds = [(kind, name) for _, _, name, kind in self.rows()]
        self.assertEqual(kinds[:4], [("message", None), ("reply", "first")] * 2)
        self.assertEqual(self.rows(LAST_MODELS), [("atlas", "first")])

    def test_assigned_chains_go_before_the_architects_and_take_turns(self) -> None:
        for key in ("architect", "worker", "video"):
            self.write_json(f"{key}_preferences.json", [model(f"of {key}")])
        label = "com.ostrelleai.atlas.telegramd"
        self.write_json("chain_bot_assignments.json", {"worker": [label], "photo": [label], "video": [label]})
        self.drive(self.make_bot(), 300)
        models = [name for _, _, name, _ in self.rows() if name]
        self.assertEqual(models[:4], ["of worker", "of video"] * 2)

    def test_failover_moves_on_to_the_next_model_and_round(self) -> None:
        self.write_json("architect_preferences.json", [model("first"), model("second")])
        bot = self.make_bot()
        for expected in ("second", "first"):
            (self.data_dir("atlas") / "failover").write_text("now")
            self.drive(bot, 60)
            self.assertEqual(self.rows(LAST_MODELS), [("atlas", expected)])

    def test_broken_settings_count_as_missing(self) -> None:
        (self.root / "chain_bot_assignments.json").write_text('{"worker":')
        self.write_json("architect_preferences.json", [model("good"), {"name": "no id"}])
        self.drive(self.make_bot(), 60)
        self.assertEqual({row[2] for row in self.rows()}, {None})


class EventBookTest(SandboxTest):
    def setUp(self) -> None:
        super().setUp()
        self.path = self.root / "governor.db"

    def open_book(self, dept: str = "atlas") -> EventBook:
        book = EventBook(self.path, dept)
        self.addCleanup(book.close)
        return book

    def test_reader_that_opened_an_empty_file_first_sees_the_events(self) -> None:
        reader = sqlite3.connect(self.path, timeout=0)
        self.addCleanup(reader.close)
        self.path.touch()
        with self.assertRaises(sqlite3.OperationalError):
            reader.execute(LAST_MODELS)
        self.open_book().record("reply", "m")
        self.assertEqual(reader.execute(LAST_MODELS).fetchall(), [("atlas", "m")])

    def test_event_that_meets_a_locked_database_waits_for_the_next(self) -> None:
        book = self.open_book()
        book.record("message", None)
        other = sqlite3.connect(self.path, isolation_level=None)
        self.addCleanup(other.close)
        other.execute("BEGIN IMMEDIATE")
        self.assertIn("locked", book.record("reply", "m") or "")
        other.execute("ROLLBACK")
        self.assertIsNone(book.record("message", None))
        self.assertEqual([row[2:] for row in self.rows()], [(None, "message"), ("m", "reply"), (None, "message")])

    def test_missing_folder_is_survived(self) -> None:
        book = EventBook(self.root / "nowhere" / "governor.db", "atlas")
        for _ in range(100):
            self.assertIsNotNone(book.record("reply", "m"))

    def test_old_rows_of_this_bot_go_and_those_of_others_stay(self) -> None:
        self.open_book("other").record("reply", "theirs")
        book = self.open_book()
        for number in range(300):
            book.record("reply", f"m{number}")
        self.assertLess(len(self.rows()), 150)
        self.assertEqual(self.rows(LAST_MODELS), [("other", "theirs"), ("atlas", "m299")])
        self.assertEqual(self.rows()[-1][0], 301)


if __name__ == "__main__":
    unittest.main()
