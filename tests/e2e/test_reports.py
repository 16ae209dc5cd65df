"""What the program shows instead of printing, or in addition."""

import json
import re
import shlex
import subprocess
import unicodedata
import unittest

from terminal_case import (
    ACTS_THAT_CHANGE,
    BUNDLE,
    CHANGED,
    DEFAULTS,
    LARGEST,
    MARGINS,
    POSITION,
    PPD,
    SAMPLE,
    VALID,
    TerminalCase,
    each,
    of_panel,
    option_text,
)

NO_SERVER = {"CUPS_SERVER": "127.0.0.1:1"}
ENGLISH = {"LANGUAGE": "en"}
SUMMARY = [
    ("Image Direction", "Short-Edge Feed"),
    ("Print Position", "Left"),
    ("Top Margin", "12"),
    ("Bottom Margin", "30"),
    ("Left Margin", "0"),
    ("Right Margin", "7"),
]


def lines(pairs):
    return "".join(f"{title}: {value}\n" for title, value in pairs)


class ReportsTest(TerminalCase):
    def shows(self, *arguments, **variables):
        """Runs the program, which must succeed and send nothing, and returns its output."""
        before = self.cups.jobs()
        result = self.trim(*arguments, **ENGLISH, **variables)
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual(self.cups.jobs(), before)
        return result.stdout

    def test_the_summary_lists_the_settings_in_display_order(self):
        changed = each("--set", ACTS_THAT_CHANGE)
        self.assertEqual(self.shows("-d", "Morva", "--summary", *changed), lines(SUMMARY))
        self.assertEqual(self.shows("-d", "Morva", "--summary"), "Use Tandem Trim: Off\n")

    def test_the_summary_follows_the_confirmation_of_a_printed_job(self):
        changed = each("--set", ACTS_THAT_CHANGE)
        result, (record,) = self.prints("-d", "Morva", "--summary", *changed, SAMPLE, **ENGLISH)
        request, confirmation, summary = result.stdout.split("\n", 2)
        self.assertEqual(request, f"request id is Morva-{record.job} (1 file(s))")
        self.assertRegex(confirmation, f"^job {record.job} on Morva: ")
        self.assertEqual(summary, lines(SUMMARY))

    def test_without_a_file_the_summary_and_the_options_are_shown_as_they_would_be_sent(self):
        foreign = option_text("x-note", "it's \"two\" words")
        shown = self.shows("-d", "Morva", "-o", foreign, "-o", "landscape", *each("--set", ACTS_THAT_CHANGE))
        self.assertTrue(shown.startswith(lines(SUMMARY)), shown)
        options = shlex.split(shown.removeprefix(lines(SUMMARY)))
        printed = self.options_of(*options)
        self.assertEqual(of_panel(printed), CHANGED)
        self.assertEqual((printed["x-note"], printed["landscape"]), ("it's \"two\" words", "true"))

    def test_json_has_settings_limits_and_summary(self):
        shown = json.loads(self.shows("-d", "Morva", "--json", "-o", "x-note=ü", *each("--set", ACTS_THAT_CHANGE)))
        self.assertEqual(shown["printer"], "Morva")
        self.assertEqual(of_panel(shown["settings"]), CHANGED)
        self.assertEqual(shown["settings"]["x-note"], "ü")
        self.assertEqual([(row["title"], row["value"]) for row in shown["summary"]], SUMMARY)
        limits = shown["limits"]
        for side, largest in LARGEST.items():
            self.assertEqual(limits[side], {"keyword": MARGINS[side], "min": 0, "max": largest})
        self.assertEqual(limits["Position"], {"keyword": POSITION, "choices": ["Left", "Center", "Right"]})
        self.assertEqual(limits["Valid"], {"keyword": VALID, "choices": ["On", "Off"]})
        self.assertNotIn("job", shown)

    def test_json_of_a_printed_job_names_the_job(self):
        before = self.cups.jobs()
        result = self.trim("-d", "Morva", "--json", SAMPLE)
        self.assertEqual(result.returncode, 0, result.stderr)
        (number,) = set(self.cups.jobs()) - set(before)
        job = json.loads(result.stdout)["job"]
        self.assertEqual((job["id"], job["lost"]), (number, []))
        self.assertEqual(job["confirmed"], job["options"])

    def test_a_ppd_from_a_file_needs_no_server(self):
        shown = json.loads(self.shows("--ppd", PPD, "--json", **NO_SERVER))
        self.assertEqual(shown["settings"], DEFAULTS)
        self.assertEqual(shown["limits"]["Bottom"]["max"], LARGEST["Bottom"])
        self.assertIn("Use Tandem Trim: Off\n", self.shows("--ppd", PPD, **NO_SERVER))

    def test_a_ppd_from_a_file_that_names_no_panel_is_reported(self):
        ppd = self.temporary_folder() / "plain.ppd"
        ppd.write_bytes(b"".join(line for line in PPD.read_bytes().splitlines(True) if b"APDialogExtension" not in line))
        for printer, name in (([], "the printer"), (["-d", "Lund"], "Lund")):
            result = self.trim("--ppd", ppd, *printer, "-o", "PageSize=A5", **NO_SERVER)
            self.assertEqual((result.returncode, result.stdout), (0, "-o PageSize=A5\n"))
            self.assertEqual(result.stderr, f"tandem-trim: {name} has no panel, since its PPD names none\n")

    def test_a_ppd_from_a_file_replaces_the_queues(self):
        ppd = self.temporary_folder() / "other.ppd"
        text = PPD.read_text(encoding="latin-1")
        ppd.write_text(text.replace('MaxTandemTrimMarginTop: "20"', 'MaxTandemTrimMarginTop: "3"'), encoding="latin-1")
        options = self.options_of("--ppd", ppd, "--set", "Valid=On", "--set", "Top=12")
        self.assertEqual(options[MARGINS["Top"]], "3")

    def test_the_option_plugin_takes_a_bundle_or_the_folder_that_contains_it(self):
        for plugin in (BUNDLE, BUNDLE.parent):
            with self.subTest(plugin=plugin):
                options = self.options_of("--plugin", plugin, TANDEM_TRIM_PLUGIN_PATH="")
                self.assertEqual(of_panel(options), DEFAULTS)

    def test_help_and_version_need_no_server(self):
        shown = self.shows("--help", **NO_SERVER)
        options = "-h -d -n -t -o --set --restore-defaults --summary --json --force --save-as-default --reset-defaults --ppd --plugin"
        for option in options.split():
            self.assertRegex(shown, rf"(?m)^ *{re.escape(option)}\b")
        self.assertRegex(self.shows("--version", **NO_SERVER), r"^tandem-trim \d+\.\d+\.\d+\n$")

    def test_a_terminal_gets_no_control_characters_from_anywhere(self):
        printer = "Mor\x9bva"  # with a control character outside ASCII, which the server accepts in a name
        self.cups.add_queue(printer, PPD)
        self.addCleanup(self.cups.remove, printer)
        note = "\x1b]0;mine\x07 it's\x7f\x9b\u202e"
        save = ["lpoptions", "-p", printer, "-o", option_text("x-note", note)]
        subprocess.run(save, env=self.environment(), capture_output=True, check=True)
        shown = self.shows("-d", printer)
        results = [shown, self.shows("-d", printer, "--json"), self.prints("-d", printer, SAMPLE)[0].stdout]
        results.append(self.trim("-d", printer, "--set", f"Top={note}").stderr)
        for result in results:
            self.assertEqual([character for character in result if unicodedata.category(character) in ("Cc", "Cf")], ["\n"] * result.count("\n"))
        self.assertEqual(json.loads(results[1])["settings"]["x-note"], note)
        (line,) = [line for line in shown.splitlines() if "x-note" in line]
        word = subprocess.run(["bash", "-c", f"printf %s {line.removeprefix('-o ')}"], capture_output=True, check=True).stdout.decode()
        self.assertEqual(word, option_text("x-note", note))

    def test_the_option_verbose_shows_the_log(self):
        quiet = self.trim("-d", "Morva")
        talkative = self.trim("-d", "Morva", "--verbose")
        self.assertEqual((quiet.returncode, quiet.stderr), (0, ""))
        self.assertEqual(talkative.returncode, 0)
        self.assertIn("MVTandemTrim", talkative.stderr)


if __name__ == "__main__":
    unittest.main()
