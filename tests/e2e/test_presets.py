"""Presets, saved and used at a terminal."""

import json
import subprocess
import unittest

from terminal_case import ACTS_THAT_CHANGE, CHANGED, DEFAULTS, MARGINS, PPD, SAMPLE, SMALLER, TerminalCase, each, of_panel

NAME = "Booklet, 5 mm"


class PresetsTest(TerminalCase):
    def setUp(self):
        super().setUp()
        for file in self.folder.glob("*"):
            file.unlink()

    @property
    def folder(self):
        return self.cups.folder / "home/.config/tandem-trim/presets/TandemTrim"

    def succeeds(self, *arguments, **variables):
        """Runs the program, with Morva as its printer. It must succeed and send nothing. Returns its result."""
        before = self.cups.jobs()
        result = self.trim("-d", "Morva", *arguments, **variables)
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual(self.cups.jobs(), before)
        return result

    def save(self, *arguments, name=NAME):
        return self.succeeds("--save-preset", name, *each("--set", ACTS_THAT_CHANGE), *arguments)

    def presets(self):
        return json.loads(self.succeeds("--list-presets", "--json").stdout)

    def add_narrow_printer(self):
        """Adds a printer of the same family, with a limit of the top margin below the preset's value; returns its name."""
        ppd = self.temporary_folder() / "narrow.ppd"
        ppd.write_text(PPD.read_text().replace(*SMALLER))
        self.cups.add_queue("Narrow", ppd)
        return "Narrow"

    def test_a_preset_restores_its_settings(self):
        result = self.save()
        self.assertEqual(result.stdout, "")
        self.assertEqual(result.stderr, f"tandem-trim: saved as the preset {NAME}\n")
        self.assertEqual(of_panel(self.options_of("--preset", NAME)), CHANGED)
        self.assertEqual(of_panel(self.options_of()), DEFAULTS)

    def test_the_command_line_overrides_a_preset_and_a_preset_overrides_saved_settings(self):
        self.save("-o", "x-note=preset")
        self.succeeds("--save-as-default", "-o", "MVTandemTrim=On MVTopMargin=1 x-note=saved x-own=saved")
        try:
            options = self.options_of("--preset", NAME, "--set", "Top=3")
            self.assertEqual(of_panel(options), CHANGED | {MARGINS["Top"]: "3"})
            self.assertEqual((options["x-note"], options["x-own"]), ("preset", "saved"))
            self.assertEqual(self.options_of("--preset", NAME, "-o", "x-note=now")["x-note"], "now")
        finally:
            self.succeeds("--reset-defaults")

    def test_a_preset_has_the_users_other_options_except_those_of_a_single_job(self):
        self.save()
        self.assertEqual(self.presets(), [{"name": NAME, "readOnly": False, "panel": CHANGED, "options": {}}])
        self.save("-o", "sides=two-sided-long-edge", "-n", "3", "-P", "1", "-H", "hold", "-o", "MVTopMargin=4", name="More")
        more = next(preset for preset in self.presets() if preset["name"] == "More")
        self.assertEqual(more["options"], {"sides": "two-sided-long-edge"})
        self.succeeds("--preset", "More", "--save-preset", "Changed", "--set", "Top=9")
        changed = next(preset for preset in self.presets() if preset["name"] == "Changed")
        self.assertEqual(changed["options"], more["options"])
        self.assertEqual(changed["panel"], CHANGED | {MARGINS["Top"]: "9"})

    def test_a_preset_is_saved_while_a_job_is_printed_but_not_if_the_job_is_refused(self):
        self.refuses("-d", "Morva", "--save-preset", NAME, "--set", "Valid=On", "--set", "Top=abc", SAMPLE, status=2)
        self.assertEqual(self.presets(), [])
        result = self.trim("-d", "Morva", "--save-preset", NAME, "-o", "document-format=application/x-nothing", SAMPLE)
        self.assertEqual((result.returncode, self.presets()), (1, []))
        self.prints("-d", "Morva", "--save-preset", NAME, "--set", "Valid=On", SAMPLE)
        self.assertEqual(self.presets()[0]["panel"], DEFAULTS | {"MVTandemTrim": "On"})

    def test_a_presets_values_that_a_printer_does_not_allow_are_refused_and_not_changed(self):
        self.save()
        printer = self.add_narrow_printer()
        self.refuses("-d", printer, "--preset", NAME, SAMPLE, words=["Top", "12", "8"])
        _, (record,) = self.prints("-d", printer, "--preset", NAME, "--set", "Top=8", SAMPLE)
        self.assertEqual(of_panel(record.options), CHANGED | {MARGINS["Top"]: "8"})
        _, (record,) = self.prints("-d", printer, "--preset", NAME, "--force", SAMPLE)
        self.assertEqual(of_panel(record.options), CHANGED)

    def test_a_default_that_the_printer_does_not_allow_is_not_saved_in_a_preset(self):
        default = ["lpadmin", "-p", "Morva"]
        subprocess.run([*default, "-o", "MVTopMargin-default=28"], env=self.environment(), check=True, capture_output=True)
        self.addCleanup(subprocess.run, [*default, "-R", "MVTopMargin-default"], env=self.environment(), check=True, capture_output=True)
        self.succeeds("--save-preset", NAME)
        self.assertEqual(set(DEFAULTS) - set(self.presets()[0]["panel"]), {MARGINS["Top"]})

    def test_presets_are_listed_and_deleted(self):
        self.assertEqual(self.succeeds("--list-presets").stdout, "")
        self.save(name="b")
        self.save(name="a")
        house = self.temporary_folder()
        folder = house / "tandem-trim/presets/TandemTrim"
        folder.mkdir(parents=True)
        (folder / "House.json").write_text('{"panel": {"MVTandemTrim": "On"}}')
        around = {"XDG_CONFIG_DIRS": str(house)}
        self.assertEqual(self.succeeds("--list-presets", **around).stdout, "House  (read-only)\na\nb\n")
        self.assertEqual(self.succeeds("--delete-preset", "a").stderr, "tandem-trim: the preset a was deleted\n")
        self.assertEqual(self.succeeds("--list-presets").stdout, "b\n")
        self.refuses("-d", "Morva", "--delete-preset", "a", words=["there is no preset a", "b"])
        self.refuses("-d", "Morva", "--delete-preset", "House", words=["is the administrator's"], **around)
        self.assertEqual(of_panel(self.options_of("--preset", "House", **around)), DEFAULTS | {"MVTandemTrim": "On"})

    def test_an_unknown_preset_is_refused_with_a_list_of_the_known_ones(self):
        self.refuses("-d", "Morva", "--preset", "None", SAMPLE, words=["there is no preset None", "there are no presets for these printers"])
        self.save()
        self.refuses("-d", "Morva", "--preset", "None", SAMPLE, words=["there is no preset None", NAME])

    def test_a_damaged_preset_is_renamed_and_reported(self):
        self.save()
        file = self.folder / f"{NAME}.json"
        file.write_text("{")
        self.refuses("-d", "Morva", "--preset", NAME, SAMPLE, words=[str(file), ".damaged", f"there is no preset {NAME}"])
        self.assertFalse(file.exists())
        self.assertEqual(file.with_name(f"{NAME}.json.damaged").read_text(), "{")

    def test_listing_presets_reports_damaged_ones_and_fails(self):
        self.save()
        (self.folder / "Mine.json").write_text("{")
        house = self.temporary_folder()
        file = house / "tandem-trim/presets/TandemTrim/House.json"
        file.parent.mkdir(parents=True)
        file.write_text("[]")
        around = {"XDG_CONFIG_DIRS": str(house)}
        result = self.trim("-d", "Morva", "--list-presets", **around)
        self.assertEqual((result.returncode, result.stdout), (1, f"{NAME}\n"))
        mine, house, failure = result.stderr.splitlines()
        self.assertIn("Mine.json.damaged", mine)
        self.assertEqual(house, f"tandem-trim: the preset in {file} cannot be understood (it is not a JSON object)")
        self.assertEqual(failure, "tandem-trim: not all presets are listed")
        # The user's file has been renamed; the administrator's stays.
        result = self.trim("-d", "Morva", "--list-presets", "--json", **around)
        self.assertEqual((result.returncode, [each["name"] for each in json.loads(result.stdout)]), (1, [NAME]))
        self.assertEqual(result.stderr.splitlines(), [house, failure])
        # Using another preset does not report the administrator's.
        self.assertNotIn("House", self.succeeds("--preset", NAME, **around).stderr)
        self.refuses("-d", "Morva", "--preset", "House", SAMPLE, words=[str(file), "cannot be understood", "there is no preset House"], **around)

    def test_a_printer_without_a_panel_has_no_presets(self):
        ppd = self.temporary_folder() / "plain.ppd"
        ppd.write_text("".join(line for line in PPD.read_text().splitlines(keepends=True) if not line.startswith("*APDialogExtension")))
        self.cups.add_queue("Plain", ppd)
        for arguments in (["--list-presets"], ["--preset", NAME], ["--save-preset", NAME], ["--delete-preset", NAME]):
            with self.subTest(arguments):
                self.refuses("-d", "Plain", *arguments, words=["only printers with a panel have presets; Plain has no panel"])

    def test_with_the_ppd_from_a_file_no_server_is_needed(self):
        arguments = ["-h", "localhost:1", "--ppd", PPD]
        result = self.trim(*arguments, "--save-preset", NAME, "--set", "Valid=On")
        self.assertEqual((result.returncode, result.stdout), (0, ""), result.stderr)
        self.assertEqual(self.trim(*arguments, "--list-presets").stdout, f"{NAME}\n")

    def test_wrong_names_and_combinations_count_as_a_wrong_command_line(self):
        for arguments in (
            ["--save-preset", ""], ["--save-preset", " "], ["--preset", "a\nb"], ["--save-preset", "x" * 300], ["--delete-preset", "a", SAMPLE],
            ["--list-presets", "--delete-preset", "a"], ["--list-presets", "--set", "Top=1"]):
            with self.subTest(arguments):
                self.refuses("-d", "Morva", *arguments, status=2)

    def test_a_preset_that_cannot_be_written_is_an_error(self):
        home = self.temporary_folder()
        (home / "config").write_text("no folder")
        result = self.trim("-d", "Morva", "--save-preset", NAME, XDG_CONFIG_HOME=str(home / "config"))
        self.assertEqual(result.returncode, 1)
        self.assertIn(str(home / "config"), result.stderr)


if __name__ == "__main__":
    unittest.main()
