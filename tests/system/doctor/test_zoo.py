"""What the doctor says of broken homes, as text and as JSON, held against what it is known to say.

Each test runs in a sandbox of its own: test_zoo.py BUILD_FOLDER TEST_NAME. With
VARNHOLD_REFRESH_GOLDEN set to a folder, what is said is written there instead.
"""

import json
import os
import pathlib
import re
import subprocess
import sys
import unittest

sys.path.append(str(pathlib.Path(__file__).resolve().parents[1] / "services"))
from harness import BUILD, main  # noqa: E402

import homes  # noqa: E402
import jsonschema  # noqa: E402

GOLDEN = pathlib.Path(__file__).resolve().parent / "golden"
SCHEMA = json.loads((homes.SOURCE / "docs/formats/doctor-report.schema.json").read_text())
CHECKS = ("files", "fleet", "chains", "keepalive")


def doctor(*words, columns=80):
    return subprocess.run([BUILD / "bin/varnhold-doctor", *words], check=False, text=True,
                          capture_output=True, stdin=subprocess.DEVNULL,
                          env=os.environ | {"COLUMNS": str(columns)})


def without_moments(text):
    text = re.sub(r"\d{4}-\d\d-\d\dT\d\d:\d\d:\d\dZ", "2026-03-04T05:06:07Z", text)
    return re.sub(r'("bytesFree": )\d+', r"\g<1>1000000000", text)


class ZooTest(unittest.TestCase):
    maxDiff = None

    def compare(self, name, text):
        text = without_moments(text)
        folder = os.environ.get("VARNHOLD_REFRESH_GOLDEN")
        if folder:
            (pathlib.Path(folder) / name).write_text(text)
            return
        self.assertEqual(text, (GOLDEN / name).read_text())

    def check(self, home, code):
        homes.lay(home)
        shown = doctor(*CHECKS)
        self.assertEqual((shown.returncode, shown.stderr), (code, ""))
        self.compare(f"{home.__name__}.txt", shown.stdout)
        printed = doctor("--json", *CHECKS)
        self.assertEqual((printed.returncode, printed.stderr), (code, ""))
        jsonschema.Draft202012Validator(SCHEMA).validate(json.loads(printed.stdout))
        self.compare(f"{home.__name__}.json", printed.stdout)
        for text in (shown.stdout, doctor(*CHECKS, columns=120).stdout):
            self.assertNotRegex(text, r"[\x00-\x09\x0b-\x1f\x7f\u202a-\u202e]")

    def test_the_sample_fleet(self):
        self.check(homes.sample, 1)

    def test_a_home_without_anything(self):
        self.check(homes.fresh, 1)

    def test_one_wrong_word(self):
        self.check(homes.one_wrong_word, 2)

    def test_files_that_are_cut_off(self):
        self.check(homes.cut_off, 2)

    def test_files_of_other_shapes(self):
        self.check(homes.other_shapes, 2)

    def test_things_in_the_way(self):
        self.check(homes.in_the_way, 2)

    def test_what_is_half_known(self):
        self.check(homes.half_known, 1)

    def test_twins(self):
        self.check(homes.twins, 2)

    def test_lost_providers(self):
        self.check(homes.lost_providers, 2)

    def test_keepalive(self):
        self.check(homes.keepalive, 1)

    def test_hostile_names(self):
        self.check(homes.hostile, 2)

    # -- who answers without a provider -----------------------------------------------------------

    # By hand: Google and Qwen aren't signed in, Mistral and OpenRouter have no key.
    NOW = {"architect": "claude-opus-4-8", "worker": "deepseek-chat", "photo": "gpt-5.2",
           "video": None, "voice": "local:whisper", "governor": "qwen-3-235b-a22b-instruct-2507",
           "Launch Crew": "claude-opus-4-8", "Quiet Hours": "llama3.1:8b"}
    WITHOUT = {
        "claude": {"architect": "gpt-5.2", "Launch Crew": None},
        "openai": {"photo": None},
        "deepseek": {"worker": "claude-haiku-4-5"},
        "cerebras": {"governor": "claude-haiku-4-5"},
        "ollama": {"Quiet Hours": None},
        "local": {"voice": None},
        "gemini": {}, "qwen": {},
        "mistral": {}, "openrouter": {}}  # no model of any chain
    SERVES = {"planner": ["architect", "Launch Crew"], "researcher": ["architect"],
              "builder": ["worker", "Launch Crew"], "customer-desk": ["photo"],
              "night-watch": ["Quiet Hours"], "fire-drill": ["governor"]}

    def test_who_answers_without_each_provider(self):
        homes.lay(homes.sample)
        for provider, changes in self.WITHOUT.items():
            with self.subTest(provider=provider):
                then = self.NOW | changes
                said = doctor("--json", "--without", provider)
                report = json.loads(said.stdout)
                jsonschema.Draft202012Validator(SCHEMA).validate(report)
                check = report["checks"][0]
                rows = {row.get("chain", row.get("group")): (row["now"], row["then"])
                        for row in check["chains"] + check["groups"]}
                self.assertEqual(rows, {name: (now, then[name]) for name, now in self.NOW.items()})
                bots = {row["label"].split(".")[2]:
                        {each.get("chain", each.get("group")): each["then"]
                         for each in row["serves"]}
                        for row in check["bots"] if row["serves"]}
                self.assertEqual(bots, {role: {name: then[name] for name in names}
                                        for role, names in self.SERVES.items()})
                unknown = provider in ("mistral", "openrouter")
                code = 1 if unknown else 2 if None in changes.values() else 0
                # Nobody is assigned to the Audio chain.
                self.assertEqual(said.returncode, 1 if provider == "local" else code)

    def test_who_answers_is_shown_with_what_is_taken_for_granted(self):
        homes.lay(homes.sample)
        self.compare("without_claude.txt", doctor("--without", "Anthropic").stdout)


if __name__ == "__main__":
    main()
