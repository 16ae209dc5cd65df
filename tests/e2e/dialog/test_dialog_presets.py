"""Presets in the dialog: the row above the panel, its menu and its questions."""

import fcntl
import json
import os
import pathlib
import unittest

import ipp
from dialog_case import RANGES, DialogCase, until
from relay import Holdup
from screen_reader import CHECKED, SENSITIVE
from terminal_case import DEFAULTS, MARGINS, PPD, SMALLER, VALID, each, of_panel

NAME = "Booklet, 5 mm"
BOOKLET = DEFAULTS | {VALID: "On", MARGINS["Top"]: "12"}
ACTS = each("--set", ["Valid=On", "Top=12"])
BEGIN = "Use by Default on This Printer"
WITH_PAGES = "With the settings of the other pages"
GLUE = """\
*OpenGroup: ColorPage/Color
*OpenUI *Glue/Glue: PickOne
*OrderDependency: 15 AnySetup *Glue
*DefaultGlue: None
*Glue None/Off: ""
*Glue Hot/Hot: ""
*Glue Cold/Cold: ""
*CloseUI: *Glue
*CloseGroup: ColorPage
*OpenUI *Duplex/Two-Sided: PickOne
*OrderDependency: 15 AnySetup *Duplex
*DefaultDuplex: None
*Duplex None/Off: ""
*Duplex DuplexNoTumble/Long Edge: ""
*Duplex DuplexTumble/Short Edge: ""
*CloseUI: *Duplex

*OpenGroup: TandemTrim"""
OF_PAGES = ["-o", "sides=two-sided-short-edge Glue=Hot number-up=2 media=A3 orientation-requested=4 OutputOrder=Reverse"]
OF_PAGES += ["-o", "job-priority=80 x-note=preset", "-n", "3"]
EXPECTED = {"Duplex": "DuplexTumble", "Glue": "Hot", "number-up": "2", "PageSize": "A3", "orientation-requested": "4"}
EXPECTED |= {"OutputOrder": "Reverse", "x-note": "preset"}


class DialogPresetsCase(DialogCase):
    def setUp(self):
        super().setUp()
        home = self.temporary_folder()
        self.around = {"XDG_STATE_HOME": str(home / "state"), "XDG_CONFIG_HOME": str(home)}
        self.folder = home / "tandem-trim/presets/TandemTrim"

    def save(self, name, *arguments):
        result = self.trim("-d", "Morva", "--save-preset", name, *arguments, **self.around)
        self.assertEqual(result.returncode, 0, result.stderr)

    def saved(self, name):
        return json.loads((self.folder / f"{name}.json").read_text())

    def shown(self):
        return self.panel_of(self.dialog("-d", "Morva", **self.around))

    def shown_with_preset(self):
        """Shows the dialog and chooses a saved preset."""
        self.save(NAME, *ACTS)
        dialog = self.shown()
        self.pick(dialog, NAME)
        self.wait_for(dialog, NAME)
        return dialog

    def panel_of(self, dialog):
        dialog.page("Tandem Trim")
        dialog.find("check box", "Use Tandem Trim")
        return dialog

    def chosen(self, dialog):
        """The row's text without "Preset: "."""
        (title,) = {node.name.removeprefix("Preset: ") for node in dialog.nodes() if node.name.startswith("Preset: ")}
        return title

    def wait_for(self, dialog, title):
        until(lambda: self.chosen(dialog) == title, f"the preset {title!r}")

    def open_menu(self, dialog):
        dialog.click(dialog.find("push button", "Preset: "))
        dialog.find("menu item", "Save As…")

    def pick(self, dialog, item):
        """Chooses an item of the menu by the keyboard, which skips grey items."""
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

    def answer_by(self, key, dialog):
        dialog.keys(key)
        until(lambda: len(dialog.program.windows()) == 1, "the question to go")


