"""The dialog for a printer of another family, with another panel, beside the sample printer on one server."""

import unittest

from dialog_case import DialogCase
from terminal_case import BUILD, DEFAULTS, FOLDLINE, FOLDLINE_PPD, VALID, of_panel

FOLDLINE_DEFAULTS = {"LNFold": "None", "LNSheetsPerSet": "1", "LNCover": "Yes", "LNPunch": "None", "LNDryingTime": "0"}


def of_family(options):
    return {keyword: value for keyword, value in options.items() if keyword in FOLDLINE_DEFAULTS}


class SecondFamilyDialogTest(DialogCase):
    def setUp(self):
        super().setUp()
        self.cups.add_queue("Lund", FOLDLINE_PPD)

    def environment(self, **more):
        return super().environment(TANDEM_TRIM_PLUGIN_PATH=f"{BUILD}:{FOLDLINE.parent}") | more

    def test_the_second_familys_settings_reach_its_filter(self):
        dialog = self.dialog("-d", "Lund")
        dialog.page("Foldline")
        dialog.check("Cover sheet")
        dialog.spin("Sheets per set", "12")
        dialog.press("Print")
        options = self.printed(dialog, "Lund").options
        self.assertEqual(of_family(options), FOLDLINE_DEFAULTS | {"LNCover": "No", "LNSheetsPerSet": "12"})
        self.assertEqual(of_panel(options), {})

    def test_each_setting_of_the_second_family_is_shown_only_once(self):
        dialog = self.dialog("-d", "Lund")
        dialog.page("Foldline")
        dialog.find("check box", "Cover sheet")
        switches = [node.name for node in dialog.nodes() if node.role == "check box" and node.name.startswith("Cover sheet")]
        self.assertEqual(switches, ["Cover sheet"])
        # GTK would add a colon to its title.
        self.assertEqual([label for label in dialog.labels() if label in ("Fold", "Fold:")], ["Fold"])

    def test_a_job_has_the_panels_settings_even_if_its_page_was_never_shown(self):
        dialog = self.dialog("-d", "Lund", "-o", "LNFold=Half")
        dialog.press("Print")
        self.assertEqual(of_family(self.printed(dialog, "Lund").options), FOLDLINE_DEFAULTS | {"LNFold": "Half"})

    def test_the_chosen_printers_family_decides_which_page_is_shown(self):
        dialog = self.dialog("-d", "Lund")
        dialog.page("Foldline")
        dialog.find("check box", "Cover sheet")
        dialog.page("General")
        dialog.select_printer("Morva")
        dialog.page("Tandem Trim")
        dialog.check("Use Tandem Trim")
        dialog.press("Print")
        options = self.printed(dialog).options
        self.assertEqual(of_family(options), {})
        self.assertEqual(of_panel(options), DEFAULTS | {VALID: "On"})

    def test_print_asks_about_values_that_the_printer_does_not_allow(self):
        dialog = self.dialog("-d", "Lund", "-o", "LNDryingTime=61")
        dialog.press("Print")
        dialog.says("Drying time")
        dialog.answer("Correct")
        self.assertEqual(self.printed(dialog, "Lund").options["LNDryingTime"], "60")

    def test_texts_and_help_come_from_the_second_familys_bundle(self):
        dialog = self.dialog("-d", "Lund", LANGUAGE="de")
        dialog.page("Falzlinie")
        dialog.find("check box", "Deckblatt")
        dialog.press("Hilfe")
        dialog.says("bis die Tinte trocken ist")


if __name__ == "__main__":
    unittest.main()
