"""Settings that a user saves as defaults for the next jobs."""

import concurrent.futures
import gzip
import itertools
import os
import pathlib
import subprocess
import unittest

from relay import GONE, Relay
from terminal_case import (
    ACTS_THAT_CHANGE,
    CHANGED,
    DEFAULTS,
    MARGINS,
    POSITION,
    PPD,
    PROGRAM,
    SAMPLE,
    TerminalCase,
    each,
    of_panel,
    option_text,
)

QUESTION = 5  # the number of the job's request that asks what the server has of it
NOTE = 'two "words" – ü'


class DefaultsTest(TerminalCase):
    def run_program(self, *command):
        result = subprocess.run(command, env=self.environment(), capture_output=True, text=True, check=False)
        self.assertEqual(result.returncode, 0, result.stderr)
        return result.stdout

    def saves(self, *arguments):
        before = self.cups.jobs()
        result = self.trim("-d", "Morva", "--save-as-default", *arguments)
        self.assertEqual((result.returncode, result.stdout), (0, ""), result.stderr)
        self.assertEqual(self.cups.jobs(), before)
        return result

    def resets(self, *arguments):
        result = self.trim("--reset-defaults", *arguments)
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual(result.stdout, "")
        return result

    @property
    def file_of_defaults(self):
        return self.cups.folder / "home/.cups/lpoptions"

    def saved(self):
        return self.file_of_defaults.read_text() if self.file_of_defaults.exists() else ""

    def saved_for(self, destination):
        """The options in the line that begins with `destination`."""
        (line,) = [line for line in self.saved().splitlines() if line.startswith(destination + " ")]
        return dict(word.partition("=")[::2] for word in line.split()[2:])

    def test_saved_settings_apply_to_every_program(self):
        result = self.saves("-o", option_text("x-note", NOTE), *each("--set", ACTS_THAT_CHANGE))
        self.assertEqual(result.stderr, "tandem-trim: saved as your defaults for Morva: 8 options\n")
        self.run_program("lp", "-d", "Morva", SAMPLE)
        self.cups.wait_for_jobs()
        (record,) = self.cups.records()
        self.assertEqual(of_panel(record.options), CHANGED)
        self.assertEqual(record.options["x-note"], NOTE)
        listed = self.run_program("lpoptions", "-p", "Morva").split()
        self.assertIn("MVTopMargin=12", listed)

    def test_the_panel_starts_from_the_saved_settings(self):
        self.saves("-o", option_text("x-note", NOTE), *each("--set", ACTS_THAT_CHANGE))
        options = self.options_of()
        self.assertEqual(of_panel(options), CHANGED)
        self.assertEqual(options["x-note"], NOTE)
        options = self.options_of("--set", "Top=3", "-o", "MVLeftMargin=4")
        self.assertEqual(of_panel(options), CHANGED | {MARGINS["Top"]: "3", MARGINS["Left"]: "4"})

    def test_the_panel_starts_from_what_lpoptions_saved(self):
        self.run_program("lpoptions", "-p", "Morva", "-o", "MVTandemTrim=On", "-o", "MVRightMargin=19")
        expected = DEFAULTS | {"MVTandemTrim": "On", MARGINS["Right"]: "19"}
        self.assertEqual(of_panel(self.options_of()), expected)

    def test_saved_settings_can_be_replaced(self):
        self.saves(*each("--set", ACTS_THAT_CHANGE))
        self.saves("--restore-defaults", "--set", "Valid=Off")
        self.assertEqual(of_panel(self.options_of()), DEFAULTS)

    def test_settings_can_be_saved_while_printing(self):
        self.prints("-d", "Morva", "--save-as-default", "-o", "MVTandemTrim=On MVTopMargin=9", SAMPLE)
        self.assertEqual(self.options_of()[MARGINS["Top"]], "9")

    def test_settings_can_be_saved_with_the_ppd_from_a_file(self):
        self.saves("--ppd", PPD, "-o", "MVTopMargin=9")
        self.assertEqual(self.options_of()[MARGINS["Top"]], "9")

    def test_a_default_that_the_printer_does_not_allow_is_not_saved(self):
        ppd = self.temporary_folder() / "small.ppd"
        ppd.write_text(PPD.read_text().replace('MaxTandemTrimMarginTop: "20"', 'MaxTandemTrimMarginTop: "3"'))
        self.saves("--ppd", ppd)
        self.assertEqual(self.saved_for("Dest Morva").keys(), DEFAULTS.keys() - {MARGINS["Top"]})

    def test_a_job_that_fails_saves_nothing(self):
        save = ["-d", "Morva", "--save-as-default", "-o", "MVTandemTrim=On MVTopMargin=9"]
        self.assertEqual(self.trim(*save, "-o", "document-format=application/x-nothing", SAMPLE).returncode, 1)
        self.assertEqual(self.saved(), "")
        with Relay(self.cups.address, QUESTION, GONE) as relay:
            around = {"CUPS_SERVER": relay.address, "TANDEM_TRIM_TIMEOUT": "1"}
            result = self.trim(*save, SAMPLE, **around)
        self.assertEqual(result.returncode, 1)
        self.assertIn("could not be confirmed", result.stderr)
        self.assertEqual(self.saved(), "")

    def test_options_of_a_single_job_are_never_saved(self):
        of_one_job = "copies=2 page-ranges=1 page-set=odd Collate=True job-hold-until=no-hold job-name=One"
        self.saves("-n", "3", "-t", "Mine", "-o", of_one_job, "-o", "x-note=kept")
        self.assertEqual(sorted(self.saved_for("Dest Morva")), sorted([*DEFAULTS, "x-note"]))
        self.run_program("lpoptions", "-p", "Morva", "-o", "copies=2")
        self.saves("-n", "3")
        self.assertEqual(self.saved_for("Dest Morva")["copies"], "2")

    def test_saved_settings_can_be_removed(self):
        self.run_program("lpoptions", "-p", "Morva/draft", "-o", "MVTopMargin=2")
        self.saves("-o", "MVTandemTrim=On MVTopMargin=9")
        result = self.resets("-d", "Morva")
        self.assertRegex(result.stderr, "(?m)^tandem-trim: your defaults for Morva were removed: 7 options")
        self.assertEqual(of_panel(self.options_of()), DEFAULTS)
        self.assertEqual(self.saved_for("Dest Morva/draft"), {"MVTopMargin": "2"})
        self.assertIn("you have no saved defaults for Morva", self.resets("-d", "Morva").stderr)
        said = "tandem-trim: your defaults for Morva/draft were removed: 1 option\n"
        self.assertEqual(self.resets("-d", "Morva/draft").stderr, said)
        self.assertEqual(self.saved(), "")
        self.assertEqual(self.resets("-d", "Morva/draft").stderr, "tandem-trim: you have no saved defaults for Morva/draft\n")

    def test_the_default_printer_stays_the_default_when_its_saved_settings_are_removed(self):
        self.run_program("lpoptions", "-p", "Morva", "-o", "MVTopMargin=9")
        self.run_program("lpoptions", "-d", "Morva")
        self.resets()
        self.assertEqual(self.saved(), "Default Morva\n")

    def test_removing_the_saved_settings_of_a_printer_that_does_not_exist_is_refused(self):
        self.refuses("-d", "Nobody", "--reset-defaults", words=["Nobody", "Morva"])

    def test_other_lines_of_the_file_stay_byte_for_byte(self):
        others = "# mine\nDest  Elsewhere x=1   y\nDefault Morva/draft a='b c'\nPolicy unknown\n\nDest Morva/Draught z=1"
        self.file_of_defaults.parent.mkdir()
        self.file_of_defaults.write_text(others)
        self.file_of_defaults.chmod(0o600)
        self.saves("-o", "x-note=1")
        self.assertTrue(self.saved().startswith(others + "\nDest Morva "), self.saved())
        self.assertEqual(self.file_of_defaults.stat().st_mode & 0o777, 0o600)
        self.resets("-d", "Morva")
        self.assertEqual(self.saved(), others + "\n")

    def test_programs_that_save_settings_at_the_same_time_lose_nothing(self):
        instances = [f"Morva/{name}" for name in ("one", "two", "three")]
        with concurrent.futures.ThreadPoolExecutor(len(instances)) as programs:
            for number in range(10):
                results = programs.map(lambda name: self.saves("-d", name, "-o", f"x-note=n{number}"), instances)
                self.assertEqual(len(list(results)), len(instances))
                for name in instances:
                    self.assertEqual(self.saved_for(f"Dest {name}").get("x-note"), f"n{number}", self.saved())

    def test_a_setting_that_cannot_be_saved_is_refused_before_anything_is_printed(self):
        for value in ("a#b", "one\ntwo", "a\tb", ""):
            with self.subTest(value):
                arguments = ["-d", "Morva", "--save-as-default", "-o", option_text("x-note", value), SAMPLE]
                self.refuses(*arguments, words=["value of x-note as a default", "or contain # or control characters", "give another with -o x-note=..."])
                self.assertEqual(self.saved(), "")

    def test_a_setting_that_is_too_long_to_be_saved_is_named_and_nothing_is_saved(self):
        self.saves("-o", "x-note=before")
        before = self.saved()
        long = " ".join(f"x-{name}={name * length}" for name, length in (("a", 100), ("b", 8000), ("c", 200)))
        self.refuses("-d", "Morva", "--save-as-default", "-o", long, words=["CUPS cannot save the value of x-b as a default"])
        self.assertEqual(self.saved(), before)

    def test_saved_keywords_count_in_any_letter_case(self):
        self.run_program("lpoptions", "-p", "Morva", "-o", "mvtopmargin=7")
        options = self.options_of()
        self.assertEqual(of_panel(options), DEFAULTS | {MARGINS["Top"]: "7"})
        self.assertNotIn("mvtopmargin", options)

    def test_an_instance_of_a_printer_has_its_own_saved_settings(self):
        result = self.trim("-d", "Morva/draft", "--save-as-default", "-o", "MVTandemTrim=On MVTopMargin=2")
        self.assertEqual((result.returncode, result.stderr), (0, "tandem-trim: saved as your defaults for Morva/draft: 7 options\n"))
        self.assertEqual(of_panel(self.options_of()), DEFAULTS)
        _, (record,) = self.prints("-d", "Morva/draft", SAMPLE)
        self.assertEqual(record.options[MARGINS["Top"]], "2")

    def test_the_administrators_default_overrides_the_panels_and_the_users_overrides_both(self):
        self.run_program("lpadmin", "-p", "Morva", "-o", "MVTopMargin-default=8")
        self.addCleanup(self.run_program, "lpadmin", "-p", "Morva", "-R", "MVTopMargin-default")
        self.assertEqual(of_panel(self.options_of()), DEFAULTS | {MARGINS["Top"]: "8"})
        self.run_program("lpoptions", "-p", "Morva", "-o", "MVTopMargin=9")
        self.assertEqual(of_panel(self.options_of()), DEFAULTS | {MARGINS["Top"]: "9"})

    def test_a_value_equal_to_the_queues_default_is_not_saved(self):
        self.run_program("lpadmin", "-p", "Morva", "-o", "MVTopMargin-default=8")
        self.addCleanup(self.run_program, "lpadmin", "-p", "Morva", "-R", "MVTopMargin-default")
        self.run_program("lpoptions", "-p", "Morva", "-o", "x-note=kept")
        self.saves("-o", "MVTandemTrim=On MVTopMargin=8 MVBottomMargin=3")
        saved = self.saved_for("Dest Morva")
        self.assertNotIn("MVTopMargin", saved)
        self.assertEqual((saved["MVBottomMargin"], saved["x-note"]), ("3", "kept"))

    def test_the_administrators_default_in_the_ppd_overrides_only_the_panels(self):
        self.run_program("lpadmin", "-p", "Morva", "-o", "MVTopMargin=8", "-o", "MVPrintPosition=Right")
        self.addCleanup(self.run_program, "lpadmin", "-p", "Morva", "-o", "MVTopMargin=5", "-o", "MVPrintPosition=Center")
        expected = DEFAULTS | {MARGINS["Top"]: "8", POSITION: "Right"}
        self.assertEqual(of_panel(self.options_of()), expected)
        self.run_program("lpadmin", "-p", "Morva", "-o", "MVTopMargin-default=7", "-o", "x-note-default=queue")
        self.addCleanup(self.run_program, "lpadmin", "-p", "Morva", "-R", "MVTopMargin-default", "-R", "x-note-default")
        self.assertEqual(of_panel(self.options_of()), expected | {MARGINS["Top"]: "7"})
        self.assertNotIn("x-note", self.trim("-d", "Morva").stdout)
        self.assertEqual(self.options_of()["x-note"], "queue")
        self.run_program("lpoptions", "-p", "Morva", "-o", "MVTopMargin=9")
        self.assertEqual(of_panel(self.options_of()), expected | {MARGINS["Top"]: "9"})
        self.assertEqual(of_panel(self.options_of("-o", "MVTopMargin=4")), expected | {MARGINS["Top"]: "4"})

    def test_facts_about_the_printer_are_not_saved_as_settings(self):
        self.saves()
        self.assertEqual(sorted(self.saved_for("Dest Morva")), sorted(DEFAULTS))

    def test_a_pipe_or_a_device_in_place_of_the_file_of_defaults_is_refused_without_waiting(self):
        self.file_of_defaults.parent.mkdir()
        for make in (os.mkfifo, lambda file: file.symlink_to("/dev/zero")):
            make(self.file_of_defaults)
            for arguments in ([SAMPLE], ["--save-as-default"], ["--reset-defaults"]):
                self.refuses("-d", "Morva", *arguments, words=[f"{self.file_of_defaults} is not a file", "nothing was sent"])
            self.refuses("--list", words=[f"{self.file_of_defaults} is not a file"])
            self.file_of_defaults.unlink()

    def test_a_file_of_defaults_that_cannot_be_read_is_named_and_not_ignored(self):
        self.file_of_defaults.parent.mkdir()
        of_all_users = self.cups.folder / "home/lpoptions"
        packed = gzip.compress(b"Dest Morva MVTopMargin=9\n")
        for file in (self.file_of_defaults, of_all_users):
            for make, words in ((file.mkdir, "it is not a regular file"), (lambda file=file: file.write_bytes(packed), "it is compressed with gzip")):
                with self.subTest(file=file.relative_to(self.cups.folder), words=words):
                    make()
                    for arguments in ([SAMPLE], ["--summary"]):
                        self.refuses("-d", "Morva", *arguments, words=[f"{file} cannot be read: {words}; nothing was sent"])
                    if file.is_dir():
                        file.rmdir()
            file.unlink()
        self.assertEqual(of_panel(self.options_of()), DEFAULTS)

    def home_of_another_user(self):
        """A folder for use as a home folder, which only another user may read."""
        if os.geteuid() != 0:
            return pathlib.Path("/proc/1/fd")
        home = self.temporary_folder() / "home"
        (home / ".cups").mkdir(parents=True)
        (home / ".cups/lpoptions").write_text("Dest Morva MVTopMargin=9\n")
        for path in (home, home / ".cups/lpoptions"):
            path.chmod(0o700)
            os.chown(path, 65534, 65534)
        self.addCleanup(os.chown, home, 0, 0)
        return home

    def unprivileged_summary(self, home):
        """The result of --summary with this home folder, by a program without the capabilities that override the modes of files."""
        unprivileged = ("setpriv", "--bounding-set=-dac_override,-dac_read_search") if os.geteuid() == 0 else ()
        program, *arguments = (*unprivileged, PROGRAM, "-d", "Morva", "--summary", "--set", "Valid=On")
        return self.trim(*arguments, program=program, HOME=str(home))

    def test_another_users_defaults_are_ignored(self):
        result = self.unprivileged_summary(self.home_of_another_user())
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertIn(": 5\n", result.stdout)
        self.assertNotIn("9", result.stdout)

    def test_the_users_defaults_that_cannot_be_read_are_an_error(self):
        self.file_of_defaults.parent.mkdir()
        self.file_of_defaults.write_text("Dest Morva MVTopMargin=9\n")
        self.file_of_defaults.chmod(0)
        result = self.unprivileged_summary(self.file_of_defaults.parents[1])
        self.assertEqual((result.returncode, result.stdout), (1, ""))
        self.assertIn(f"{self.file_of_defaults} cannot be read: Permission denied; nothing was sent", result.stderr)

    def test_a_mail_at_the_end_of_one_job_is_not_saved_for_others(self):
        self.saves("-m", "-o", "MVTopMargin=9")
        self.assertNotIn("notify", self.file_of_defaults.read_text())

    def test_settings_are_saved_even_if_the_file_has_several_lines_for_the_printer(self):
        self.file_of_defaults.parent.mkdir()
        for value in ("9", "3", "4"):
            with self.subTest(value):
                self.file_of_defaults.write_text("Default Morva MVTopMargin=3\nDest Morva MVTopMargin=4\n")
                self.saves("-o", f"MVTopMargin={value}")
                self.assertEqual(self.options_of()[MARGINS["Top"]], value)
                _, (record,) = self.prints(SAMPLE)
                self.assertEqual(record.options[MARGINS["Top"]], value)

    def test_without_a_home_folder_the_program_says_that_it_cannot_save_settings(self):
        home = self.temporary_folder() / "file"
        home.write_text("no folder")
        for printer, option in itertools.product(("Morva", "Morva/draft"), ("--save-as-default", "--reset-defaults")):
            with self.subTest(option, printer=printer):
                result = self.trim("-d", printer, option, HOME=str(home), CUPS_SERVERROOT=str(home))
                self.assertEqual(result.returncode, 1)
                self.assertRegex(result.stderr, f"the defaults for {printer} cannot be changed: .*lpoptions cannot be")


if __name__ == "__main__":
    unittest.main()