class DialogPresetsTest(DialogPresetsCase):
    def test_a_chosen_preset_is_shown_and_printed(self):
        self.save(NAME, *ACTS)
        self.save("Other", "--set", "Valid=On")
        dialog = self.shown()
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

    def test_a_change_is_shown_and_can_be_saved_or_undone(self):
        dialog = self.shown_with_preset()
        dialog.type("Top Margin", "9")
        self.wait_for(dialog, f"{NAME}, changed")
        self.pick(dialog, "Revert to Preset")
        self.wait_for(dialog, NAME)
        self.assertEqual(dialog.text("Top Margin"), "12")
        dialog.type("Top Margin", "9")
        self.wait_for(dialog, f"{NAME}, changed")
        self.pick(dialog, "Save")
        self.wait_for(dialog, NAME)
        self.assertEqual(self.saved(NAME)["panel"], BOOKLET | {MARGINS["Top"]: "9"})
        dialog.press("Cancel")
        dialog.ends()

    def test_settings_are_saved_under_a_name(self):
        dialog = self.shown()
        dialog.check("Use Tandem Trim")
        dialog.type("Top Margin", "12")
        self.pick(dialog, "Save As…")
        self.name(dialog, "  Plain ")
        self.wait_for(dialog, "Plain")
        self.assertEqual(self.saved("Plain"), {"panel": BOOKLET, "options": {}})
        dialog.press("Cancel")
        dialog.ends()

    def test_a_default_that_the_printer_does_not_allow_is_not_saved(self):
        self.run_command("lpadmin", "-p", "Morva", "-o", "MVTopMargin-default=28")
        dialog = self.shown()
        self.pick(dialog, "Save As…")
        self.name(dialog, "Plain")
        self.wait_for(dialog, "Plain")
        self.assertEqual(set(DEFAULTS) - set(self.saved("Plain")["panel"]), {MARGINS["Top"]})
        dialog.press("Cancel")
        dialog.ends()

    def test_the_dialog_asks_before_replacing_a_preset_and_takes_no_blank_name(self):
        self.save(NAME, *ACTS)
        dialog = self.shown()
        self.pick(dialog, "Save As…")
        until(lambda: dialog.shows("entry", "Name of the preset"), "the question")
        dialog.type("Name of the preset", " ")
        until(lambda: not dialog.find("push button", "Continue").has(SENSITIVE), "the button to be grey")
        self.name(dialog, NAME)
        self.answer(dialog, "Cancel")
        self.assertEqual(self.saved(NAME)["panel"], BOOKLET)
        self.assertEqual(self.chosen(dialog), "None")
        self.pick(dialog, "Save As…")
        self.name(dialog, NAME)
        self.answer(dialog, "Replace")
        self.wait_for(dialog, NAME)
        self.assertEqual(self.saved(NAME)["panel"], DEFAULTS)
        dialog.press("Cancel")
        dialog.ends()

    def test_enter_and_escape_at_a_question_about_a_preset_change_nothing(self):
        dialog = self.shown_with_preset()
        dialog.type("Top Margin", "9")
        self.wait_for(dialog, f"{NAME}, changed")
        for key in ("Return", "Escape"):
            self.pick(dialog, "Delete…")
            dialog.says(f"Delete the preset {NAME}?")
            self.answer_by(key, dialog)
            self.pick(dialog, "Save As…")
            self.name(dialog, NAME)
            dialog.says(f"There is a preset {NAME} already. Replace it?")
            self.answer_by(key, dialog)
        self.assertEqual(self.saved(NAME)["panel"], BOOKLET)
        self.assertEqual(self.chosen(dialog), f"{NAME}, changed")
        dialog.press("Cancel")
        dialog.ends()

    def test_a_preset_that_keeps_its_name_or_whose_new_name_is_given_up_by_escape_stays_as_it_is(self):
        dialog = self.shown_with_preset()
        self.pick(dialog, "Rename…")
        until(lambda: dialog.shows("entry", "Name of the preset"), "the question")
        self.assertEqual(dialog.text("Name of the preset"), NAME)
        self.answer_by("Return", dialog)
        # The menu opens only if no question is open, so each pick() shows that the question before has closed.
        for item in ("Rename…", "Save As…"):
            self.pick(dialog, item)
            until(lambda: dialog.shows("entry", "Name of the preset"), "the question")
            self.assertEqual(dialog.text("Name of the preset"), NAME)
            dialog.type("Name of the preset", "Other")
            self.answer_by("Escape", dialog)
        dialog.check("Use Tandem Trim")
        self.wait_for(dialog, f"{NAME}, changed")
        self.assertEqual([file.name for file in self.folder.glob("*.json")], [f"{NAME}.json"])
        dialog.press("Cancel")
        dialog.ends()

    def test_the_dialog_asks_before_a_renamed_preset_replaces_another(self):
        self.save("Other", "--set", "Valid=On")
        dialog = self.shown_with_preset()
        self.pick(dialog, "Rename…")
        self.assertFalse(dialog.shows("check box", WITH_PAGES))
        self.name(dialog, "Other")
        dialog.says("There is a preset Other already. Replace it?")
        self.answer(dialog, "Cancel")
        self.assertEqual(self.chosen(dialog), NAME)
        self.assertEqual(self.saved("Other")["panel"][MARGINS["Top"]], "5")
        self.pick(dialog, "Rename…")
        self.name(dialog, "Other")
        self.answer(dialog, "Replace")
        self.wait_for(dialog, "Other")
        self.assertEqual([file.name for file in self.folder.glob("*.json")], ["Other.json"])
        self.assertEqual(self.saved("Other")["panel"], BOOKLET)
        dialog.press("Cancel")
        dialog.ends()

    def test_the_dialog_asks_before_replacing_a_preset_that_another_program_saved_at_the_same_time(self):
        dialog = self.shown()
        self.folder.mkdir(parents=True)
        with open(f"{self.folder}.lock", "w") as lock:
            fcntl.flock(lock, fcntl.LOCK_EX)
            self.pick(dialog, "Save As…")
            until(lambda: dialog.shows("entry", "Name of the preset"), "the question")
            dialog.type("Name of the preset", NAME)
            until(lambda: dialog.find("push button", "Continue").has(SENSITIVE), "the button to be live")
            dialog.keys("Return")  # while the dialog waits for the lock, it does not answer on the accessibility bus
            opened = pathlib.Path(f"/proc/{dialog.process.pid}/fd")
            files = lambda: map(os.path.realpath, opened.iterdir())
            until(lambda: os.path.realpath(lock.name) in files(), "the dialog to wait for the lock")
            (self.folder / f"{NAME}.json").write_text(json.dumps({"panel": BOOKLET}))
        dialog.says(f"There is a preset {NAME} already. Replace it?")
        self.answer(dialog, "Cancel")
        self.assertEqual(self.chosen(dialog), "None")
        self.assertEqual(self.saved(NAME), {"panel": BOOKLET})
        dialog.press("Cancel")
        dialog.ends()

    def test_the_dialog_asks_before_saving_a_preset_that_another_program_has_changed(self):
        dialog = self.shown_with_preset()
        dialog.type("Top Margin", "9")
        self.wait_for(dialog, f"{NAME}, changed")
        self.save(NAME, "--set", "Valid=On", "--set", "Top=3")
        for answer, top, title in (("Cancel", "3", f"{NAME}, changed"), ("Replace", "9", NAME)):
            self.pick(dialog, "Save")
            dialog.says(f"The preset {NAME} was changed by another program. Replace it?")
            self.answer(dialog, answer)
            self.wait_for(dialog, title)
            self.assertEqual(self.saved(NAME)["panel"], BOOKLET | {MARGINS["Top"]: top})
        dialog.type("Top Margin", "8")
        self.wait_for(dialog, f"{NAME}, changed")
        self.pick(dialog, "Save")
        self.wait_for(dialog, NAME)
        self.assertEqual(self.saved(NAME)["panel"][MARGINS["Top"]], "8")
        dialog.press("Cancel")
        dialog.ends()

    def go_to_printer(self, dialog, printer, preset):
        """Chooses the printer and waits until this preset is shown."""
        dialog.page("General")
        dialog.select_printer(printer)
        self.panel_of(dialog)
        self.wait_for(dialog, preset)

    def test_renaming_and_deleting_affect_each_printer_where_the_preset_is_chosen(self):
        self.save(NAME, *ACTS)
        self.add_other()
        dialog = self.shown()
        for printer in ("Morva", "Other"):
            self.go_to_printer(dialog, printer, "None")
            self.pick(dialog, NAME)
            self.wait_for(dialog, NAME)
        self.pick(dialog, "Rename…")
        self.name(dialog, "Brochure")
        self.wait_for(dialog, "Brochure")
        self.go_to_printer(dialog, "Morva", "Brochure")
        self.pick(dialog, "Delete…")
        self.answer(dialog, "Delete")
        self.wait_for(dialog, "None")
        self.go_to_printer(dialog, "Other", "None")
        dialog.press("Cancel")
        dialog.ends()

    def test_the_dialog_begins_with_the_preset_on_the_command_line(self):
        self.save(NAME, *ACTS)
        dialog = self.panel_of(self.dialog("-d", "Morva", "--dialog", "--preset", NAME, **self.around))
        self.wait_for(dialog, NAME)
        self.assertEqual(dialog.text("Top Margin"), "12")
        dialog.press("Print")
        self.assertEqual(of_panel(self.printed(dialog).options), BOOKLET)

    def test_the_preset_on_the_command_line_is_for_the_first_printer_only(self):
        self.save(NAME, *ACTS)
        self.add_other()
        dialog = self.panel_of(self.dialog("-d", "Morva", "--dialog", "--preset", NAME, **self.around))
        self.wait_for(dialog, NAME)
        self.go_to_printer(dialog, "Other", "None")
        self.assertEqual(dialog.text("Top Margin"), "5")
        dialog.press("Cancel")
        dialog.ends()

    def test_names_with_any_characters_are_shown_literally(self):
        odd = '_a_b <i>&amp; 100 % "%s" /..'
        self.save(odd, *ACTS)
        dialog = self.shown()
        self.pick(dialog, odd)
        self.wait_for(dialog, odd)
        self.assertEqual(dialog.text("Top Margin"), "12")
        dialog.press("Cancel")
        dialog.ends()

    def test_an_unknown_preset_on_the_command_line_is_reported_before_anything_is_printed(self):
        dialog = self.dialog("-d", "Morva", "--dialog", "--preset", NAME, **self.around)
        dialog.says(f"There is no preset {NAME} for this printer.")
        self.answer(dialog, "Close")
        self.panel_of(dialog)
        self.assertEqual(self.chosen(dialog), "None")
        self.assert_nothing_was_sent()
        dialog.press("Cancel")
        dialog.ends()

    def test_a_preset_on_the_command_line_is_reported_for_a_printer_without_a_panel(self):
        self.add_other(("*APDialogExtension", "*NoDialogExtension"))
        dialog = self.dialog("-d", "Other", "--dialog", "--preset", NAME, **self.around)
        dialog.says(f"There is no preset {NAME} for this printer.")
        self.answer(dialog, "Close")
        dialog.press("Cancel")
        dialog.ends()

    def test_the_help_explains_presets(self):
        dialog = self.shown()
        dialog.press("Help")
        dialog.says('"Preset" keeps settings under a name')
        self.answer(dialog, "Close")
        dialog.press("Cancel")
        dialog.ends()

    def test_a_preset_is_renamed_and_deleted(self):
        dialog = self.shown_with_preset()
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

    def test_the_dialog_can_begin_with_a_preset_on_a_printer(self):
        dialog = self.shown_with_preset()
        self.pick(dialog, "Use by Default on This Printer")
        dialog.press("Cancel")
        dialog.ends()
        dialog = self.shown()
        self.assertEqual(self.chosen(dialog), NAME)
        self.assertEqual(dialog.text("Top Margin"), "12")
        dialog.press("Print")
        self.assertEqual(of_panel(self.printed(dialog).options), BOOKLET)
        dialog = self.shown()
        self.pick(dialog, "Use by Default on This Printer")
        dialog.press("Cancel")
        dialog.ends()
        self.assertEqual(self.chosen(self.shown()), "None")

    def test_settings_from_a_later_source_override_those_from_an_earlier_one(self):
        def begins_with(top, *arguments):
            dialog = self.panel_of(self.dialog("-d", "Morva", *arguments, **self.around))
            until(lambda: dialog.text("Top Margin") == top, f"the margin {top}")
            return dialog

        def ends(dialog):
            dialog.press("Cancel")
            dialog.ends()

        ends(begins_with("5"))
        self.run_command("lpadmin", "-p", "Morva", "-o", "MVTopMargin=6")
        ends(begins_with("6"))
        self.run_command("lpadmin", "-p", "Morva", "-o", "MVTopMargin-default=7")
        ends(begins_with("7"))
        self.run_command("lpoptions", "-p", "Morva", "-o", "MVTopMargin=8")
        dialog = begins_with("8")
        dialog.check("Use Tandem Trim")
        dialog.type("Top Margin", "9")
        dialog.press("Print")
        self.printed(dialog)
        self.save(NAME, *ACTS)
        dialog = begins_with("9")
        self.pick(dialog, NAME)
        self.pick(dialog, BEGIN)
        ends(dialog)
        ends(begins_with("12"))
        dialog = begins_with("4", "-o", "MVTopMargin=4")
        self.pick(dialog, NAME)
        self.wait_for(dialog, NAME)
        self.assertEqual(dialog.text("Top Margin"), "12")
        ends(dialog)

    def test_a_presets_values_that_a_printer_does_not_allow_are_shown_and_not_changed(self):
        self.save(NAME, *ACTS)
        self.add_other(SMALLER)
        dialog = self.panel_of(self.dialog("-d", "Other", **self.around))
        self.pick(dialog, NAME)
        dialog.says("12")
        self.assertEqual(dialog.text("Top Margin"), "12")
        dialog.press("Correct")
        self.wait_for(dialog, f"{NAME}, changed")
        self.assertEqual(dialog.text("Top Margin"), "8")
        self.assertEqual(self.saved(NAME)["panel"], BOOKLET)
        dialog.press("Cancel")
        dialog.ends()

    def test_presets_of_the_administrator_cannot_be_changed(self):
        folder = self.temporary_folder()
        house = folder / "tandem-trim/presets/TandemTrim/House.json"
        house.parent.mkdir(parents=True)
        house.write_text('{"panel": {"MVTandemTrim": "On", "MVTopMargin": "3"}}')
        self.around["XDG_CONFIG_DIRS"] = f"{os.environ['XDG_CONFIG_DIRS']}:{folder}"
        dialog = self.shown()
        self.pick(dialog, "House")
        self.wait_for(dialog, "House")
        dialog.type("Top Margin", "9")
        self.wait_for(dialog, "House, changed")
        self.open_menu(dialog)
        live = {item: dialog.find("menu item", item).has(SENSITIVE) for item in ("Save", "Revert to Preset", "Save As…", "Rename…", "Delete…")}
        self.assertEqual(live, {"Save": False, "Revert to Preset": True, "Save As…": True, "Rename…": False, "Delete…": False})
        dialog.keys("Escape")
        dialog.press("Cancel")
        dialog.ends()

    def test_presets_can_be_chosen_by_the_keyboard(self):
        self.save(NAME, *ACTS)
        dialog = self.shown()
        dialog.keys("Tab", "space")  # from the tab of the page
        dialog.find("menu item", NAME)
        dialog.keys("Return")
        self.wait_for(dialog, NAME)
        until(lambda: not dialog.shows("menu item", NAME), "the menu to close")
        dialog.keys("space")
        begin = dialog.find_live("menu item", BEGIN)
        self.assertFalse(begin.has(CHECKED))
        live = [node.name for node in dialog.nodes() if node.role == "menu item" and node.has(SENSITIVE)]
        dialog.keys(*["Down"] * live.index(BEGIN), "Return")
        until(lambda: not dialog.shows("menu item", BEGIN), "the menu to close")
        dialog.keys("space")
        until(lambda: (item := dialog.look("menu item", BEGIN)) and item.has(CHECKED), "the mark that a screen reader reads")
        dialog.keys("Escape")
        dialog.press("Cancel")
        dialog.ends()
        self.assertEqual(self.chosen(self.shown()), NAME)

    def test_a_folder_that_cannot_be_written_is_reported(self):
        self.folder.parent.parent.parent.mkdir(exist_ok=True)
        (self.folder.parent.parent).write_text("no folder")
        dialog = self.shown()
        self.pick(dialog, "Save As…")
        self.name(dialog, NAME)
        dialog.says("The presets could not be changed.")
        self.answer(dialog, "Close")
        self.assertEqual(self.chosen(dialog), "None")
        dialog.press("Cancel")
        dialog.ends()

    def test_the_users_damaged_preset_is_reported_once_and_the_administrators_is_not(self):
        house = self.temporary_folder()
        mine = self.folder / "Mine.json"
        for file in (mine, house / "tandem-trim/presets/TandemTrim/House.json"):
            file.parent.mkdir(parents=True)
            file.write_text("{")
        self.around["XDG_CONFIG_DIRS"] = f"{os.environ['XDG_CONFIG_DIRS']}:{house}"
        dialog = self.panel(**self.around)
        dialog.says(f"the preset in {mine} cannot be understood; the file is now {mine}.damaged")
        self.answer(dialog, "Close")
        self.panel_of(dialog)
        dialog.check("Use Tandem Trim")
        dialog.type("Top Margin", "9")
        dialog.press("Cancel")
        dialog.ends()
        self.assertEqual(dialog.said.count("cannot be understood"), 1, dialog.said)
        dialog = self.shown()
        self.pick(dialog, "Save As…")
        self.name(dialog, "Plain")
        self.wait_for(dialog, "Plain")
        dialog.press("Cancel")
        dialog.ends()
        self.assertNotIn("cannot be understood", dialog.said)

    def test_a_damaged_preset_is_reported_in_the_users_language(self):
        self.folder.mkdir(parents=True)
        (self.folder / "Mine.json").write_text("{")
        dialog = self.dialog("-d", "Morva", LANG="C.UTF-8", LANGUAGE="de", **self.around)
        dialog.page("Tandem Trim")
        dialog.says("Mine.json ist nicht zu verstehen.")
        self.answer(dialog, "Schließen")


