"""The scripts beside the bots: chain reset, chain set-up, sign-in."""

import json
import os
import pty
import subprocess
import sys
import unittest

from support import DAEMON, FLEET, SandboxTest, model

import auto_setup_chains
from circular_failover import CHAIN_KEYS, advance_position, read_positions

RESET_SCRIPT = (
    f"import sys, os; sys.path.insert(0, os.environ.get('DAEMON_RESOURCES', '{DAEMON}'));"
    " from circular_failover import reset_all_chain_positions; reset_all_chain_positions()"
)


class ResetTest(SandboxTest):
    def reset(self) -> int:
        names = ("DAEMON_DATA_DIR", "DAEMON_RESOURCES", "HOME")
        environment = {name: self.environment()[name] for name in names}
        return subprocess.run([sys.executable, "-c", RESET_SCRIPT], env=environment).returncode

    def test_puts_every_chain_back_and_counts_its_calls(self) -> None:
        advance_position(self.root, "worker", 3)
        self.assertEqual(read_positions(self.root)["worker"], 1)
        for calls in (1, 2):
            self.assertEqual(self.reset(), 0)
            self.assertEqual(read_positions(self.root), dict.fromkeys(CHAIN_KEYS, 0))
            lines = (self.root / "data/chain_resets.log").read_text().splitlines()
            self.assertEqual(len(lines), calls)

    def test_makes_its_folder(self) -> None:
        (self.root / "data").rmdir()
        self.assertEqual(self.reset(), 0)

    def test_senseless_positions_count_as_0(self) -> None:
        self.write_json("data/chain_positions.json", {"worker": -1, "photo": True, "video": "2", "voice": 2})
        self.assertEqual(read_positions(self.root), dict.fromkeys(CHAIN_KEYS, 0) | {"voice": 2})


class AutoSetupTest(SandboxTest):
    def run_script(self, **more: str) -> subprocess.CompletedProcess:
        names = ("DAEMON_DATA_DIR", "DAEMON_RESOURCES", "HOME", "PATH")
        environment = {name: self.environment()[name] for name in names} | more
        command = [sys.executable, str(DAEMON / "auto_setup_chains.py")]
        return subprocess.run(command, env=environment, capture_output=True, text=True)

    def chain(self, key: str) -> list[dict]:
        return json.loads((self.root / f"{key}_preferences.json").read_text())

    def test_asks_for_an_architect_first(self) -> None:
        self.write_json("worker_preferences.json", [model("w")])
        self.assertEqual(self.run_script().returncode, 2)
        self.assertFalse((self.root / "photo_preferences.json").exists())

    def test_then_asks_for_a_coding_model(self) -> None:
        self.write_json("architect_preferences.json", [model("a")])
        self.write_json("worker_preferences.json", [])
        self.assertEqual(self.run_script().returncode, 3)
        self.assertFalse((self.root / "photo_preferences.json").exists())

    def test_fills_the_chains_and_keeps_what_was_chosen(self) -> None:
        library = FLEET / "model_library.json"
        (self.root / library.name).write_bytes(library.read_bytes())
        self.write_json("architect_preferences.json", [model("mine", "qwen", "Qwen")])
        self.write_json("worker_preferences.json", [model("also-mine", "qwen", "Qwen")])
        done = self.run_script()
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertEqual(len(done.stdout.splitlines()), 1)
        self.assertEqual(self.chain("architect")[0]["id"], "mine")
        self.assertEqual(self.chain("worker")[0]["id"], "also-mine")
        for key in CHAIN_KEYS:
            self.assertTrue(0 < len(self.chain(key)) <= 4, key)
        for key in ("worker", "photo", "video", "voice"):
            self.assertNotIn("cerebras", [entry["provider_key"] for entry in self.chain(key)])

    def test_without_a_library_it_works_with_the_models_at_hand(self) -> None:
        chains = {key: [] for key in CHAIN_KEYS}
        chains |= {"architect": [model("a")], "worker": [model("b", "qwen", "Qwen")]}
        filled = auto_setup_chains.fill(chains, library=[])
        ids = {key: [entry["id"] for entry in filled[key]] for key in CHAIN_KEYS}
        self.assertEqual(ids["architect"], ["a", "b"])
        self.assertEqual(ids["photo"], ["a"])
        self.assertEqual(ids["voice"], ["local:whisper", "local:say"])

    def test_added_rows_have_identities_of_their_own(self) -> None:
        chains = {key: [] for key in CHAIN_KEYS} | {"architect": [model("a")], "worker": [model("b")]}
        filled = auto_setup_chains.fill(chains, [model("x", uniqueId="LIBRARY-ROW")])
        identities = [entry["uniqueId"] for chain in filled.values() for entry in chain if entry["id"] == "x"]
        self.assertEqual(len(identities), 5)
        self.assertEqual(len(set(identities) - {"LIBRARY-ROW"}), 5)

    def test_failure_is_told_on_standard_error(self) -> None:
        done = self.run_script(DAEMON_DATA_DIR="")
        self.assertEqual((done.returncode, done.stdout), (1, ""))
        self.assertIn("DAEMON_DATA_DIR", done.stderr)


