"""The sample fleet, and how it is laid into a home."""

import json
import re
import subprocess
import sys
import unittest
import uuid

from support import EXAMPLES, FLEET, SandboxTest

import make_fleet

MODEL_FIELDS = ["uniqueId", "id", "name", "family", "color", "type", "provider_key"]
BOT_FIELDS = ["icon", "title", "token", "role", "launchdLabel", "service"]
OPTIONAL_BOT_FIELDS = ["prompt", "isPaused", "isSystem", "keepaliveEnabled"]
CHAIN_KEYS = ["architect", "worker", "photo", "video", "voice", "governor"]
GROUP_FIELDS = [
    "id",
    "name",
    "models",
    "effortLevel",
    "contextTokens",
    "colorHex",
    "attachedPaths",
    "objectives",
    "doctrine",
    "assignedBotLabels",
]
AUTH_PROVIDERS = ["anthropic", "google", "openai", "mistral", "qwen", "deepseek"]


def sample(name: str) -> object:
    return json.loads((FLEET / name).read_text(encoding="utf-8"))


def all_models() -> list[dict]:
    chains = [entry for key in CHAIN_KEYS for entry in sample(f"{key}_preferences.json")]
    groups = [entry for group in sample("custom_groups.json") for entry in group["models"]]
    return sample("model_library.json")["models"] + chains + groups


class SampleTest(unittest.TestCase):
    def test_every_file_is_one_compact_line_without_an_end(self) -> None:
        files = sorted(FLEET.glob("[!.]*.json"))
        self.assertEqual(len(files), 15)
        for path in files:
            with self.subTest(file=path.name):
                text = path.read_text(encoding="utf-8")
                compact = json.dumps(json.loads(text), ensure_ascii=False, separators=(",", ":"))
                self.assertEqual(text, compact)

    def test_fields_stand_in_their_declared_order(self) -> None:
        for entry in all_models():
            self.assertEqual(list(entry), MODEL_FIELDS)
        for group in sample("custom_groups.json"):
            self.assertEqual(list(group), GROUP_FIELDS)
            self.assertEqual(group["id"], str(uuid.UUID(group["id"])).upper())
        methods = [f"{provider}{part}" for provider in AUTH_PROVIDERS for part in ("Method", "Key")]
        self.assertEqual(list(sample("auth_config.json")), [*methods, "openrouterKey", "cerebrasKey"])
        for name in ("effort_preferences.json", "context_preferences.json"):
            self.assertEqual(list(sample(name)), CHAIN_KEYS)
        for bot in sample("bots.json"):
            present = [field for field in OPTIONAL_BOT_FIELDS if field in bot]
            self.assertEqual(list(bot), BOT_FIELDS + present)

    def test_rows_have_identities_of_their_own(self) -> None:
        identities = [entry["uniqueId"] for entry in all_models()]
        self.assertEqual(len(set(identities)), len(identities))

    def test_bots_are_distinct_and_labelled_by_role(self) -> None:
        bots = sample("bots.json")
        self.assertEqual(len(bots), 6)
        for field in ("icon", "title", "role", "launchdLabel"):
            self.assertEqual(len({bot[field] for bot in bots}), 6, field)
        for bot in bots:
            self.assertEqual(bot["launchdLabel"], f"com.ostrelleai.{bot['role']}.telegramd")
        self.assertEqual(sum(bot.get("isPaused", False) for bot in bots), 1)
        self.assertEqual(sum(bot["service"] == "Slack" for bot in bots), 1)
        self.assertTrue((FLEET / "data/fire-drill/crash-at-start").exists())

    def test_nobody_is_ever_asked_for_a_name(self) -> None:
        for bot in sample("bots.json"):
            self.assertTrue(bot["service"] != "Telegram" or bot["token"] == "", bot["title"])

    def test_secrets_say_that_they_are_made_up(self) -> None:
        keys = [value for name, value in sample("auth_config.json").items() if name.endswith("Key")]
        tokens = [bot["token"] for bot in sample("bots.json")]
        for secret in filter(None, keys + tokens):
            self.assertRegex(secret, "^sample-.*-not-real$")

    def test_assignments_and_groups_name_bots_of_the_fleet(self) -> None:
        labels = {bot["launchdLabel"] for bot in sample("bots.json")}
        assignments = sample("chain_bot_assignments.json")
        self.assertLessEqual(set(assignments), set(CHAIN_KEYS))
        named = [label for group in sample("custom_groups.json") for label in group["assignedBotLabels"]]
        named += [label for chain in assignments.values() for label in chain]
        self.assertLessEqual(set(named), labels)

    def test_no_file_holds_a_path_of_a_machine(self) -> None:
        for path in FLEET.rglob("*"):
            if path.is_file():
                text = path.read_text(encoding="utf-8")
                self.assertIsNone(re.search(r"(^|[\"'\s=])(~?/|[A-Z]:\\)\w", text), path.name)


class LayTest(SandboxTest):
    def setUp(self) -> None:
        super().setUp()
        self.new_home = self.home / "new"
        self.target = self.new_home / "Library/Application Support/Varnhold"

    def run_script(self, *arguments: str) -> subprocess.CompletedProcess:
        command = [sys.executable, str(EXAMPLES / "make_fleet.py"), *arguments]
        return subprocess.run(command, capture_output=True, text=True)

    def test_lays_the_sample_byte_for_byte(self) -> None:
        done = self.run_script(str(self.new_home))
        self.assertEqual(done.returncode, 0, done.stderr)
        for path in FLEET.rglob("*"):
            if path.is_file():
                laid = self.target / path.relative_to(FLEET)
                self.assertEqual(laid.read_bytes(), path.read_bytes(), path.name)
        self.assertTrue((self.target / "locks").is_dir())
        self.assertTrue((self.new_home / "Library/Application Support/OstrelleAI/data/planner").is_dir())

    def test_leaves_an_existing_fleet_alone(self) -> None:
        self.target.mkdir(parents=True)
        (self.target / "bots.json").write_text("[]")
        done = self.run_script(str(self.new_home))
        self.assertEqual(done.returncode, 1)
        self.assertEqual([path.name for path in self.target.iterdir()], ["bots.json"])
        self.assertEqual((self.target / "bots.json").read_text(), "[]")

    def test_makes_as_many_plain_bots_as_asked_for(self) -> None:
        make_fleet.lay_fleet(self.new_home, 40)
        bots = json.loads((self.target / "bots.json").read_text())
        self.assertEqual(len({bot["launchdLabel"] for bot in bots}), 40)
        for bot in bots:
            self.assertEqual(list(bot), BOT_FIELDS)
            self.assertEqual((bot["token"], bot["service"]), ("", "Telegram"))
        assignments = json.loads((self.target / "chain_bot_assignments.json").read_text())
        self.assertEqual(assignments, {"architect": [bot["launchdLabel"] for bot in bots]})
        self.assertEqual(list((self.target / "data").iterdir()), [])
        self.assertFalse((self.target / "custom_groups.json").exists())

    def test_a_fleet_of_none_is_an_empty_list(self) -> None:
        make_fleet.lay_fleet(self.new_home, 0)
        self.assertEqual((self.target / "bots.json").read_bytes(), b"[]")

    def test_refuses_senseless_numbers(self) -> None:
        for number in ("-1", "1000", "many"):
            self.assertEqual(self.run_script(str(self.new_home), "--bots", number).returncode, 2)
        self.assertFalse(self.new_home.exists())


if __name__ == "__main__":
    unittest.main()