class DialogPresetsOfAllPagesTest(DialogPresetsCase):
    """Presets with the settings of the dialog's other pages."""

    def setUp(self):
        super().setUp()
        self.add_rows("Morva", GLUE)

    def add_rows(self, printer, rows):
        ppd = self.temporary_folder() / "more.ppd"
        ppd.write_text(PPD.read_text().replace("*OpenGroup: TandemTrim", rows, 1))
        self.cups.add_queue(printer, ppd)

    def choose(self, dialog):
        self.pick(dialog, NAME)
        self.wait_for(dialog, NAME)

    def sent(self, dialog):
        """Prints one copy and returns the job's options that are in EXPECTED."""
        dialog.press("Print")
        record = self.printed(dialog)
        self.assertEqual(record.copies, 1)
        return {keyword: value for keyword, value in record.options.items() if keyword in EXPECTED}

    def test_a_preset_is_shown_on_all_pages_and_overrides_saved_options(self):
        self.run_command("lpoptions", "-p", "Morva", "-o", "Glue=Cold", "-o", "x-note=saved")
        self.save(NAME, *ACTS, *OF_PAGES)
        dialog = self.shown()
        self.assertEqual(dialog.chosen("Color", "Glue"), "Cold")
        dialog.page("Tandem Trim")
        self.choose(dialog)
        self.assertEqual(dialog.chosen("Color", "Glue"), "Hot")
        shown = {name: dialog.chosen("Page Setup", name) for name in ("Two-sided", "Pages per side", "Paper size", "Orientation")}
        self.assertEqual(shown, {"Two-sided": "Short Edge (Flip)", "Pages per side": "2", "Paper size": "A3", "Orientation": "Landscape"})
        self.assertEqual(dialog.chosen("Job", "Priority"), "High")
        dialog.page("General")
        self.assertTrue(dialog.is_checked("Reverse"))
        self.assertEqual(self.sent(dialog), EXPECTED)

    def test_a_row_changed_after_choosing_a_preset_counts_and_marks_the_preset_as_changed(self):
        self.save(NAME, *ACTS, *OF_PAGES)
        dialog = self.shown()
        self.choose(dialog)
        dialog.page("Color")
        dialog.choose_by_keys("Glue", "End")
        dialog.page("Tandem Trim")
        self.wait_for(dialog, f"{NAME}, changed")
        self.pick(dialog, "Revert to Preset")
        self.wait_for(dialog, NAME)
        self.assertEqual(dialog.chosen("Color", "Glue"), "Hot")
        dialog.choose_by_keys("Glue", "End")
        dialog.page("Tandem Trim")
        self.pick(dialog, "Save")
        self.wait_for(dialog, NAME)
        self.assertEqual(self.saved(NAME)["options"]["Glue"], "Cold")
        self.assertEqual(self.sent(dialog), EXPECTED | {"Glue": "Cold"})

    def test_the_user_decides_whether_a_preset_includes_the_other_pages(self):
        dialog = self.shown()
        dialog.page("Color")
        dialog.choose_by_keys("Glue", "End")
        dialog.page("General")
        dialog.spin("Copies", "3")
        dialog.page("Tandem Trim")
        for name in ("Panel", "All"):
            self.pick(dialog, "Save As…")
            until(lambda: dialog.shows("entry", "Name of the preset"), "the question")
            if name == "All":
                dialog.click(dialog.find("check box", WITH_PAGES))
                until(lambda: dialog.is_checked(WITH_PAGES), "the check mark")
            self.name(dialog, name)
            self.wait_for(dialog, name)
        self.assertEqual(self.saved("Panel")["options"], {})
        options = self.saved("All")["options"]
        self.assertEqual((options["Glue"], options["Duplex"], options["PageSize"]), ("Cold", "None", "A4"))
        for of_one_job in ("copies", "Collate", "page-ranges", *DEFAULTS):
            self.assertNotIn(of_one_job, options)
        self.pick(dialog, "Save As…")
        until(lambda: dialog.is_checked(WITH_PAGES), "the question")
        dialog.answer("Cancel")
        dialog.press("Cancel")
        dialog.ends()

    def test_a_presets_choice_that_the_printer_does_not_have_is_reported_and_not_sent(self):
        self.save(NAME, *ACTS, "-o", "Glue=Warm x-note=preset")
        dialog = self.shown()
        self.pick(dialog, NAME)
        dialog.says("Glue: this printer does not allow Warm (allowed: Off, Hot, Cold)")
        self.answer(dialog, "Close")
        self.wait_for(dialog, f"{NAME}, changed")
        self.pick(dialog, "Revert to Preset")
        dialog.says("Glue: this printer does not allow Warm")
        self.answer(dialog, "Close")
        self.wait_for(dialog, f"{NAME}, changed")
        self.assertEqual(dialog.chosen("Color", "Glue"), "Off")
        sent = self.sent(dialog)
        self.assertEqual((sent["Glue"], sent["x-note"]), ("None", "preset"))

    def test_a_presets_choice_that_is_not_sent_does_not_override_the_command_line(self):
        self.save(NAME, *ACTS, "-o", "Glue=Tepid")
        dialog = self.panel_of(self.dialog("-d", "Morva", "-o", "Glue=Warm", **self.around))
        self.pick(dialog, NAME)
        dialog.says("Glue: this printer does not allow Tepid")
        self.answer(dialog, "Close")
        self.assertEqual(self.sent(dialog)["Glue"], "Warm")

    def test_a_presets_value_that_its_row_cannot_show_is_sent_until_the_row_is_changed(self):
        self.save(NAME, *ACTS, "-o", "job-priority=70")
        for keys, sent in (((), 70), (("End",), 30)):
            with self.subTest(sent):
                dialog = self.shown()
                self.choose(dialog)
                if keys:
                    dialog.page("Job")
                    dialog.choose_by_keys("Priority", *keys)
                self.sent(dialog)
                asked = [(ipp.URI, "printer-uri", "ipp://localhost/"), (ipp.KEYWORD, "which-jobs", "all")]
                asked.append((ipp.KEYWORD, "requested-attributes", "job-priority"))
                jobs = ipp.ask(self.cups.address, ipp.GET_JOBS, asked)
                self.assertIn([sent], [job["job-priority"] for job in jobs if job])

    def test_cover_sheets_of_a_preset_are_shown_in_their_rows(self):
        for sheets, before, after in (("standard,secret", "Standard", "Secret"), ("confidential", "Confidential", "None")):
            with self.subTest(sheets):
                self.save(NAME, *ACTS, "-o", f"job-sheets={sheets}")
                dialog = self.shown()
                self.choose(dialog)
                self.assertEqual([dialog.chosen("Job", name) for name in ("Before", "After")], [before, after])
                dialog.close()
                (self.folder / f"{NAME}.json").unlink()

    def test_choosing_a_preset_updates_the_picture_of_the_sheet_at_once(self):
        self.save(NAME, *ACTS, "-o", "number-up=2")
        dialog = self.shown()
        dialog.says("Page 1 of 3")
        self.choose(dialog)
        until(lambda: not any("Page 1 of 3" in label for label in dialog.labels()), "lines for two pages on a sheet")

    def test_print_that_waits_for_details_is_cancelled_if_the_preset_to_begin_with_does_not_exist(self):
        with Holdup(self.cups.address, b"printer-defaults") as holdup:
            dialog = self.dialog("-d", "Morva", "--preset", "Nobody", "--dialog", CUPS_SERVER=holdup.address, **self.around)
            dialog.select_printer("Morva")
            dialog.press("Print")
            until(lambda: not dialog.is_live("push button", "Print"), "Print to wait for the details")
            holdup.release()
            dialog.answer("Close")
            until(lambda: dialog.is_live("push button", "Print"), "Print")
            dialog.press("Cancel")
            dialog.ends()
        self.assert_nothing_was_sent()

    def test_typed_page_ranges_stay_when_a_preset_is_chosen(self):
        self.save(NAME, *ACTS, *OF_PAGES)
        dialog = self.shown()
        dialog.page("General")
        dialog.check("Pages:")
        dialog.type(RANGES, "2-x")
        dialog.page("Tandem Trim")
        self.pick(dialog, NAME)
        dialog.page("General")
        self.assertEqual(dialog.text(RANGES), "2-x")
        dialog.press("Cancel")
        dialog.ends()

    def test_a_preset_of_the_panel_alone_leaves_the_rows_and_drops_the_former_presets_hidden_options(self):
        self.save(NAME, *ACTS, *OF_PAGES)
        self.save("Plain", "--set", "Valid=On")
        dialog = self.shown()
        self.choose(dialog)
        self.pick(dialog, "Plain")
        self.wait_for(dialog, "Plain")
        self.assertEqual(dialog.chosen("Color", "Glue"), "Hot")
        sent = self.sent(dialog)
        self.assertEqual(sent["Glue"], "Hot")
        self.assertNotIn("x-note", sent)

    def test_the_command_line_overrides_the_preset_that_the_dialog_begins_with(self):
        self.save(NAME, *ACTS, *OF_PAGES)
        for asked in (["--preset", NAME, "--dialog"], []):
            dialog = self.panel_of(self.dialog("-d", "Morva", *asked, "-o", "Glue=Cold x-note=asked MVTopMargin=4", **self.around))
            if asked:
                self.wait_for(dialog, f"{NAME}, changed")
                self.pick(dialog, "Use by Default on This Printer")
            self.assertEqual(self.chosen(dialog), f"{NAME}, changed")
            self.assertEqual(dialog.text("Top Margin"), "4")
            self.assertEqual(dialog.chosen("Page Setup", "Two-sided"), "Short Edge (Flip)")
            self.assertEqual(self.sent(dialog), EXPECTED | {"Glue": "Cold", "x-note": "asked"})

    def test_choosing_a_printer_again_restores_its_preset(self):
        self.run_command("lpoptions", "-p", "Morva", "-o", "Glue=Cold")
        self.add_rows("Other", GLUE)
        self.save(NAME, *ACTS, *OF_PAGES)
        dialog = self.shown()
        self.choose(dialog)
        dialog.page("General")
        dialog.select_printer("Other")
        dialog.page("Tandem Trim")
        self.wait_for(dialog, "None")
        dialog.page("General")
        dialog.select_printer("Morva")
        dialog.page("Tandem Trim")
        self.wait_for(dialog, NAME)
        self.assertEqual(dialog.chosen("Color", "Glue"), "Hot")
        self.assertEqual(self.sent(dialog), EXPECTED)


if __name__ == "__main__":
    unittest.main()
