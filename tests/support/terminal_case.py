"""Shared by the tests of the terminal program: a print server, the sample printer and ways to run the program."""

import hashlib
import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import time
import unittest

import surroundings
from patience import PATIENCE
from private_cups import PrivateCups

PROJECT = pathlib.Path(__file__).resolve().parents[2]
BUILD = surroundings.BUILD
PROGRAM = BUILD / "host/tandem-trim"
BUNDLE = BUILD / "TandemTrim.bundle"
PPD = PROJECT / "resources/sample/MorvaTandemKV2.ppd"
# The first line that the program prints about a job that the server has.
REQUEST = r"request id is \w+-\d+ \(\d+ file\(s\)\)\n"
# A change of the PPD, as (old, new): a smaller limit of the top margin.
SMALLER = ('*MVMaxTandemTrimMarginTop: "20"', '*MVMaxTandemTrimMarginTop: "8"')
SAMPLE = PROJECT / "resources/sample/sample.pdf"
# Another family of printers.
FOLDLINE = BUILD / "tests/second_family/Foldline.bundle"
FOLDLINE_PPD = PROJECT / "tests/second_family/foldline.ppd"

VALID, DIRECTION, POSITION = "MVTandemTrim", "MVImageDirectionPriority", "MVPrintPosition"
MARGINS = {side: f"MV{side}Margin" for side in ("Top", "Bottom", "Left", "Right")}
LARGEST = {"Top": 20, "Bottom": 30, "Left": 15, "Right": 25}  # of the sample printer
DEFAULTS = {VALID: "Off", DIRECTION: "LongEdgeFeed", POSITION: "Center"} | dict.fromkeys(MARGINS.values(), "5")

# A value other than the default for every option.
CHANGED = {
    VALID: "On",
    DIRECTION: "ShortEdgeFeed",
    POSITION: "Left",
    MARGINS["Top"]: "12",
    MARGINS["Bottom"]: "30",
    MARGINS["Left"]: "0",
    MARGINS["Right"]: "7",
}
ACTS_THAT_CHANGE = ["Valid=On", "Direction=ShortEdgeFeed", "Position=Left", "Top=12", "Bottom=30", "Left=0", "Right=7"]


def each(option, values):
    """The values as arguments, each after the same command-line option."""
    return [word for value in values for word in (option, value)]


def option_text(keyword, value):
    """The option as lp reads it from one argument of -o."""
    value = value.replace("\\", "\\\\").replace('"', '\\"')
    return f'{keyword}="{value}"'


# GLib's messages, except the program's own.
COMPLAINT = re.compile(
    r"^(?:(?:\*\* )?\([^()]+:\d+\): (?!tandem-trim-)(?:[\w-]+-)?(?:WARNING|CRITICAL|ERROR) \*\*|(?:\*\* |[\w-]+-)Message): .*", re.MULTILINE
)
# Messages that are not this program's fault.
FOREIGN = (
    "failed to contact colord",  # GTK asks services of the system bus, which tests do not have
    "Couldn't connect to D-Bus system bus",
    "minimum height for width of 1048576",  # what GTK says of a label that may wrap and has two scripts
)

# Words that help only a user at a terminal.
OF_TERMINALS = re.compile("LPDEST|lpstat|lpadmin|cupsenable|cupsaccept| -[a-zA-Z]\\b")


def complaints(said):
    """The lines of a program's error output in which GLib, the toolkit and libraries above them complain."""
    return [line for line in COMPLAINT.findall(said) if not any(words in line for words in FOREIGN)]


def digest(document):
    return hashlib.sha256(pathlib.Path(document).read_bytes()).hexdigest()


def of_panel(options):
    """The options of the panel."""
    return {keyword: value for keyword, value in options.items() if keyword in DEFAULTS}


