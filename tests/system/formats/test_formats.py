"""Schemas, samples, written files and decoders held against each other.

    test_formats.py FOLDER_OF_THE_TEST_PROGRAMS [unittest arguments]
"""

import copy
import json
import os
import pathlib
import plistlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
import warnings

import jsonschema

SOURCE = pathlib.Path(__file__).resolve().parents[3]
FORMATS = SOURCE / "docs/formats"
FLEET = SOURCE / "examples/fleet"
DATA_FOLDER = "Library/Application Support/Varnhold"

KIND_OF_FILE = {
    "bots.json": "bots",
    "model_library.json": "library",
    "effort_preferences.json": "effort",
    "context_preferences.json": "context",
    "response_mode.json": "response-mode",
    "auth_config.json": "auth",
    "custom_groups.json": "groups",
    "custom_groups.json.bak": "groups",
    "chain_bot_assignments.json": "assignments",
    ".preferred-provider.json": "preferred-provider",
    "reauth_alerts.json": "alerts",
    "pending_model_notices.json": "notices",
    **{f"{chain}_preferences.json": "chain"
       for chain in ("architect", "worker", "photo", "video", "voice", "governor")},
}
WRITTEN_BY_A_SAVE = set(KIND_OF_FILE) - {
    "model_library.json", "custom_groups.json.bak", "reauth_alerts.json",
    "pending_model_notices.json"}

# Readers that take less than a whole document from what they are given.
LENIENT = {"alerts", "notices", "preferred-provider"}

# Nothing in the program reads it.
WITHOUT_DECODER = {"keepalive-ping", "doctor-report"}

REPLACEMENTS = [
    None, True, False, 0, -1, 1.5, 8000.0, 2**63 - 1, 2**63, -(2**63), -(2**63) - 1, 1e30, "",
    "text", "Telegram", "off", [], [None], ["text"], [[]], {}, {"a": 1}, {"a": "text"}]


def schemas():
    return {path.name: json.loads(path.read_text(encoding="utf-8"))
            for path in sorted(FORMATS.glob("*.schema.json"))}


def validator(kind):
    """The kind's schema, with the others found by their file names."""
    every = schemas()
    schema = every[f"{kind}.schema.json"]
    try:
        from referencing import Registry, Resource
        from referencing.jsonschema import DRAFT202012
    except ImportError:  # releases of the library before 4.18
        base = "https://formats.invalid/"
        resolver = jsonschema.RefResolver(
            base, schema, store={base + name: contents for name, contents in every.items()})
        return jsonschema.Draft202012Validator(schema, resolver=resolver)
    registry = Registry().with_resources(
        (name, Resource(contents, DRAFT202012)) for name, contents in every.items())
    return jsonschema.Draft202012Validator(schema, registry=registry)


def kinds():
    return [name.removesuffix(".schema.json") for name in schemas()]


def example(kind):
    """The sample that stands on the kind's page."""
    page = (FORMATS / f"{kind}.md").read_text(encoding="utf-8")
    fences = re.findall(r"^```(json|text)\n(.*?)^```$", page, re.MULTILINE | re.DOTALL)
    assert len(fences) == 1, f"{kind}.md: one sample expected"
    language, text = fences[0]
    return json.loads(text) if language == "json" else text.removesuffix("\n")


def places(value, path=()):
    """Paths to every value in the document, the document itself first."""
    yield path
    if isinstance(value, (dict, list)):
        for key in (value if isinstance(value, dict) else range(len(value))):
            yield from places(value[key], (*path, key))


def replaced(document, path, replacement):
    if not path:
        return replacement
    document = copy.deepcopy(document)
    at = document
    for key in path[:-1]:
        at = at[key]
    at[path[-1]] = replacement
    return document


def without(document, path):
    document = copy.deepcopy(document)
    at = document
    for key in path[:-1]:
        at = at[key]
    del at[path[-1]]
    return document


def variants(document):
    """The document with each of its values replaced by each kind of value, and each removed."""
    for path in places(document):
        for replacement in REPLACEMENTS:
            yield replaced(document, path, replacement)
        if path:
            yield without(document, path)


class FormatsTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def run_program(self, name, *arguments):
        environment = {"PATH": os.environ["PATH"], "LANG": "C.UTF-8"}
        for variable in ("ASAN_OPTIONS", "UBSAN_OPTIONS", "TSAN_OPTIONS"):
            if variable in os.environ:
                environment[variable] = os.environ[variable]
        return subprocess.run([PROGRAMS / name, *arguments], env=environment, text=True,
                              encoding="utf-8", capture_output=True, timeout=60)

    def decode(self, kind, paths):
        """For each file whether the program takes it. Notices are taken away by being read."""
        done = self.run_program("decode_file", kind, *map(str, paths))
        self.assertIn(done.returncode, (0, 1), done.stderr)
        taken = [line == "taken" for line in done.stdout.splitlines()]
        self.assertEqual(len(taken), len(paths), done.stderr)
        self.assertEqual(done.returncode, 0 if all(taken) else 1)
        return taken

    def lay_fleet(self):
        home = self.folder / "home"
        subprocess.run([sys.executable, SOURCE / "examples/make_fleet.py", home], check=True,
                       capture_output=True)
        return home

    def check_file(self, kind, path):
        validator(kind).validate(json.loads(path.read_text(encoding="utf-8")))
        draft = self.folder / "draft.json"
        shutil.copy(path, draft)
        self.assertEqual(self.decode(kind, [draft]), [True], path.name)

    def test_schemas_are_schemas_and_each_has_its_page(self):
        for kind in kinds():
            with self.subTest(kind):
                schema = schemas()[f"{kind}.schema.json"]
                jsonschema.Draft202012Validator.check_schema(schema)
                self.assertEqual(schema["$schema"], "https://json-schema.org/draft/2020-12/schema")
                page = (FORMATS / f"{kind}.md").read_text(encoding="utf-8")
                self.assertIn(f"[{kind}.schema.json]({kind}.schema.json)", page)
                index = (FORMATS / "README.md").read_text(encoding="utf-8")
                self.assertIn(f"]({kind}.md)", index)

    def test_samples_on_the_pages_are_valid_and_taken(self):
        for kind in kinds():
            with self.subTest(kind):
                sample = example(kind)
                validator(kind).validate(sample)
                if kind in WITHOUT_DECODER:
                    continue
                path = self.folder / kind
                if kind == "property-list":
                    path.write_bytes(plistlib.dumps(sample))
                else:
                    path.write_text(json.dumps(sample, ensure_ascii=False), encoding="utf-8")
                self.assertEqual(self.decode(kind, [path]), [True])

    def test_every_file_of_the_sample_fleet_is_valid_and_taken(self):
        found = [path for path in FLEET.iterdir() if path.name.endswith(".json")]
        self.assertGreaterEqual(len(found), 15)
        for path in found:
            with self.subTest(path.name):
                self.check_file(KIND_OF_FILE[path.name], path)

    def test_every_file_of_a_save_is_valid_and_taken(self):
        for fresh in (False, True):
            home = self.folder / "fresh" if fresh else self.lay_fleet()
            data = home / DATA_FOLDER
            data.mkdir(parents=True, exist_ok=True)
            self.assertEqual(self.run_program("save_settings", home).returncode, 0)
            written = {path.name for path in data.glob("*.json*")}
            written |= {path.name for path in data.glob(".*.json")}
            expected = WRITTEN_BY_A_SAVE - ({"custom_groups.json"} if fresh else set())
            self.assertLessEqual(expected, written)
            for name in sorted(written):
                with self.subTest(name, fresh=fresh):
                    self.check_file(KIND_OF_FILE[name], data / name)

    def test_a_save_changes_no_value_of_the_sample_fleet(self):
        home = self.lay_fleet()
        self.run_program("save_settings", home)
        for name in WRITTEN_BY_A_SAVE - {".preferred-provider.json", "bots.json"}:
            with self.subTest(name):
                before = json.loads((FLEET / name).read_text(encoding="utf-8"))
                after = json.loads((home / DATA_FOLDER / name).read_text(encoding="utf-8"))
                self.assertEqual(before, after)
        bots = json.loads((home / DATA_FOLDER / "bots.json").read_text(encoding="utf-8"))
        self.assertEqual(bots[0]["role"], "governor")
        self.assertEqual(bots[1:], json.loads((FLEET / "bots.json").read_text(encoding="utf-8")))
        self.assertEqual((home / DATA_FOLDER / "PROMPT.md").read_bytes(),
                         (FLEET / "PROMPT.md").read_bytes())

    def test_compact_files_are_in_the_form_that_the_sample_shows(self):
        home = self.lay_fleet()
        self.run_program("save_settings", home)
        # Maps are written in the order of their keys, and the governor joins the bots.
        for name in WRITTEN_BY_A_SAVE - {".preferred-provider.json", "bots.json",
                                         "chain_bot_assignments.json"}:
            with self.subTest(name):
                self.assertEqual((home / DATA_FOLDER / name).read_bytes(),
                                 (FLEET / name).read_bytes())

    def test_the_moment_of_a_save_has_the_form_of_a_ping(self):
        home = self.lay_fleet()
        self.run_program("save_settings", home)
        text = (home / DATA_FOLDER / ".preferred-provider.json").read_text(encoding="utf-8")
        validator("keepalive-ping").validate(json.loads(text)["governor"]["set_at"])

    def test_property_lists_of_the_fleet_are_valid_and_taken(self):
        home = self.lay_fleet()
        self.run_program("save_settings", home)
        lists = sorted((home / "Library/LaunchAgents").glob("*.plist"))
        self.assertEqual(len(lists), 5)  # the sample pauses one bot; the governor never starts
        for path in lists:
            validator("property-list").validate(plistlib.loads(path.read_bytes()))
        self.assertEqual(self.decode("property-list", lists), [True] * len(lists))

    def test_the_stand_in_daemon_reads_a_save_back(self):
        home = self.lay_fleet()
        self.run_program("save_settings", home)
        script = (
            "import json, pathlib, sys\n"
            "from provider_telegramd.chains import filled_chains, load_chain, model_for\n"
            "root = pathlib.Path(sys.argv[1])\n"
            "print(json.dumps({\n"
            "    'architect': [model['id'] for model in load_chain(root, 'architect')],\n"
            "    'voice': [model['id'] for model in load_chain(root, 'voice')],\n"
            "    'builder': sorted(filled_chains(root, 'builder')),\n"
            "    'model': model_for(root, 'builder', 0)}))\n")
        daemon = SOURCE / "examples/daemon"
        done = subprocess.run(
            [sys.executable, "-B", "-c", script, home / DATA_FOLDER], cwd=daemon, check=True,
            capture_output=True, text=True,
            env={"PYTHONPATH": str(daemon), "HOME": str(home), "PATH": os.environ["PATH"]})
        self.assertEqual(json.loads(done.stdout), {
            "architect": ["claude-opus-4-8", "gpt-5.2", "gemini-3-pro",
                          "qwen-3-235b-a22b-instruct-2507"],
            "voice": ["local:whisper", "local:say"],
            "builder": ["worker"],
            "model": "qwen3-coder-plus"})

    def check_variants(self, kind, documents, write):
        """What the schema forbids is refused, and, for whole readers, what it allows is taken."""
        checked = validator(kind)
        allowed, paths = [], []
        for number, document in enumerate(documents):
            path = self.folder / f"{kind}-{number}"
            try:
                write(path, document)
            except (TypeError, ValueError, OverflowError, AttributeError):
                continue  # the form can't carry such a value at all
            allowed.append(checked.is_valid(document))
            paths.append(path)
        self.assertIn(False, allowed)
        for path, ok, taken in zip(paths, allowed, self.decode(kind, paths)):
            content = path.read_bytes() if path.exists() else b"(taken away)"
            if not ok:
                self.assertFalse(taken, f"forbidden but taken: {content!r}")
            elif kind not in LENIENT:
                self.assertTrue(taken, f"allowed but refused: {content!r}")

    def test_decoders_refuse_what_the_schemas_forbid(self):
        def write(path, document):
            path.write_text(json.dumps(document), encoding="utf-8")

        for kind in kinds():
            if kind in WITHOUT_DECODER or kind == "property-list":
                continue
            with self.subTest(kind):
                self.check_variants(kind, variants(example(kind)), write)

    def test_property_lists_are_refused_where_the_schema_forbids(self):
        self.check_variants("property-list", variants(example("property-list")),
                            lambda path, document: path.write_bytes(plistlib.dumps(document)))


if __name__ == "__main__":
    PROGRAMS = pathlib.Path(sys.argv.pop(1)).resolve()
    warnings.simplefilter("ignore", DeprecationWarning)
    unittest.main()
