"""Presets in the dialog: the row above the panel, its menu and its questions."""

import json
import os
import unittest

from dialog_case import DialogCase, until
from screen_reader import CHECKED, SENSITIVE
from terminal_case import DEFAULTS, MARGINS, SMALLER, VALID, each, of_panel

NAME = "Booklet, 5 mm"
BOOKLET = DEFAULTS | {VALID: "On", MARGINS["Top"]: "12"}
ACTS = each("--set", ["Valid=On", "Top=12"])


class DialogPresetsTest(DialogCase):
    def setUp(self):
        super().setUp()
        home = self.temporary_folder()
        self.around = {"XDG_STATE_HOME": str(home / "state"), "XDG_CONFIG_HOME": str(home)}
        self.folder = home / "tandem-trim/presets/TandemTrim"

    def keep(self, name, *arguments):
        result = self.trim("-d", "Morva", "--save-preset", name, *arguments, **self.around)
        self.assertEqual(result.returncode, 0, result.stderr)

    def kept(self, name):
        return json.loads((self.folder / f"{name}.json").read_text())

    def live(self):
        return self.live_panel_of(self.dialog("-d", "Morva", **self.around))

    def live_panel_of(self, dialog):
        dialog.page("Tandem Trim")
        dialog.find("check box", "Use Tandem Trim")
        return dialog

    def chosen(self, dialog):
        """What the row says."""
        (title,) = {node.name.removeprefix("Preset: ") for node in dialog.nodes() if node.name.startswith("Preset: ")}
        return title

    def wait_for(self, dialog, title):
        until(lambda: self.chosen(dialog) == title, f"the preset {title!r}")

    def open_menu(self, dialog):
        dialog.click(dialog.find("push button", "Preset: "))
        dialog.find("menu item", "Save As…")

    def pick(self, dialog, item):
        """Goes to the item of the menu by the keyboard, which passes over what is grey."""
        self.open_menu(dialog)
        live = [node.name for node in dialog.nodes() if node.role == "menu item" and node.has(SENSITIVE)]
        dialog.keys(*["Down"] * live.index(item), "Return")
        until(lambda: not dialog.shows("menu item", item), "the menu to close")

    def name(self, dialog, name):
        """Answers the question for a name."""
        until(lambda: dialog.shows("entry", "Name of the preset"), "the question")
        dialog.type("Name of the preset", name)
        dialog.answer("Continue")
        until(lambda: not dialog.shows("entry", "Name of the preset"), "the question to go")

    def answer(self, dialog, title):
        dialog.answer(title)
        until(lambda: len(dialog.program.windows()) == 1, "the question to go")

    def test_a_preset_that_is_chosen_is_shown_and_printed(self):
        self.keep(NAME, *ACTS)
        self.keep("Other", "--set", "Valid=On")
        dialog = self.live()
        self.assertEqual(self.chosen(dialog), "None")
        self.pick(dialog, NAME)
        self.wait_for(dialog, NAME)
        self.assertEqual(dialog.text("Top Margin"), "12")
        self.assertTrue(dialog.is_checked("Use Tandem Trim"))
        self.open_menu(dialog)
        self.assertEqual([dialog.find("menu item", name).has(CHECKED) for name in (NAME, "Other")], [True, False])
        dialog.keys("Escape")
        dialog.press("Print")
        self.assertEqual(of_panel(self.printed(dialog).options), BOOKLET)

    def test_a_change_is_shown_and_can_be_saved_or_taken_back(self):
        self.keep(NAME, *ACTS)
        dialog = self.live()
        self.pick(dialog, NAME)
        self.wait_for(dialog, NAME)
        dialog.type("Top Margin", "9")
        self.wait_for(dialog, f"{NAME}, changed")
        self.pick(dialog, "Back to Preset")
        self.wait_for(dialog, NAME)
        self.assertEqual(dialog.text("Top Margin"), "12")
        dialog.type("Top Margin", "9")
        self.wait_for(dialog, f"{NAME}, changed")
        self.pick(dialog, "Save")
        self.wait_for(dialog, NAME)
        self.assertEqual(self.kept(NAME)["panel"], BOOKLET | {MARGINS["Top"]: "9"})
        dialog.press("Cancel")
        dialog.ends()

    def test_settings_are_saved_under_a_name(self):
        dialog = self.live()
        dialog.check("Use Tandem Trim")
        dialog.type("Top Margin", "12")
        self.pick(dialog, "Save As…")
        self.name(dialog, "Plain")
        self.wait_for(dialog, "Plain")
        self.assertEqual(self.kept("Plain"), {"panel": BOOKLET, "options": {}})
        dialog.press("Cancel")
        dialog.ends()

    def test_a_name_that_is_taken_is_asked_about_and_one_that_is_none_cannot_be_given(self):
        self.keep(NAME, *ACTS)
        dialog = self.live()
        self.pick(dialog, "Save As…")
        until(lambda: dialog.shows("entry", "Name of the preset"), "the question")
        dialog.type("Name of the preset", " ")
        until(lambda: not dialog.find("push button", "Continue").has(SENSITIVE), "the button to be grey")
        self.name(dialog, NAME)
        self.answer(dialog, "Cancel")
        self.assertEqual(self.kept(NAME)["panel"], BOOKLET)
        self.assertEqual(self.chosen(dialog), "None")
        self.pick(dialog, "Save As…")
        self.name(dialog, NAME)
        self.answer(dialog, "Replace")
        self.wait_for(dialog, NAME)
        self.assertEqual(self.kept(NAME)["panel"], DEFAULTS)
        dialog.press("Cancel")
        dialog.ends()

    def test_a_preset_is_renamed_and_deleted(self):
        self.keep(NAME, *ACTS)
        dialog = self.live()
        self.pick(dialog, NAME)
        self.wait_for(dialog, NAME)
        self.pick(dialog, "Rename…")
        self.name(dialog, "Brochure")
        self.wait_for(dialog, "Brochure")
        self.assertEqual([file.name for file in self.folder.glob("*.json")], ["Brochure.json"])
        self.pick(dialog, "Delete…")
        self.answer(dialog, "Cancel")
        self.assertEqual(self.chosen(dialog), "Brochure")
        self.pick(dialog, "Delete…")
        self.answer(dialog, "Delete")
        self.wait_for(dialog, "None")
        self.assertEqual(list(self.folder.glob("*.json")), [])
        self.assertEqual(dialog.text("Top Margin"), "12")
        dialog.press("Cancel")
        dialog.ends()

    def test_a_printer_can_begin_with_a_preset(self):
        self.keep(NAME, *ACTS)
        dialog = self.live()
        self.pick(dialog, NAME)
        self.wait_for(dialog, NAME)
        self.pick(dialog, "Begin with It on This Printer")
        dialog.press("Cancel")
        dialog.ends()
        dialog = self.live()
        self.assertEqual(self.chosen(dialog), NAME)
        self.assertEqual(dialog.text("Top Margin"), "12")
        dialog.press("Print")
        self.assertEqual(of_panel(self.printed(dialog).options), BOOKLET)
        dialog = self.live()
        self.pick(dialog, "Begin with It on This Printer")
        dialog.press("Cancel")
        dialog.ends()
        self.assertEqual(self.chosen(self.live()), "None")

    def test_values_that_a_printer_does_not_allow_are_shown_and_not_changed(self):
        self.keep(NAME, *ACTS)
        self.add_other(SMALLER)
        dialog = self.live_panel_of(self.dialog("-d", "Other", **self.around))
        self.pick(dialog, NAME)
        dialog.says("12")
        self.assertEqual(dialog.text("Top Margin"), "12")
        dialog.press("Correct")
        self.wait_for(dialog, f"{NAME}, changed")
        self.assertEqual(dialog.text("Top Margin"), "8")
        self.assertEqual(self.kept(NAME)["panel"], BOOKLET)
        dialog.press("Cancel")
        dialog.ends()

    def test_presets_of_the_administrator_cannot_be_changed(self):
        folder = self.temporary_folder()
        house = folder / "tandem-trim/presets/TandemTrim/House.json"
        house.parent.mkdir(parents=True)
        house.write_text('{"panel": {"MVTandemTrim": "On", "MVTopMargin": "3"}}')
        self.around["XDG_CONFIG_DIRS"] = f"{os.environ['XDG_CONFIG_DIRS']}:{folder}"
        dialog = self.live()
        self.pick(dialog, "House")
        self.wait_for(dialog, "House")
        dialog.type("Top Margin", "9")
        self.wait_for(dialog, "House, changed")
        self.open_menu(dialog)
        live = {item: dialog.find("menu item", item).has(SENSITIVE) for item in ("Save", "Back to Preset", "Save As…", "Rename…", "Delete…")}
        self.assertEqual(live, {"Save": False, "Back to Preset": True, "Save As…": True, "Rename…": False, "Delete…": False})
        dialog.keys("Escape")
        dialog.press("Cancel")
        dialog.ends()

    def test_presets_are_used_by_the_keyboard(self):
        self.keep(NAME, *ACTS)
        dialog = self.live()
        dialog.keys("Tab", "space")  # from the tab of the page
        dialog.find("menu item", NAME)
        dialog.keys("Return")
        self.wait_for(dialog, NAME)
        dialog.press("Cancel")
        dialog.ends()

    def test_a_folder_that_cannot_be_written_is_told(self):
        self.folder.parent.parent.parent.mkdir(exist_ok=True)
        (self.folder.parent.parent).write_text("no folder")
        dialog = self.live()
        self.pick(dialog, "Save As…")
        self.name(dialog, NAME)
        dialog.says("The presets could not be changed.")
        self.answer(dialog, "Close")
        self.assertEqual(self.chosen(dialog), "None")
        dialog.press("Cancel")
        dialog.ends()


if __name__ == "__main__":
    unittest.main()
