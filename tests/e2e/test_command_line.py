"""Wrong command lines end with status 2 and send nothing. The manual page's examples work."""

import functools
import os
import re
import shutil
import subprocess
import unittest

from patience import PATIENCE
from terminal_case import PPD, PROGRAM, PROJECT, SAMPLE, TerminalCase

# Examples with these words need another machine, a screen, another program or a desktop session.
ELSEWHERE = ("desk:631", "--dialog", "| jq", "--applications")

# Options that need no example: -c has no effect, -i is refused, and the others need no explanation.
NOT_SHOWN = {"-c", "-i", "--help", "--version", "--verbose", "--plugin"}

WRONG = {
    "an unknown name in --set": (["--set", "Middle=5"], ["--set Middle", "Top", "Position"]),
    "no name in --set": (["--set", "=5"], ["name=text"]),
    "no text in --set": (["--set", "Top"], ["--set", "Top", "name=text"]),
    "a label instead of a name": (["--set", "Valid=On", "--set", "Top Margin=5"], ["--set Top Margin"]),
    "a choice that the menu does not have": (
        ["--set", "Valid=On", "--set", "Position=Middle"],
        ["Position=Middle", "Left, Center, Right"],
    ),
    "a check box neither on nor off": (["--set", "Valid=Maybe"], ["Valid=Maybe", "On, Off"]),
    "an unknown option": (["--bogus"], ["--bogus", "--help"]),
    "an unknown short option": (["-z"], ["-z", "--help"]),
    "an -o without an option": (["-o", ""], ["-o"]),
    "an -o without a keyword": (["-o", "=5"], ["-o", "=5", "keyword=value"]),
    "an -o whose quote does not end": (["-o", 'x-note="two words'], ["-o", "quote", "keyword=value"]),
    "an -o whose brace does not end": (["-o", "media={a=1"], ["-o", "brace", "keyword=value"]),
    "no copies": (["-n", "0"], ["-n", "0"]),
    "copies that are not a number": (["-n", "two"], ["-n", "two"]),
    "a number of copies with more text after it": (["-n", "2x"], ["-n", "2x"]),
    "no priority": (["-q", "0"], ['-q "0"', "from 1 to 100"]),
    "too high a priority": (["-q", "101"], ['-q "101"', "from 1 to 100"]),
    "a priority that is not a number": (["-q", "7x"], ['-q "7x"', "from 1 to 100"]),
    "pages that are not numbers": (["-P", "banana"], ['-P "banana": "banana" is not a page', "1,3-5,16"]),
    "a list of pages with an empty place": (["-P", "1,,3"], ['-P "1,,3": a page is missing', "1,3-5,16"]),
    "pages from the last to the first": (["-P", "1,5-3"], ['-P "1,5-3": "5-3" is not a page or a range', "counted from 1"]),
    "a page before the first": (["-P", "0"], ['-P "0": "0" is not a page or a range', "counted from 1"]),
    "a time after 23:59": (["-H", "24:00"], ['-H "24:00"', "hold or immediate"]),
    "a word that is not a time": (["-H", "banana"], ['-H "banana"', "hold or immediate"]),
    "no server": (["-h", ""], ['-h "": no server is named', "host:port"]),
    "a port that is not a number": (["-h", "localhost:x"], ['-h "localhost:x": the port is not a number', "host:port"]),
    "no printer": (["-d", ""], ['-d "": no printer is named', "tandem-trim --list"]),
    "an instance without a printer": (["-d", "/x"], ['-d "/x": no printer is named', "printer/instance"]),
    "a job to resume": (["-H", "resume"], ["-H resume", "lp -i JOB -H resume"]),
    "a job to restart": (["-H", "restart"], ["-H restart", "lp -i JOB -H restart"]),
    "a job to change": (["-i", "Morva-12"], ["-i Morva-12", "lp -i Morva-12", "nothing was sent"]),
    "-o without its text": (["-o"], ["-o"]),
    "a word other than on, off and status": (["--applications", "yes"], ['--applications "yes"', "on, off or status"]),
    "all GTK programs while switching off": (["--applications", "off", "--all-gtk"], ["--all-gtk needs --applications on"]),
    "switching for applications beside a job": (["--applications", "on", "-d", "Morva"], ["leave -d, files out"]),
}


class CommandLineTest(TerminalCase):
    def test_a_wrong_command_line_is_refused_with_the_reason(self):
        for what, (arguments, words) in WRONG.items():
            with self.subTest(what):
                # The mistake comes last, so that it cannot take the file's name as its value.
                self.refuses("-d", "Morva", SAMPLE, *arguments, status=2, words=words)

    @functools.cache
    def options(self):
        return set(re.findall(r"^  (-[-\w]+)", self.trim("--help").stdout, re.MULTILINE))

    def test_the_manual_page_explains_every_option(self):
        page = (PROJECT / "docs/tandem-trim.1").read_text().replace("\\-", "-")
        synopsis, _, rest = page.partition(".SH SYNOPSIS")[2].partition(".SH ")
        explained = rest.partition(".SH EXAMPLES")[0]
        for place, text in {"the synopsis": synopsis, "the sections before the examples": explained}.items():
            missing = {option for option in self.options() if not re.search(rf"(?<![-\w]){option}(?![-\w])", text)}
            self.assertEqual(missing - {"-i"}, set(), f"missing in {place} of docs/tandem-trim.1")

    def test_the_examples_of_the_manual_page_work(self):
        examples = (PROJECT / "docs/tandem-trim.1").read_text().partition(".SH EXAMPLES")[2].partition(".SH ")[0]
        lines = [line.replace("\\-", "-").replace("\\(dq", '"').replace("\\e", "\\") for line in examples.splitlines() if "tandem-trim" in line]
        self.assertGreater(len(lines), 12)
        shown = {option for option in self.options() if any(f" {option}" in line for line in lines)}
        self.assertEqual(self.options() - shown, NOT_SHOWN, "each other option has an example in docs/tandem-trim.1")
        folder = self.temporary_folder()
        shutil.copy(PPD, folder)
        shutil.copy(SAMPLE, folder / "report.pdf")
        report = folder / "report"
        report.write_text("#!/bin/sh\ncat report.pdf\n")
        report.chmod(0o755)
        around = self.environment(PATH=f"{PROGRAM.parent}:{folder}:{os.defpath}")
        for line in lines:
            if any(words in line for words in ELSEWHERE):
                continue
            with self.subTest(line):
                done = subprocess.run(
                    ["sh", "-c", line], cwd=folder, stdin=subprocess.DEVNULL, capture_output=True, text=True, env=around, timeout=PATIENCE, check=False
                )
                self.assertEqual(done.returncode, 0, done.stderr)
                self.cups.cancel_all()


if __name__ == "__main__":
    unittest.main()
