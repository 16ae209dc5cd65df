"""The dialog at a printer of another family, with a panel of its own, beside the sample printer on one server."""

import unittest

from dialog_case import DialogCase
from terminal_case import BUILD, DEFAULTS, FOLDLINE, FOLDLINE_PPD, VALID, of_panel

USUAL = {"LNFold": "None", "LNSheetsPerSet": "1", "LNCover": "Yes", "LNPunch": "None", "LNDryingTime": "0"}


def of_family(options):
    return {keyword: value for keyword, value in options.items() if keyword in USUAL}


class SecondFamilyDialogTest(DialogCase):
    def setUp(self):
        super().setUp()
        self.cups.add_queue("Lund", FOLDLINE_PPD)

    def environment(self, **more):
        return super().environment(TANDEM_TRIM_PLUGIN_PATH=f"{BUILD}:{FOLDLINE.parent}") | more

    def test_its_settings_reach_its_filter(self):
        dialog = self.dialog("-d", "Lund")
        dialog.page("Foldline")
        dialog.check("Cover sheet")
        dialog.spin("Sheets per set", "12")
        dialog.press("Print")
        options = self.printed(dialog, "Lund").options
        self.assertEqual(of_family(options), USUAL | {"LNCover": "No", "LNSheetsPerSet": "12"})
        self.assertEqual(of_panel(options), {})

    def test_each_of_its_settings_exists_once(self):
        dialog = self.dialog("-d", "Lund")
        dialog.page("Foldline")
        dialog.find("check box", "Cover sheet")
        for role, name in (("check box", "Cover sheet"), ("combo box", "Fold")):
            self.assertEqual([node.role for node in dialog.nodes() if node.role == role and node.name == name], [role])

    def test_a_page_that_nobody_opens_costs_its_printer_no_setting(self):
        dialog = self.dialog("-d", "Lund", "-o", "LNFold=Half")
        dialog.press("Print")
        self.assertEqual(of_family(self.printed(dialog, "Lund").options), USUAL | {"LNFold": "Half"})

    def test_the_page_is_that_of_the_chosen_printers_family(self):
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

    def test_values_that_it_does_not_allow_are_asked_about(self):
        dialog = self.dialog("-d", "Lund", "-o", "LNDryingTime=61")
        dialog.press("Print")
        dialog.says("Drying time")
        dialog.answer("Correct")
        self.assertEqual(self.printed(dialog, "Lund").options["LNDryingTime"], "60")

    def test_its_texts_and_its_help_are_those_of_its_bundle(self):
        dialog = self.dialog("-d", "Lund", LANGUAGE="de")
        dialog.page("Falzlinie")
        dialog.find("check box", "Deckblatt")
        dialog.press("Hilfe")
        dialog.says("bis die Tinte trocken ist")


if __name__ == "__main__":
    unittest.main()
