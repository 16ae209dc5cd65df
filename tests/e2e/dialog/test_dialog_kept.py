"""The settings kept for each printer, which the dialog restores when the user chooses the printer in the list."""

import unittest

from dialog_case import DialogCase, until
from terminal_case import DEFAULTS, MARGINS, SMALLER, VALID, of_panel

OPTIONS_OF_OTHER = ("-o", f"{VALID}=On", "-o", f"{MARGINS['Top']}=3", "-o", "number-up=4", "-o", "OutputOrder=Reverse", "-o", "PageSize=A3")


class DialogKeptTest(DialogCase):
    def setUp(self):
        super().setUp()
        self.state = {"XDG_STATE_HOME": str(self.temporary_folder())}

    def choose(self, dialog, printer, limit):
        dialog.page("General")
        dialog.select_printer(printer)
        self.see_limit(dialog, limit)

    def top(self, dialog):
        dialog.page("Tandem Trim")
        return dialog.text("Top Margin")

    def prints_on(self, printer, *arguments):
        """Prints from the dialog and returns the options that the printer got."""
        dialog = self.dialog("-d", printer, *arguments, **self.state)
        dialog.wait_for_tab("Tandem Trim")
        dialog.press("Print")
        return self.printed(dialog, printer.partition("/")[0]).options

    def test_choosing_a_printer_restores_its_saved_settings(self):
        self.add_other(SMALLER)
        self.run_command("lpoptions", "-p", "Other", "-o", f"{VALID}=On", "-o", f"{MARGINS['Top']}=7", "-o", "OutputOrder=Reverse", "-o", "PageSize=A3")
        dialog = self.dialog("-d", "Morva", **self.state)
        self.see_limit(dialog, 20)
        self.choose(dialog, "Other", 8)
        self.assertEqual(self.top(dialog), "7")
        dialog.press("Print")
        options = self.printed(dialog, "Other").options
        self.assertEqual(of_panel(options), DEFAULTS | {VALID: "On", MARGINS["Top"]: "7"})
        self.assertEqual((options.get("OutputOrder"), options.get("PageSize")), ("Reverse", "A3"))

    def test_choosing_a_printer_restores_the_settings_of_its_own_last_job(self):
        self.add_other(SMALLER)
        self.prints_on("Other", *OPTIONS_OF_OTHER)
        self.prints_on("Morva", "-o", f"{MARGINS['Top']}=12")
        dialog = self.dialog("-d", "Morva", **self.state)
        self.see_limit(dialog, 20)
        self.choose(dialog, "Other", 8)
        self.assertEqual(self.top(dialog), "3")
        dialog.press("Print")
        options = self.printed(dialog, "Other").options
        self.assertEqual(of_panel(options), DEFAULTS | {VALID: "On", MARGINS["Top"]: "3"})
        self.assertEqual([options.get(keyword) for keyword in ("number-up", "OutputOrder", "PageSize")], ["4", "Reverse", "A3"])
        self.assertEqual(self.prints_on("Other")[MARGINS["Top"]], "3")
        options = self.prints_on("Morva")
        self.assertEqual(of_panel(options), DEFAULTS | {MARGINS["Top"]: "12"})
        self.assertEqual([options.get(keyword) for keyword in ("number-up", "OutputOrder", "PageSize")], [None] * 3)

    def test_choosing_a_printer_restores_settings_that_the_dialog_saved_for_all_jobs(self):
        self.add_other(SMALLER)
        dialog = self.dialog("-d", "Other", XDG_STATE_HOME=str(self.temporary_folder()))
        dialog.page("Tandem Trim")
        dialog.check("Use Tandem Trim")
        dialog.type("Top Margin", "2")
        dialog.check("Use for all my jobs")
        dialog.press("Print")
        self.printed(dialog, "Other")
        dialog = self.dialog("-d", "Morva", **self.state)
        self.see_limit(dialog, 20)
        self.choose(dialog, "Other", 8)
        self.assertEqual(self.top(dialog), "2")

    def test_choosing_a_printer_again_restores_what_the_user_set_for_it(self):
        self.add_other(SMALLER)
        dialog = self.live_panel(**self.state)
        dialog.type("Top Margin", "14")
        dialog.page("Page Setup")
        dialog.choose_by_keys("Pages per side", "Down")
        dialog.choose_by_keys("Paper size", "Down")
        self.choose(dialog, "Other", 8)
        self.assertEqual(self.top(dialog), "5")
        dialog.check("Use Tandem Trim")
        dialog.type("Top Margin", "6")
        dialog.page("General")
        dialog.check("Reverse")
        dialog.page("Page Setup")
        dialog.choose_by_keys("Pages per side", "Home")
        dialog.choose_by_keys("Paper size", "Up")
        self.choose(dialog, "Morva", 20)
        self.assertEqual(self.top(dialog), "14")
        dialog.page("General")
        self.assertFalse(dialog.is_checked("Reverse"))
        dialog.press("Print")
        options = self.printed(dialog).options
        self.assertEqual([options.get(keyword) for keyword in (MARGINS["Top"], "number-up", "PageSize")], ["14", "2", "A3"])

    def test_copies_and_pages_do_not_depend_on_the_chosen_printer(self):
        self.add_other(SMALLER)
        self.prints_on("Other", "-n", "2", "-o", "page-set=odd")
        dialog = self.dialog("-d", "Morva", **self.state)
        self.see_limit(dialog, 20)
        dialog.spin("Copies", "3")
        self.choose(dialog, "Other", 8)
        dialog.press("Print")
        record = self.printed(dialog, "Other")
        self.assertEqual((record.copies, record.options.get("page-set")), (3, None))

    def test_options_of_the_command_line_apply_to_every_printer(self):
        self.add_other(SMALLER)
        self.prints_on("Other", *OPTIONS_OF_OTHER)
        asked = ("-o", f"{MARGINS['Top']}=5", "-o", "number-up=2", "-o", "OutputOrder=Normal", "-o", "PageSize=A5")
        dialog = self.dialog("-d", "Morva", *asked, **self.state)
        self.see_limit(dialog, 20)
        self.choose(dialog, "Other", 8)
        dialog.press("Print")
        options = self.printed(dialog, "Other").options
        self.assertEqual([options.get(keyword) for keyword in (MARGINS["Top"], "number-up", "OutputOrder", "PageSize")], ["5", "2", None, "A5"])

    def test_the_next_job_does_not_start_with_the_last_ones_copies_and_pages(self):
        last = self.prints_on("Morva", "-n", "3", "-o", "page-set=odd collate=false number-up=2")
        self.assertEqual(last.get("page-set"), "odd")
        dialog = self.dialog("-d", "Morva", **self.state)
        dialog.wait_for_tab("Tandem Trim")
        until(lambda: dialog.is_live("spin button", "Copies"), "the printer")
        dialog.press("Print")
        record = self.printed(dialog)
        kept = [record.options.get(keyword) for keyword in ("page-set", "Collate", "number-up")]
        self.assertEqual((record.copies, kept), (1, [None, None, "2"]))

    def test_an_instance_of_a_printer_has_its_own_last_job(self):
        self.run_command("lpoptions", "-p", "Morva/draft", "-o", f"{VALID}=On", "-o", f"{MARGINS['Top']}=7")
        self.prints_on("Morva", "-o", f"{MARGINS['Top']}=9")
        dialog = self.dialog("-d", "Morva/draft", **self.state)
        self.assertEqual(self.top(dialog), "7")
        dialog.type("Top Margin", "11")
        dialog.press("Print")
        self.assertEqual(self.printed(dialog).options[MARGINS["Top"]], "11")
        self.assertEqual(self.prints_on("Morva")[MARGINS["Top"]], "9")
        self.assertEqual(self.prints_on("Morva/draft")[MARGINS["Top"]], "11")

    def test_choosing_an_instances_printer_again_restores_the_instances_settings(self):
        self.add_other(SMALLER)
        self.run_command("lpoptions", "-p", "Morva/draft", "-o", f"{VALID}=On", "-o", f"{MARGINS['Top']}=7", "-o", "x-note=draft")
        dialog = self.dialog("-d", "Morva/draft", **self.state)
        self.see_limit(dialog, 20)
        self.choose(dialog, "Other", 8)
        self.choose(dialog, "Morva", 20)
        dialog.press("Print")
        options = self.printed(dialog).options
        self.assertEqual((options[MARGINS["Top"]], options.get("x-note")), ("7", "draft"))

    def test_an_instance_that_is_the_default_printer_has_its_own_settings(self):
        self.run_command("lpoptions", "-p", "Morva/draft", "-o", f"{VALID}=On", "-o", f"{MARGINS['Top']}=7")
        self.run_command("lpoptions", "-d", "Morva/draft")
        dialog = self.dialog(**self.state)
        self.assertEqual(self.top(dialog), "7")
        dialog.type("Top Margin", "11")
        dialog.press("Print")
        self.printed(dialog)
        self.assertEqual(self.prints_on("Morva")[MARGINS["Top"]], "5")
        self.assertEqual(self.prints_on("Morva/draft")[MARGINS["Top"]], "11")


if __name__ == "__main__":
    unittest.main()
