"""A stand-in bot as a real process."""

import os
import signal
import stat
import sys
import time
import unittest

from support import DAEMON, SandboxTest, count_markers, is_alive, model, wait_until

OWN_NAME = "provider_telegramd"


class StartTest(SandboxTest):
    def test_makes_its_data_folder_and_tells_what_reached_it(self) -> None:
        bot = self.start("two words", ANTHROPIC_API_KEY="k%$ '\"\\ ü", **{"X-Y_OAUTH_TOKEN": "t"})
        told = bot.surroundings()
        expected = self.environment() | {"ANTHROPIC_API_KEY": "k%$ '\"\\ ü", "X-Y_OAUTH_TOKEN": "t"}
        self.assertEqual(told["environment"], expected)
        self.assertEqual(told["pid"], bot.process.pid)
        self.assertEqual(told["parentPid"], os.getpid())
        self.assertEqual(told["cwd"], str(DAEMON))
        arguments = ["-m", OWN_NAME, "--dept", "two words", "--data-dir", str(self.data_dir("two words"))]
        self.assertEqual(told["argv"], [sys.executable, *arguments])

    def test_environment_file_is_for_the_owner_alone_and_never_partial(self) -> None:
        bot = self.start()
        bot.surroundings()
        self.assertEqual(stat.S_IMODE((bot.data_dir / "environment.json").stat().st_mode), 0o600)
        self.assertEqual(os.listdir(bot.data_dir), ["environment.json"])

    def test_refuses_to_start_without_the_shared_folder(self) -> None:
        bot = self.start(DAEMON_DATA_DIR="")
        self.assertEqual(bot.ended(), 2)
        self.assertIn("DAEMON_DATA_DIR", bot.log())

    def test_fails_plainly_when_a_file_is_in_the_place_of_its_folder(self) -> None:
        self.data_dir("atlas").write_text("")
        bot = self.start()
        self.assertEqual(bot.ended(), 1)
        self.assertNotIn("Traceback", bot.log())


class WorkTest(SandboxTest):
    def test_works_in_bursts_and_records_the_model_of_its_chain(self) -> None:
        self.write_json("architect_preferences.json", [model("first"), model("second")])
        bot = self.start()
        wait_until(lambda: self.rows(), "an event is recorded")
        self.assertEqual(self.rows()[0], (1, "atlas", None, "message"))
        self.assertGreaterEqual(count_markers(bot.log()), 1)

    def test_keeps_an_index_by_which_each_bot_finds_its_own_rows(self) -> None:
        self.start()
        plan = "EXPLAIN QUERY PLAN SELECT id FROM agent_events WHERE dept = 'atlas'"
        wait_until(lambda: self.rows(), "an event is recorded")
        self.assertIn("agent_events_of_dept", str(self.rows(plan)))

    def test_secrets_never_reach_the_log(self) -> None:
        bot = self.start(OPENAI_API_KEY="hush-hush", TELEGRAM_BOT_TOKEN="not-a-word")
        bot.wait_for_log("[MSG]")
        bot.ask("crash")
        bot.ended()
        self.assertNotIn("hush-hush", bot.log())
        self.assertNotIn("not-a-word", bot.log())

    def test_answers_a_keepalive_ping_and_leaves_it_where_it_lies(self) -> None:
        folder = self.home / "Library/Application Support/OstrelleAI/data/atlas"
        folder.mkdir(parents=True)
        bot = self.start()
        bot.wait_for_log("up as")
        # By its first line it has looked for an older ping, so that this one is new to it.
        (folder / "keepalive_ping").write_text("2026-03-04T05:06:07Z")
        bot.wait_for_log("keepalive ping answered")
        wait_until(lambda: "keepalive" in [row[3] for row in self.rows()], "the answer is recorded")
        self.assertTrue((folder / "keepalive_ping").exists())

    def test_never_makes_the_folder_for_pings(self) -> None:
        bot = self.start()
        bot.wait_for_log("[MSG]")
        self.assertFalse((self.home / "Library/Application Support/OstrelleAI").exists())


class EndTest(SandboxTest):
    def test_ends_at_sigterm_with_status_0_and_promptly(self) -> None:
        bot = self.start()
        bot.wait_for_log("up as")
        asked = time.monotonic()
        bot.process.terminate()
        self.assertEqual(bot.ended(), 0)
        self.assertLess(time.monotonic() - asked, 2)

    def test_interrupt_ends_it_too(self) -> None:
        bot = self.start()
        bot.wait_for_log("up as")
        bot.process.send_signal(signal.SIGINT)
        self.assertEqual(bot.ended(), 0)

    def test_ignores_sigterm_as_long_as_it_is_asked_to(self) -> None:
        self.request_before_start("atlas", "ignore-sigterm")
        bot = self.start()
        bot.wait_for_log("up as")
        bot.process.terminate()
        bot.wait_for_log("asked to end, staying")
        # Still obeying afterwards is the proof that it lives on.
        bot.ask("burst", "1")
        bot.wait_for_log("on request")
        (bot.data_dir / "ignore-sigterm").unlink()
        bot.process.terminate()
        self.assertEqual(bot.ended(), 0)