class TerminalCase(unittest.TestCase):
    maxDiff = None
    server_settings = ""  # more lines for cupsd.conf

    @classmethod
    def setUpClass(cls):
        if not PROGRAM.exists():
            raise FileNotFoundError(f"{PROGRAM}: build it first, or name the build folder by TANDEM_TRIM_BUILD")
        cls.cups = PrivateCups(cls.server_settings)
        cls.addClassCleanup(cls.cups.stop)
        cls.cups.add_queue("Morva", PPD)

    def setUp(self):
        self.cups.forget()

    def temporary_folder(self):
        folder = pathlib.Path(tempfile.mkdtemp(prefix="tandem-trim-test-"))
        self.addCleanup(shutil.rmtree, folder)
        return folder

    def documents_of_many_kinds(self):
        """Adds the printer Any, which takes documents of these kinds unconverted, and returns one document of each."""
        folder = self.temporary_folder()
        contents = {
            "application/pdf": SAMPLE.read_bytes(),
            "application/postscript": b"%!PS-Adobe-3.0\nshowpage\n",
            "text/plain": b"Plain text\n",
            "image/png": (PROJECT / "docs/dialog.png").read_bytes(),
        }
        taken = '*cupsFilter: "application/pdf 0 morvatandem"\n'
        text = PPD.read_text()
        self.assertIn(taken, text)
        ppd = folder / "any.ppd"
        ppd.write_text(text.replace(taken, "".join(taken.replace("application/pdf", kind) for kind in contents)))
        self.cups.add_queue("Any", ppd)
        for kind, content in contents.items():
            (folder / kind.replace("/", ".")).write_bytes(content)
        return [folder / kind.replace("/", ".") for kind in contents]

    def environment(self, **more):
        around = surroundings.LANGUAGES[os.environ.get("TANDEM_TRIM_SURROUNDINGS", "english")]
        return self.cups.environment() | {"TANDEM_TRIM_PLUGIN_PATH": str(BUILD)} | around | more

    def trim(self, *arguments, program=PROGRAM, stdin=None, **variables):
        """Runs the program to its end, without standard input unless `stdin` is set, and returns its result with decoded texts."""
        result = subprocess.run(
            [program, *arguments],
            **({"stdin": subprocess.DEVNULL} if stdin is None else {"input": stdin}),
            capture_output=True,
            env=self.environment(**variables),
            timeout=PATIENCE,
            check=False,
        )
        result.stdout = result.stdout.decode()
        result.stderr = result.stderr.decode()
        self.assertEqual(complaints(result.stderr), [])
        return result

    def prints(self, *arguments, stdin=None, **variables):
        """Runs the program, which must succeed, and returns its result and the job's records."""
        result = self.trim(*arguments, stdin=stdin, **variables)
        self.assertEqual(result.returncode, 0, result.stderr)
        confirmation = re.search(r"^job (\d+) on ", result.stdout, re.MULTILINE)
        self.assertIsNotNone(confirmation, result.stdout + result.stderr)
        self.cups.wait_for_jobs()
        return result, [record for record in self.cups.records() if record.job == int(confirmation[1])]

    def options_of(self, *arguments, **variables):
        """Prints the sample document on Morva and returns the options that the filter received."""
        _, (record,) = self.prints("-d", "Morva", *arguments, SAMPLE, **variables)
        return record.options

    def assert_prints_with_the_panel(self, prefix):
        """Asserts that the program installed below the prefix prints with the panel installed beside it."""
        acts = each("--set", ACTS_THAT_CHANGE)
        options = self.options_of(*acts, program=prefix / "bin/tandem-trim", TANDEM_TRIM_PLUGIN_PATH="")
        self.assertEqual(of_panel(options), CHANGED)

    def refuses(self, *arguments, status=1, words=(), stdin=None, **variables):
        """Runs the program, which must exit with this status, print these words and send nothing. Returns its result."""
        before = self.cups.jobs()
        result = self.trim(*arguments, stdin=stdin, **variables)
        self.assertEqual(result.returncode, status, result.stdout + result.stderr)
        self.assertEqual(result.stdout, "")
        for word in words:
            self.assertIn(word, result.stderr)
        self.assertEqual(self.cups.jobs(), before, "a job was sent")
        self.assertEqual(self.cups.records(), [])
        return result

    def seconds(self, action):
        start = time.monotonic()
        action()
        return time.monotonic() - start