class LoginTest(SandboxTest):
    alerts = {"gemini": {"since": "2026-03-04"}, "claude": {"since": "2026-03-05"}}

    def run_script(self, *arguments: str, **more: str) -> subprocess.CompletedProcess:
        environment = {"HOME": str(self.home), "PATH": os.environ["PATH"], **more}
        command = [str(DAEMON / "login_scout.sh"), *arguments]
        return subprocess.run(command, env=environment, stdin=subprocess.DEVNULL, capture_output=True, text=True)

    def left(self) -> dict:
        return json.loads((self.root / "reauth_alerts.json").read_text())

    def test_removes_the_alert_of_this_provider_only(self) -> None:
        self.write_json("reauth_alerts.json", self.alerts)
        done = self.run_script("gemini")
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertIn("gemini", done.stdout)
        self.assertEqual(self.left(), {"claude": {"since": "2026-03-05"}})

    def test_takes_the_shared_folder_from_the_environment_when_it_is_there(self) -> None:
        self.write_json("reauth_alerts.json", self.alerts)
        self.run_script("claude", HOME="/nonexistent", DAEMON_DATA_DIR=str(self.root))
        self.assertEqual(list(self.left()), ["gemini"])

    def test_is_content_without_alerts_or_with_broken_ones(self) -> None:
        self.assertEqual(self.run_script("gemini").returncode, 0)
        (self.root / "reauth_alerts.json").write_text("[1,")
        self.assertEqual(self.run_script("gemini").returncode, 0)
        self.assertEqual((self.root / "reauth_alerts.json").read_text(), "[1,")

    def test_leaves_no_credential_files(self) -> None:
        before = sorted(self.home.rglob("*"))
        self.run_script("claude")
        self.assertEqual(sorted(self.home.rglob("*")), before)

    def test_wants_exactly_one_provider(self) -> None:
        for arguments in ((), ("",), ("a", "b")):
            self.assertEqual(self.run_script(*arguments).returncode, 2)

    def test_in_a_terminal_it_waits_for_enter(self) -> None:
        self.write_json("reauth_alerts.json", self.alerts)
        keyboard, terminal = pty.openpty()
        self.addCleanup(os.close, keyboard)
        process = subprocess.Popen(
            [str(DAEMON / "login_scout.sh"), "gemini"],
            env={"HOME": str(self.home), "PATH": os.environ["PATH"]},
            stdin=terminal,
            stdout=subprocess.PIPE,
        )
        os.close(terminal)
        assert process.stdout is not None
        self.addCleanup(process.wait)
        self.addCleanup(process.stdout.close)
        self.addCleanup(process.kill)
        shown = b""
        while b"Press Enter" not in shown:
            shown += process.stdout.read(1)
        self.assertIn("gemini", self.left())
        os.write(keyboard, b"\n")
        self.assertEqual(process.wait(timeout=10), 0)
        self.assertNotIn("gemini", self.left())


if __name__ == "__main__":
    unittest.main()
