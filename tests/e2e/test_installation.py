"""What is installed works from where it is; without the print dialog, too."""

import pathlib
import subprocess
import unittest

from terminal_case import BUILD, SAMPLE, TerminalCase


class InstallationTest(TerminalCase):
    def installed(self, *arguments):
        prefix = self.temporary_folder() / "usr"
        subprocess.run(["cmake", "--install", BUILD, "--prefix", prefix, *arguments], check=True, capture_output=True)
        return prefix

    def test_the_installed_program_finds_its_plugin(self):
        self.assert_prints_with_the_panel(self.installed())

    def test_the_terminal_part_needs_no_other(self):
        self.assert_prints_with_the_panel(self.installed("--component", "terminal"))

    def test_without_the_dialog_the_package_to_install_is_named(self):
        program = self.installed("--component", "terminal") / "bin/tandem-trim"
        missing = ["the print dialog is not installed", "tandem-trim-gtk", "nothing was sent", "--no-dialog"]
        self.refuses("-d", "Morva", "--dialog", SAMPLE, program=program, words=missing)

    def test_without_the_dialog_a_screen_makes_no_difference_but_for_a_note(self):
        program = self.installed("--component", "terminal") / "bin/tandem-trim"
        result, (record,) = self.prints("-d", "Morva", SAMPLE, program=program, DISPLAY=":none")
        self.assertEqual(record.size, pathlib.Path(SAMPLE).stat().st_size)
        (note,) = result.stderr.splitlines()
        for words in ("the print dialog is not installed", "tandem-trim-gtk", "going on without it"):
            self.assertIn(words, note)


if __name__ == "__main__":
    unittest.main()