class CrashTest(SandboxTest):
    def test_crashes_at_start_with_status_1_each_time(self) -> None:
        self.request_before_start("atlas", "crash-at-start")
        for _ in range(2):
            self.assertEqual(self.start().ended(), 1)
        self.assertTrue((self.data_dir("atlas") / "environment.json").exists())

    def test_crashes_at_start_with_the_status_asked_for(self) -> None:
        self.request_before_start("atlas", "crash-at-start", "78\n")
        bot = self.start()
        self.assertEqual(bot.ended(), 78)
        self.assertEqual(count_markers(bot.log()), 0)

    def test_crash_at_start_does_nothing_to_a_running_bot(self) -> None:
        bot = self.start()
        bot.wait_for_log("up as")
        bot.ask("burst", "1")
        bot.wait_for_log("on request")
        bot.ask("crash-at-start", "9")
        bot.ask("crash", "3")
        self.assertEqual(bot.ended(), 3)

    def test_crash_is_consumed(self) -> None:
        for content, status in (("", 1), ("42", 42), ("256", 1), ("soon", 1)):
            with self.subTest(content=content):
                bot = self.start()
                bot.wait_for_log("up as")
                bot.ask("crash", content)
                self.assertEqual(bot.ended(), status)
                self.assertFalse((bot.data_dir / "crash").exists())

    def test_crash_asked_for_before_the_start_is_obeyed_once(self) -> None:
        self.request_before_start("atlas", "crash", "5")
        self.assertEqual(self.start().ended(), 5)
        again = self.start()
        wait_until(lambda: again.log().count("up as") == 2, "the second start is up")
        self.assertIsNone(again.process.poll())


class ChildTest(SandboxTest):
    def leave_child(self, words: str = "") -> tuple[int, int]:
        """Lets a bot leave a child and ends the bot. Gives the pids of both."""
        bot = self.start()
        bot.wait_for_log("up as")
        bot.ask("leave-child", words)
        child = bot.child()
        self.end_at_cleanup(child)
        bot.wait_consumed("leave-child")
        bot.process.terminate()
        self.assertEqual(bot.ended(), 0)
        return bot.process.pid, child

    def test_child_outlives_the_bot_in_a_session_of_its_own(self) -> None:
        parent, child = self.leave_child()
        self.assertTrue(is_alive(child))
        self.assertEqual(os.getsid(child), child)
        self.assertNotEqual(os.getsid(child), parent)

    def test_child_command_line_never_names_the_bots_module(self) -> None:
        _, child = self.leave_child(f"opt/homebrew/bin/claude {OWN_NAME}")
        with open(f"/proc/{child}/cmdline", "rb") as file:
            command = file.read().decode()
        self.assertNotIn(OWN_NAME, command)
        self.assertIn("opt/homebrew/bin/claude", command)

    def test_child_inherits_no_held_back_signals(self) -> None:
        _, child = self.leave_child()
        os.kill(child, signal.SIGTERM)
        wait_until(lambda: not is_alive(child), "the child ends")

    def test_ended_child_is_collected_by_a_living_bot(self) -> None:
        bot = self.start()
        bot.wait_for_log("up as")
        bot.ask("leave-child")
        child = bot.child()
        os.kill(child, signal.SIGKILL)
        wait_until(lambda: not os.path.exists(f"/proc/{child}"), "nothing is left of the child")


class NoiseTest(SandboxTest):
    def burst_of(self, content: str) -> int:
        bot = self.start()
        bot.wait_for_log("up as")
        bot.ask("burst", content)
        bot.wait_for_log("on request")
        bot.wait_consumed("burst")
        return sum("on request" in line and count_markers(line) == 1 for line in bot.log().splitlines())

    def test_burst_holds_as_many_markers_as_asked_for(self) -> None:
        self.assertEqual(self.burst_of("30"), 30)

    def test_burst_has_twelve_markers_by_default(self) -> None:
        self.assertEqual(self.burst_of(""), 12)

    def test_burst_waits_until_silence_is_withdrawn(self) -> None:
        self.request_before_start("atlas", "silent")
        self.request_before_start("atlas", "burst", "3")
        bot = self.start()
        bot.wait_for_log("falling silent")
        self.assertTrue((bot.data_dir / "burst").exists())
        self.assertEqual(count_markers(bot.log()), 0)
        (bot.data_dir / "silent").unlink()
        bot.wait_for_log("[PROCESS] on request")
        self.assertLess(bot.log().index("speaking again"), bot.log().index("[PROCESS] on request"))


if __name__ == "__main__":
    unittest.main()
