"""What is dragged in the settings window, as a user drags it: by mouse, and by keys alone.

Each test runs in a sandbox and a process of its own: test_window.py BUILD_FOLDER TEST_NAME
"""

import json
import os
import subprocess
import sys
import types
import unittest

from accessible import area_of, everything, find, focused
from pointer_sign import forbids, pixels
from session import Session, label_of, wait_until
from user_manager import start_session_bus

PROGRAM = "Varnhold"
MODEL = "Claude Haiku 4.5"
MODEL_ID = "claude-haiku-4-5"
CHAIN = "End of Architect Chain"  # under its last model, where a drop appends
EDGE = 70  # nearer to it the page scrolls while something is dragged
WHEEL_AT = (900, 700)  # over the chains, on the screen of the session
MOST_STEPS = 150  # of the Tab key: more than the window has places


class WindowTest(unittest.TestCase):
    def setUp(self):
        start_session_bus()
        os.environ["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"
        self.session = Session(BUILD)
        self.addCleanup(self.session.end)
        (self.session.home / ".claude.json").write_text("{}")  # somebody is signed in
        self.session.start()
        self.session.await_title("of 6 bots running")
        self.open_window()

    def open_window(self):
        self.session.tool(self.session.prefix / "bin/varnhold")
        window = wait_until("the window", lambda: self.session.windows("^Varnhold$"))[0]
        self.session.tool("wmctrl", "-i", "-a", window)
        # A first run has two sheets to tell what this is.
        for sheet in ("Welcome to Varnhold", "Welcome to the Model Library"):
            wait_until(sheet, lambda sheet=sheet: find(PROGRAM, sheet))
            self.key("Escape")
            wait_until(f"no {sheet}", lambda sheet=sheet: find(PROGRAM, sheet) is None)
        self.before = self.chain()

    def key(self, *keys):
        self.session.tool("xdotool", "key", *keys)

    def chain(self):
        return json.loads((self.session.support / "architect_preferences.json").read_text())

    def assert_the_model_was_added(self):
        wait_until("the chain has grown", lambda: len(self.chain()) == len(self.before) + 1)
        after = self.chain()
        self.assertEqual(after[:-1], self.before)
        self.assertEqual(after[-1]["id"], MODEL_ID)
        library = json.loads((self.session.support / "model_library.json").read_text())["models"]
        original = next(model for model in library if model["id"] == MODEL_ID)
        self.assertNotEqual(after[-1]["uniqueId"], original["uniqueId"])
        self.assertEqual({**after[-1], "uniqueId": original["uniqueId"]}, original)

    def scroll_to(self, name):
        """Turns the wheel over the chains until the lower end of a zone is in sight."""
        bottom = area_of(wait_until("the bar at the bottom", lambda: find(PROGRAM, "Reset"))).y - EDGE
        self.session.tool("xdotool", "mousemove", WHEEL_AT[0], WHEEL_AT[1])
        for _ in range(MOST_STEPS):
            zone = find(PROGRAM, name)
            if zone:
                area = area_of(zone)
                if area.y + area.height < bottom:
                    return area
            self.session.tool("xdotool", "click", "5", "sleep", "0.05")
        self.fail(f"the wheel doesn't lead to {name}")

    def test_a_model_is_added_to_a_chain_by_mouse(self):
        row = area_of(wait_until("the model in the library",
                                 lambda: find(PROGRAM, MODEL, "list item")))
        zone = self.scroll_to(CHAIN)
        self.drag(row, zone)
        self.assert_the_model_was_added()

    def test_the_pointer_forbids_where_a_drop_does_nothing(self):
        row = self.place_of(MODEL, "list item")
        zone = self.scroll_to(CHAIN)
        other = self.row_in(zone, self.before[0]["name"])
        self.lift(row, zone)
        wait_until("a chain that takes it", lambda: not self.forbids())
        self.hover(other)
        wait_until("rows only take each other", self.forbids)
        self.session.tool("xdotool", "mousemove", zone.x + 30, zone.y + zone.height - 8, "sleep", "0.1",
                          "mouseup", 1)
        self.assert_the_model_was_added()
        zone = self.scroll_to(CHAIN)
        self.lift(self.row_in(zone, self.before[0]["name"]), self.place_of("Top of Coding Chain", "panel"))
        wait_until("another chain takes it", lambda: not self.forbids())
        self.hover(self.place_of("Bots of Architect Chain", "panel"))
        wait_until("it is no bot", self.forbids)
        self.session.tool("xdotool", "mouseup", 1)
        self.assertEqual(self.chain()[:-1], self.before)

    def test_the_pointer_is_an_open_hand_over_what_can_be_dragged_alone(self):
        self.hover(self.place_of("Local Tools", "heading"))
        arrow = self.pointer()
        self.hover(self.place_of(MODEL, "list item"))
        wait_until("another pointer over a model", lambda: self.pointer() != arrow)
        hand = self.pointer()
        self.hover(self.place_of("say (voice reply, free/local)", "list item"))
        wait_until("the arrow over a tool", lambda: self.pointer() == arrow)
        self.hover(self.row_in(self.scroll_to(CHAIN), self.before[0]["name"]))
        wait_until("the same over a chain's model", lambda: self.pointer() == hand)

    def pointer(self):
        return pixels(self.session.environment["DISPLAY"])

    def forbids(self):
        return forbids(self.session.environment["DISPLAY"])

    def hover(self, area):
        """The toolkit asks what a place says once the pointer moves within it."""
        for x in (area.x + area.width // 2, area.x + area.width // 2 + 3):
            self.session.tool("xdotool", "mousemove", x, area.y + area.height // 2, "sleep", "0.05")

    def drag(self, row, zone):
        self.lift(row, zone)
        self.session.tool("xdotool", "sleep", "0.3", "mouseup", 1)

    def lift(self, row, zone):
        """From the row to the lower end of the zone, which has no rows."""
        x, y = row.x + row.width // 3, row.y + row.height // 2
        to_x, to_y = zone.x + zone.width // 2, zone.y + zone.height - 8
        self.session.tool("xdotool", "mousemove", x, y, "mousedown", 1)
        for step in range(1, 21):
            self.session.tool("xdotool", "mousemove", x + (to_x - x) * step // 20,
                              y + (to_y - y) * step // 20, "sleep", "0.02")

    def place_of(self, name, role):
        return area_of(wait_until(name, lambda: find(PROGRAM, name, role)))

    def test_a_model_is_put_at_the_head_of_a_chain_by_mouse(self):
        strip = self.scroll_to("Top of Architect Chain")
        self.drag(self.place_of(MODEL, "list item"), strip)
        wait_until("the chain has grown", lambda: len(self.chain()) == len(self.before) + 1)
        self.assertEqual(self.chain()[0]["id"], MODEL_ID)
        self.assertEqual(self.chain()[1:], self.before)

    def row_in(self, zone, name):
        """Where a model's row stands in the zone."""
        areas = [area_of(each) for each in everything(PROGRAM)
                 if each.get_name() == name and each.get_role_name() == "list item"]
        return next(area for area in areas if zone.x <= area.x < zone.x + zone.width
                    and zone.y <= area.y < zone.y + zone.height)

    def saved(self, name):
        return json.loads((self.session.support / name).read_text())

    def group(self):
        return next(group for group in self.saved("custom_groups.json")
                    if group["name"] == "Launch Crew")

    def test_a_model_moves_to_another_chain_by_mouse(self):
        row = self.row_in(self.scroll_to(CHAIN), self.before[-1]["name"])
        coding = self.saved("worker_preferences.json")
        self.drag(row, self.place_of("End of Coding Chain", "panel"))
        wait_until("the model has come", lambda: self.saved("worker_preferences.json") ==
                   coding + self.before[-1:])
        self.assertEqual(self.chain(), self.before[:-1])

    def test_models_of_a_chain_change_places_by_mouse(self):
        chain = self.scroll_to(CHAIN)
        self.drag(self.row_in(chain, self.before[0]["name"]),
                  self.row_in(chain, self.before[-1]["name"]))
        wait_until("the first is the last", lambda: self.chain() ==
                   self.before[1:] + self.before[:1])

    def carry(self, row, to, seconds):
        """Drags from row to row in that time, all in one go, for a hand is never as slow as processes."""
        x, y = row.x + row.width // 3, row.y + row.height // 2
        by = to.y + to.height // 2 - y
        words = ["mousemove", x, y, "mousedown", 1]
        for step in range(1, 21):
            words += ["mousemove", x, y + by * step // 20, "sleep", seconds / 20]
        self.session.tool("xdotool", *words, "mouseup", 1)

    def test_models_of_a_chain_change_places_in_a_short_drag_and_in_long_ones(self):
        order = self.before
        chain = self.scroll_to(CHAIN)
        for seconds in (0.3, 1, 3):
            self.carry(self.row_in(chain, order[0]["name"]),
                       self.row_in(chain, order[-1]["name"]), seconds)
            order = order[1:] + order[:1]
            wait_until(f"the first is the last after {seconds} s",
                       lambda order=order: self.chain() == order)

    def test_models_of_a_group_change_places_in_a_short_drag_and_in_long_ones(self):
        order = self.group()["models"]
        self.assertGreater(len(order), 1)
        for seconds in (0.3, 1, 3):
            models = self.place_of("End of Launch Crew", "panel")
            self.carry(self.row_in(models, order[0]["name"]),
                       self.row_in(models, order[-1]["name"]), seconds)
            order = order[1:] + order[:1]
            wait_until(f"the first is the last after {seconds} s",
                       lambda order=order: self.group()["models"] == order)

    def test_a_model_is_added_to_a_group_by_mouse(self):
        strip = self.place_of("Top of Launch Crew", "panel")
        models = self.group()["models"]
        self.drag(self.place_of(MODEL, "list item"), strip)
        wait_until("the group has grown", lambda: self.group()["models"][1:] == models)
        self.assertEqual(self.group()["models"][0]["id"], MODEL_ID)

    def start_outsider(self, kind, what):
        """Another program on the display; where its text or file can be taken up."""
        outsider = subprocess.Popen([BUILD + "/tests/show_dragging_board", kind, what], text=True,
                                    env=self.session.environment, stdout=subprocess.PIPE)
        self.addCleanup(outsider.stdout.close)
        self.addCleanup(outsider.wait)
        self.addCleanup(outsider.kill)
        _, _, x, y = outsider.stdout.readline().split()
        window = wait_until("its window", lambda: self.session.windows("^outsider$"))[0]
        self.session.tool("wmctrl", "-i", "-a", window)
        return types.SimpleNamespace(x=int(x) - 2, y=int(y), width=6, height=0)

    def test_text_of_another_program_adds_its_model_to_a_chain(self):
        zone = self.scroll_to(CHAIN)
        self.drag(self.start_outsider("outside", MODEL_ID), zone)
        self.assert_the_model_was_added()

    def test_a_file_of_another_program_is_attached_to_a_group(self):
        button = next(area_of(each) for each in everything(PROGRAM)
                      if each.get_name() == "Attach File / Folder")
        button.height += 4  # into its middle
        path = str(self.session.home / "plan of the launch.txt")
        self.drag(self.start_outsider("files", path), button)
        wait_until("the file is attached", lambda: self.group()["attachedPaths"] == [path])

    def test_a_model_leaves_its_chain_by_being_dragged_to_the_library(self):
        chain = self.scroll_to(CHAIN)
        row = self.row_in(chain, self.before[-1]["name"])
        library = self.place_of("Library", "panel")
        library.height = 60  # its other end lies under the window's edge
        self.drag(row, library)
        wait_until("the chain has shrunk", lambda: self.chain() == self.before[:-1])

    def test_a_bot_is_assigned_to_a_chain_by_mouse(self):
        zone = self.scroll_to("Bots of Coding Chain")
        self.drag(self.place_of("🧭 Planner", "list item"), zone)
        assignments = self.session.support / "chain_bot_assignments.json"
        wait_until("the bot is assigned", lambda: label_of("planner") in json.loads(
            assignments.read_text())["worker"])

    def test_a_bot_is_assigned_to_a_group_by_mouse(self):
        zone = self.place_of("Bots of Launch Crew", "panel")
        self.drag(self.place_of("🔬 Researcher", "list item"), zone)
        groups = self.session.support / "custom_groups.json"
        wait_until("the bot is in the group", lambda: label_of("researcher") in next(
            group for group in json.loads(groups.read_text())
            if group["name"] == "Launch Crew")["assignedBotLabels"])

    def click(self, name, role=None):
        area = self.place_of(name, role)
        self.session.tool("xdotool", "mousemove", area.x + area.width // 2,
                          area.y + area.height // 2, "click", 1)

    def prompt(self):
        return (self.session.support / "PROMPT.md").read_text()

    def test_rows_of_the_edit_menu_work_by_mouse_and_typing_goes_on(self):
        before = self.prompt()
        self.click("Master Prompt Injection", "text")
        for row in ("Select All", "Cut"):
            self.click("Edit", "menu item")
            self.click(row, "menu item")
            wait_until("the menu is gone", lambda row=row: find(PROGRAM, row, "menu item") is None)
        self.session.tool("xdotool", "type", "be kind")
        wait_until("what was typed is saved", lambda: self.prompt() == "be kind")
        for _ in range(2):  # what was typed, and the cut
            self.click("Edit", "menu item")
            self.click("Undo", "menu item")
            wait_until("the menu is gone", lambda: find(PROGRAM, "Undo", "menu item") is None)
        wait_until("all is as it was", lambda: self.prompt() == before)

    def pixels(self, area):
        return subprocess.run(["import", "-window", "root", "-crop",
                               f"{area.width}x{area.height}+{area.x}+{area.y}", "-depth", "8",
                               "rgb:-"], env=self.session.environment, capture_output=True,
                              check=True).stdout

    def test_what_is_scrolled_away_is_painted_nowhere_as_it_changes(self):
        prompt = self.place_of("Master Prompt Injection", "text")
        name = "Objectives of Launch Crew"
        def editor():
            return next(area_of(each) for each in everything(PROGRAM) if each.get_name() == name)
        self.scroll_to("Objectives")
        self.click("Objectives")
        wait_until("the editor", lambda: self.focused_name() == name)
        self.session.tool("xdotool", "mousemove", WHEEL_AT[0], WHEEL_AT[1])
        for _ in range(MOST_STEPS):
            if editor().y < prompt.y + 60:
                break
            self.session.tool("xdotool", "click", "5", "sleep", "0.05")
        before = self.pixels(prompt)
        self.assertTrue(before)
        for letter in "789":  # the next one is saved after the last one was painted
            self.key(letter)
            wait_until("it is saved", lambda letter=letter: letter in self.group()["objectives"])
        self.assertTrue(self.pixels(prompt) == before, "something is painted over the prompt")

    def test_a_window_that_is_hidden_saves_nothing_when_it_comes_back(self):
        choice = self.session.support / ".preferred-provider.json"  # says when it was written
        saved = choice.read_text()
        self.key("ctrl+h")
        wait_until("the window is put aside", lambda: not self.session.windows("^Varnhold$"))
        self.session.tool(self.session.prefix / "bin/varnhold")
        wait_until("the window is back", lambda: self.session.windows("^Varnhold$"))
        wait_until("its page", lambda: find(PROGRAM, "Reset"))
        self.assertEqual(choice.read_text(), saved)

    def press_until(self, key, what, arrived):
        for _ in range(MOST_STEPS):
            if arrived():
                return
            self.key(key)
        self.fail(f"{key} doesn't lead to {what}")

    def focused_name(self):
        here = focused(PROGRAM)
        return here.get_name() if here else ""

    def test_a_model_is_added_to_a_chain_by_keys_alone(self):
        library = json.loads((self.session.support / "model_library.json").read_text())["models"]
        rows = {"Whisper (transcription, free/local)", *(model["name"] for model in library)}
        self.press_until("Tab", "the library", lambda: self.focused_name() in rows)
        self.press_until("Down", MODEL, lambda: self.focused_name() == MODEL)
        self.key("space")
        self.press_until("Tab", CHAIN, lambda: find(PROGRAM, f"{MODEL}: {CHAIN}"))
        self.key("Return")
        self.assert_the_model_was_added()


if __name__ == "__main__":
    if os.getpid() > 1000 or os.environ.get("XDG_RUNTIME_DIR") != "/tmp/runtime":
        sys.exit("Only runs inside tests/system/in-sandbox: it ends processes by their names.")
    BUILD = sys.argv.pop(1)
    unittest.main()
