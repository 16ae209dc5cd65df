"""Printers other than the sample, and values that a printer does not allow."""

import subprocess
import unittest

from terminal_case import (
    CHANGED,
    DEFAULTS,
    DIRECTION,
    LARGEST,
    MARGINS,
    POSITION,
    PPD,
    SAMPLE,
    VALID,
    TerminalCase,
    each,
    of_panel,
)

OWN_LIMIT = 10  # the panel's limit of a margin, used where no PPD has one


def ppd_without(folder, attribute):
    """A copy of the sample PPD without the lines of this attribute."""
    lines = PPD.read_bytes().splitlines(keepends=True)
    copy = folder / f"without{attribute}.ppd"
    copy.write_bytes(b"".join(line for line in lines if not line.startswith(b"*" + attribute.encode())))
    return copy


class PrintersTest(TerminalCase):
    def add_queue(self, name, ppd=None):
        self.cups.add_queue(name, ppd)
        self.addCleanup(self.cups.remove, name)

    def test_a_printer_without_the_panel_never_gets_the_panels_options(self):
        self.add_queue("Plain", ppd_without(self.temporary_folder(), "APDialogExtension"))
        _, (record,) = self.prints("-d", "Plain", SAMPLE)
        self.assertEqual(of_panel(record.options), {})
        options = " ".join(f"{keyword}={value}" for keyword, value in CHANGED.items())
        result, (record,) = self.prints("-d", "Plain", "-o", options, "-o", "PageSize=A5", SAMPLE)
        self.assertEqual(of_panel(record.options), {})
        self.assertEqual(record.options["PageSize"], "A5")
        for keyword in CHANGED:
            self.assertIn(keyword, result.stderr)

    def test_a_printer_without_the_panel_does_not_get_the_panels_options_from_lpoptions_either(self):
        self.add_queue("Plain", ppd_without(self.temporary_folder(), "APDialogExtension"))
        save = ["lpoptions", "-p", "Plain", "-o", "MVTopMargin=7", "-o", "x-note=yes"]
        subprocess.run(save, env=self.environment(), capture_output=True, check=True)
        _, (record,) = self.prints("-d", "Plain", SAMPLE)
        self.assertEqual(of_panel(record.options), {})
        self.assertEqual(record.options["x-note"], "yes")

    def test_a_printer_without_the_panel_has_nothing_to_set(self):
        self.add_queue("Plain", ppd_without(self.temporary_folder(), "APDialogExtension"))
        for act in (["--set", "Valid=On"], ["--restore-defaults"]):
            self.refuses("-d", "Plain", *act, SAMPLE, words=["Plain", "no panel"])

    def add_narrow_queue(self):
        """Adds the printer Narrow, some of whose limits are below the panel's defaults and its own PPD's defaults."""
        text = PPD.read_text()
        for side, limit in (("Top", 3), ("Bottom", 5), ("Left", 3)):
            before = f'*MVMaxTandemTrimMargin{side}: "{LARGEST[side]}"'
            self.assertIn(before, text)
            text = text.replace(before, f'*MVMaxTandemTrimMargin{side}: "{limit}"')
        ppd = self.temporary_folder() / "narrow.ppd"
        ppd.write_text(text)
        self.add_queue("Narrow", ppd)

    def sent_to_narrow(self, *arguments):
        result, (record,) = self.prints("-d", "Narrow", *arguments, SAMPLE)
        return of_panel(record.options), result.stderr

    def test_defaults_beyond_the_limits_are_sent_unchanged_while_the_panel_is_off_or_by_force(self):
        self.add_narrow_queue()
        self.assertEqual(self.sent_to_narrow(), (DEFAULTS, ""))
        self.assertEqual(self.sent_to_narrow("--force", "--set", "Valid=On"), (DEFAULTS | {VALID: "On"}, ""))

    def test_defaults_beyond_the_limits_are_corrected_with_a_note_while_the_panel_is_on(self):
        self.add_narrow_queue()
        expected = DEFAULTS | {VALID: "On", MARGINS["Top"]: "3", MARGINS["Left"]: "3"}
        for acts in (["Valid=On"], ["Valid=On", "Position=Center"]):
            options, said = self.sent_to_narrow(*each("--set", acts))
            self.assertEqual(options, expected)
            for side in ("Top", "Left"):
                self.assertRegex(said, rf"{MARGINS[side]}: the default 5 is not allowed .*0 to 3.*3 is used instead")
        options, said = self.sent_to_narrow("--set", "Valid=On", "--set", "Top=2", "--restore-defaults")
        self.assertEqual(options, expected)
        self.assertEqual(said.count("3 is used instead"), 2)

    def test_a_users_value_beyond_the_limits_is_refused_even_if_it_equals_the_default(self):
        self.add_narrow_queue()
        for switch in ("On", "Off"):
            self.refuses("-d", "Narrow", "-o", f"{VALID}={switch} MVTopMargin=5", SAMPLE, words=["MVTopMargin=5", "0 to 3"])
        save = ["lpoptions", "-p", "Narrow", "-o", "MVTopMargin=5"]
        subprocess.run(save, env=self.environment(), capture_output=True, check=True)
        self.refuses("-d", "Narrow", SAMPLE, words=["MVTopMargin=5", "0 to 3"])

    def test_defaults_beyond_the_limits_are_not_saved_as_the_users_choice(self):
        self.add_narrow_queue()
        self.assertEqual(self.sent_to_narrow("--save-as-default")[0], DEFAULTS)
        self.assertEqual(self.sent_to_narrow()[0], DEFAULTS)
        self.assertEqual(self.sent_to_narrow("--set", "Valid=On")[0][MARGINS["Top"]], "3")

    def test_a_queue_without_a_ppd_gets_the_panels_options_with_a_note(self):
        self.add_queue("Raw")
        acts = ["--set", "Valid=On", "--set", f"Top={OWN_LIMIT}", "--set", f"Left={OWN_LIMIT + 1}"]
        result, (record,) = self.prints("-d", "Raw", *acts, SAMPLE)
        expected = DEFAULTS | {VALID: "On", MARGINS["Top"]: str(OWN_LIMIT), MARGINS["Left"]: str(OWN_LIMIT)}
        self.assertEqual(of_panel(record.options), expected)
        self.assertRegex(result.stderr, "Raw has no PPD.*filters may not know")
        self.assertRegex(result.stderr, rf'Left: "{OWN_LIMIT + 1}" was typed.*0 to {OWN_LIMIT}\b')

    def test_a_class_of_printers_has_the_limits_of_its_printer(self):
        def run_command(*command):
            subprocess.run(command, env=self.environment(), capture_output=True, check=True)

        run_command("lpadmin", "-p", "Morva", "-c", "Class")
        self.addCleanup(run_command, "lpadmin", "-x", "Class")
        run_command("cupsaccept", "Class")
        run_command("cupsenable", "Class")
        _, (record,) = self.prints("-d", "Class", "--set", "Valid=On", "--set", f"Bottom={LARGEST['Bottom'] + 1}", SAMPLE)
        self.assertEqual(record.options[MARGINS["Bottom"]], str(LARGEST["Bottom"]))

    def test_a_queue_without_a_ppd_takes_keywords_in_any_letter_case(self):
        self.add_queue("Raw")
        result, (record,) = self.prints("-d", "Raw", "-o", "mvtopmargin=3", SAMPLE)
        self.assertEqual(of_panel(record.options), DEFAULTS | {MARGINS["Top"]: "3"})

    def test_a_printer_without_the_panel_does_not_get_the_panels_options_in_any_letter_case(self):
        self.add_queue("Plain", ppd_without(self.temporary_folder(), "APDialogExtension"))
        _, (record,) = self.prints("-d", "Plain", "-o", "mvTopMargin=7 x-note=a", SAMPLE)
        self.assertFalse(of_panel(record.options) or "mvTopMargin" in record.options)
        self.assertEqual(record.options["x-note"], "a")

    def test_options_are_sent_as_given_if_no_panel_is_installed(self):
        self.add_queue("Plain", ppd_without(self.temporary_folder(), "APDialogExtension"))
        _, (record,) = self.prints("-d", "Plain", "--plugin", self.temporary_folder(), "-o", "MVTopMargin=7 x-note=a", SAMPLE)
        self.assertEqual(of_panel(record.options), {MARGINS["Top"]: "7"})
        self.assertEqual(record.options["x-note"], "a")

    def test_a_printer_whose_ppd_has_no_limits_has_the_panels_limits(self):
        self.add_queue("Limitless", ppd_without(self.temporary_folder(), "MVMax"))
        for side, keyword in MARGINS.items():
            with self.subTest(side=side):
                acts = ["--set", "Valid=On", "--set", f"{side}=99"]
                _, (record,) = self.prints("-d", "Limitless", *acts, SAMPLE)
                self.assertEqual(record.options[keyword], str(OWN_LIMIT))

    def test_an_option_that_the_printer_does_not_allow_is_refused_with_the_allowed_values_and_a_remedy(self):
        refused = [
            (MARGINS[side], value, f"0 to {largest}", remedy)
            for side, largest in LARGEST.items()
            for value, remedy in ((f"{largest + 1}", largest), ("-1", 0), ("many", 0), ("2.5", 2), ("9" * 20, largest))
        ]
        refused.append((POSITION, "Middle", "Left, Center, Right", "Left"))
        refused.append((DIRECTION, "Sideways", "LongEdgeFeed, ShortEdgeFeed", "LongEdgeFeed"))
        refused.append((VALID, "Maybe", "On, Off", "Off"))
        for keyword, value, allowed, remedy in refused:
            with self.subTest(keyword=keyword, value=value):
                words = [f"{keyword}={value}", allowed, f"-o {keyword}={remedy}", "--force"]
                options = f"MVTandemTrim=On {keyword}={value}"
                self.refuses("-d", "Morva", "-o", options, SAMPLE, words=words)

    def test_force_sends_an_option_that_the_printer_does_not_allow(self):
        stored = {MARGINS["Top"]: "21", MARGINS["Left"]: "many", POSITION: "Middle", VALID: "Maybe"}
        for keyword, value in stored.items():
            with self.subTest(keyword=keyword, value=value):
                options = self.options_of("--force", "-o", f"MVTandemTrim=On {keyword}={value}")
                self.assertEqual(of_panel(options), DEFAULTS | {VALID: "On", keyword: value})

    def test_the_suggested_remedies_work(self):
        for remedy in (["-o", "MVTopMargin=20"], ["--set", "Top=20"]):
            with self.subTest(remedy):
                options = self.options_of("-o", "MVTandemTrim=On MVTopMargin=21", *remedy)
                self.assertEqual(options[MARGINS["Top"]], "20")


if __name__ == "__main__":
    unittest.main()
