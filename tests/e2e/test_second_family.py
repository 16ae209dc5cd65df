"""A printer of another family, with another panel, beside the sample printer on one server."""

import json
import unittest

from terminal_case import BUILD, DEFAULTS, FOLDLINE, FOLDLINE_PPD, SAMPLE, TerminalCase, each, of_panel

FOLDLINE_DEFAULTS = {"LNFold": "None", "LNSheetsPerSet": "1", "LNCover": "Yes", "LNPunch": "None", "LNDryingTime": "0"}
CHANGED = {"LNFold": "Letter", "LNSheetsPerSet": "25", "LNCover": "No", "LNPunch": "TwoHoles", "LNDryingTime": "60"}
ACTS_THAT_CHANGE = ["Fold=Letter", "SheetsPerSet=25", "Cover=No", "Punch=TwoHoles", "DryingTime=60"]


def of_family(options):
    return {keyword: value for keyword, value in options.items() if keyword in FOLDLINE_DEFAULTS}


class SecondFamilyTest(TerminalCase):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.cups.add_queue("Lund", FOLDLINE_PPD)

    def environment(self, **more):
        return super().environment(TANDEM_TRIM_PLUGIN_PATH=f"{BUILD}:{FOLDLINE.parent}") | more

    def options_on(self, printer, *arguments):
        _, (record,) = self.prints("-d", printer, *arguments, SAMPLE)
        return record.options

    def test_the_second_familys_settings_reach_its_filter(self):
        self.assertEqual(of_family(self.options_on("Lund")), FOLDLINE_DEFAULTS)
        self.assertEqual(of_family(self.options_on("Lund", *each("--set", ACTS_THAT_CHANGE))), CHANGED)
        options = [f"{keyword}={value}" for keyword, value in CHANGED.items()]
        self.assertEqual(of_family(self.options_on("Lund", *each("-o", options))), CHANGED)

    def test_both_families_print_side_by_side_and_each_printer_gets_its_own_settings(self):
        self.assertEqual(of_family(self.options_on("Morva")), {})
        self.assertEqual(of_panel(self.options_on("Morva")), DEFAULTS)
        self.assertEqual(of_panel(self.options_on("Lund")), {})

    def test_keywords_are_taken_in_any_case(self):
        self.assertEqual(of_family(self.options_on("Lund", "-o", "lnfold=Half")), FOLDLINE_DEFAULTS | {"LNFold": "Half"})

    def test_a_typed_number_is_clamped_to_the_bounds_in_the_ppd(self):
        result, (record,) = self.prints("-d", "Lund", "--set", "SheetsPerSet=99", SAMPLE)
        self.assertEqual(record.options["LNSheetsPerSet"], "25")
        self.assertIn('SheetsPerSet: "99" was typed, the panel made it 25 (allowed: 1 to 25)', result.stderr)

    def test_values_that_the_printer_does_not_allow_are_refused(self):
        for option, allowed in {
            "LNSheetsPerSet=26": "1 to 25",
            "LNSheetsPerSet=0": "1 to 25",
            "LNDryingTime=61": "0 to 60",
            "LNFold=Twice": "None, Half, Letter",
            "LNCover=On": "Yes, No",
        }.items():
            with self.subTest(option):
                self.refuses("-d", "Lund", "-o", option, SAMPLE, words=[option, f"(allowed: {allowed})"])

    def test_names_that_only_the_other_family_has_are_refused(self):
        self.refuses("-d", "Lund", "--set", "Top=5", SAMPLE, status=2, words=["Fold, SheetsPerSet, Cover, Punch, DryingTime"])
        self.refuses("-d", "Morva", "--set", "Fold=Half", SAMPLE, status=2, words=["the panel has no such setting"])
        self.refuses("-d", "Lund", "--restore-defaults", SAMPLE, status=2, words=["the panel has no such button"])

    def test_a_printer_without_a_panel_gets_neither_familys_settings(self):
        plain = self.temporary_folder() / "plain.ppd"
        lines = FOLDLINE_PPD.read_text().splitlines(keepends=True)
        plain.write_text("".join(line for line in lines if not line.startswith("*APDialogExtension")))
        self.cups.add_queue("Plain", plain)
        self.addCleanup(self.cups.remove, "Plain")
        options = self.options_on("Plain", "-o", "LNFold=Half", "-o", "MVTopMargin=7", "-o", "x-note=yes")
        self.assertEqual((of_family(options), of_panel(options), options["x-note"]), ({}, {}, "yes"))

    def test_a_queue_without_a_ppd_gets_the_panel_that_the_user_names(self):
        self.cups.add_queue("Bare")
        self.addCleanup(self.cups.remove, "Bare")
        result = self.trim("-d", "Bare", "--summary")
        self.assertIn("no panel or more than one is installed", result.stderr)
        result = self.trim("-d", "Bare", "--plugin", FOLDLINE, "--summary")
        self.assertIn("Sheets per set: 1 sheets", result.stdout)

    def test_json_has_the_second_familys_limits_and_summary(self):
        report = json.loads(self.trim("-d", "Lund", "--json").stdout)
        self.assertEqual(report["settings"], FOLDLINE_DEFAULTS)
        self.assertEqual(report["limits"]["SheetsPerSet"], {"keyword": "LNSheetsPerSet", "min": 1, "max": 25})
        self.assertEqual(report["limits"]["Punch"], {"keyword": "LNPunch", "choices": ["None", "TwoHoles", "FourHoles"]})
        self.assertEqual([row["title"] for row in report["summary"]], ["Fold", "Sheets per set", "Cover sheet", "Punch", "Drying time"])

    def test_the_texts_come_from_the_second_familys_bundle(self):
        summary = self.trim("-d", "Lund", "--summary", LANGUAGE="de").stdout
        self.assertEqual(
            summary.splitlines(),
            ["Falz: Keine", "Blätter je Satz: 1 Blätter", "Deckblatt: Ja", "Lochung: Keine", "Trockenzeit: 0 s"],
        )


if __name__ == "__main__":
    unittest.main()
