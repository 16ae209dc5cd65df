"""Settings that a user keeps for the next jobs."""

import subprocess
import unittest

from terminal_case import (
    ACTS_THAT_CHANGE,
    CHANGED,
    DEFAULTS,
    MARGINS,
    SAMPLE,
    TerminalCase,
    each,
    of_panel,
    option_text,
)

NOTE = 'two "words" – ü'


class DefaultsTest(TerminalCase):
    def run_program(self, *command):
        result = subprocess.run(command, env=self.environment(), capture_output=True, text=True, check=False)
        self.assertEqual(result.returncode, 0, result.stderr)
        return result.stdout

    def keeps(self, *arguments):
        before = self.cups.jobs()
        result = self.trim("-d", "Morva", "--save-as-default", *arguments)
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual(self.cups.jobs(), before)
        return result

    def test_kept_settings_are_those_of_every_program(self):
        self.keeps("-o", option_text("x-note", NOTE), *each("--set", ACTS_THAT_CHANGE))
        self.run_program("lp", "-d", "Morva", SAMPLE)
        self.cups.wait_for_jobs()
        (record,) = self.cups.records()
        self.assertEqual(of_panel(record.options), CHANGED)
        self.assertEqual(record.options["x-note"], NOTE)
        listed = self.run_program("lpoptions", "-p", "Morva").split()
        self.assertIn("MVTopMargin=12", listed)

    def test_the_program_itself_starts_from_them(self):
        self.keeps("-o", option_text("x-note", NOTE), *each("--set", ACTS_THAT_CHANGE))
        options = self.options_of()
        self.assertEqual(of_panel(options), CHANGED)
        self.assertEqual(options["x-note"], NOTE)
        options = self.options_of("--set", "Top=3", "-o", "MVLeftMargin=4")
        self.assertEqual(of_panel(options), CHANGED | {MARGINS["Top"]: "3", MARGINS["Left"]: "4"})

    def test_what_lpoptions_keeps_is_what_the_panel_shows(self):
        self.run_program("lpoptions", "-p", "Morva", "-o", "MVTandemTrim=On", "-o", "MVRightMargin=19")
        expected = DEFAULTS | {"MVTandemTrim": "On", MARGINS["Right"]: "19"}
        self.assertEqual(of_panel(self.options_of()), expected)

    def test_kept_settings_may_be_replaced(self):
        self.keeps(*each("--set", ACTS_THAT_CHANGE))
        self.keeps("--restore-defaults", "--set", "Valid=Off")
        self.assertEqual(of_panel(self.options_of()), DEFAULTS)

    def test_they_may_be_kept_while_printing(self):
        self.prints("-d", "Morva", "--save-as-default", "-o", "MVTandemTrim=On MVTopMargin=9", SAMPLE)
        self.assertEqual(self.options_of()[MARGINS["Top"]], "9")

    def test_what_cannot_be_kept_is_said_before_anything_is_printed(self):
        arguments = ["-d", "Morva", "--save-as-default", "-o", 'x-note="a#b"', SAMPLE]
        self.refuses(*arguments, words=["x-note", "default"])

    def test_other_letter_case_is_the_same_keyword(self):
        self.run_program("lpoptions", "-p", "Morva", "-o", "mvtopmargin=7")
        options = self.options_of()
        self.assertEqual(of_panel(options), DEFAULTS | {MARGINS["Top"]: "7"})
        self.assertNotIn("mvtopmargin", options)

    def test_an_instance_of_a_printer_keeps_settings_of_its_own(self):
        arguments = ["-d", "Morva/draft", "--save-as-default", "-o", "MVTandemTrim=On MVTopMargin=2"]
        self.assertEqual(self.trim(*arguments).returncode, 0)
        self.assertEqual(of_panel(self.options_of()), DEFAULTS)
        _, (record,) = self.prints("-d", "Morva/draft", SAMPLE)
        self.assertEqual(record.options[MARGINS["Top"]], "2")

    def test_the_administrators_default_for_a_setting_goes_before_the_panels(self):
        self.run_program("lpadmin", "-p", "Morva", "-o", "MVTopMargin-default=8")
        self.addCleanup(self.run_program, "lpadmin", "-p", "Morva", "-R", "MVTopMargin-default")
        self.assertEqual(of_panel(self.options_of()), DEFAULTS | {MARGINS["Top"]: "8"})
        self.run_program("lpoptions", "-p", "Morva", "-o", "MVTopMargin=9")
        self.assertEqual(of_panel(self.options_of()), DEFAULTS | {MARGINS["Top"]: "9"})

    def test_facts_about_the_printer_do_not_become_settings(self):
        self.keeps()
        kept = (self.cups.folder / "home/lpoptions", self.cups.folder / "home/.cups/lpoptions")
        (text,) = [path.read_text() for path in kept if path.exists()]
        (line,) = [line for line in text.splitlines() if "Morva" in line]
        self.assertEqual(sorted(word.partition("=")[0] for word in line.split()[2:]), sorted(DEFAULTS))

    def test_without_a_home_the_program_says_that_it_cannot_keep_them(self):
        home = self.temporary_folder() / "file"
        home.write_text("no folder")
        result = self.trim("-d", "Morva", "--save-as-default", HOME=str(home), CUPS_SERVERROOT=str(home))
        self.assertEqual(result.returncode, 1)
        self.assertRegex(result.stderr, "Morva.*cannot be kept.*lpoptions")


if __name__ == "__main__":
    unittest.main()
