"""The terminal program while one system call or one allocation fails: it does its task, or reports what is wrong and ends with a status
other than 0. It never crashes, loses a setting, leaves a half-written file, or reports an incomplete job as confirmed."""

import collections
import dataclasses
import errno
import itertools
import os
import random
import re
import subprocess
import time
import unittest

from patience import INTERVAL
from terminal_case import ACTS_THAT_CHANGE, BUILD, MARGINS, PPD, PROGRAM, SAMPLE, TerminalCase, each

LIBRARY = BUILD / "tests/e2e/libone_failure.so"
# A number of random failures; "all"; some kinds or uses ("malloc,print"); or one failure ("print/read 17 EIO"). The default is a fixed
# selection.
FAILURES = os.environ.get("TANDEM_TRIM_FAILURES", "150")
SEED = int(os.environ.get("TANDEM_TRIM_SEED", random.SystemRandom().randrange(1 << 32) if "TANDEM_TRIM_FAILURES" in os.environ else 1))
PATIENCE = 60  # seconds until a program counts as hanging
PATIENCE_WITH_JOBS = 8  # seconds until a job counts as left behind
# Messages about a job that is not, or may not be, printed completely.
PARTLY = re.compile("is incomplete: |lost: |could not be cancelled|was cancelled")
NO_PANEL = "no panel: "  # in the list of printers, before the reason
UNKNOWN = re.compile("may (still be printed|be left there)")  # the messages about a job that may be left behind
NOT_PRINTED = re.compile("nothing was (printed|sent)")
OF_LANGUAGE = re.compile(r"/(libone_failure|libc|libm|libstdc\+\+|libgcc_s|ld-linux[-\w]*)\.so")
# Newer versions of glibc print the first text, older ones the second. The program has no source in C.
OWN_ERROR_OF_GLIBC = re.compile(r"Fatal glibc error|^tandem-trim: \w+\.c:\d+: .*: Assertion ", re.MULTILINE)
MOST_LOG = 20_000  # characters of the server's log in a failure's message
NUMBER = re.compile(r"(Morva-|job )\d+")

ERRORS = {
    "open": (errno.EMFILE, errno.EIO, errno.EINTR),
    "read": (errno.EIO, errno.EINTR, errno.ECONNRESET),
    "write": (errno.ENOSPC, errno.EIO, errno.EINTR),
    "rename": (errno.ENOSPC, errno.EIO),
    "fsync": (errno.EIO, errno.ENOSPC),
    "connect": (errno.ECONNREFUSED, errno.EINTR, errno.ENETUNREACH),
    "mmap": (errno.ENOMEM,),
    "socket": (errno.EMFILE,),
    "fchmod": (errno.EIO,),
    "flock": (errno.ENOLCK, errno.EINTR),
    "getdents": (errno.EIO,),
    "stat": (errno.EIO, errno.ENOMEM),
    "unlink": (errno.EIO,),
    "mkdir": (errno.ENOSPC,),
    "malloc": (errno.ENOMEM,),
}

# FILLING is inserted before this line, so that a failing read can cut the PPD off there: it would be valid, but without limits.
LIMITS = "*MVMaxTandemTrimMarginTop:"
FILLING = "*% A line of a long file.\n" * 4000
SAVED = f"Dest Morva {MARGINS['Left']}=9\nDest Other media=a5\n"
PANEL_SETTINGS = each("--set", ["Valid=On", "Top=18"])
PRESET = ("-d", "Morva", "--preset", "Kept")
# Name of a use -> the program's arguments.
USES = {
    "print": ("-d", "Morva", *each("--set", ACTS_THAT_CHANGE[:-2]), SAMPLE),
    "print by a preset": (*PRESET, SAMPLE),
    "save as default": ("-d", "Morva", *PANEL_SETTINGS, "--save-as-default"),
    "reset defaults": ("-d", "Morva", "--reset-defaults"),
    "summary": ("-d", "Morva", "--summary"),
    "json": (*PRESET, "--json"),
    "list": ("--list",),
    "save a preset": ("-d", "Morva", *PANEL_SETTINGS, "--save-preset", "New"),
    "replace a preset": ("-d", "Morva", *PANEL_SETTINGS, "--save-preset", "Kept"),
    "delete a preset": ("-d", "Morva", "--delete-preset", "Kept"),
    "list presets": ("-d", "Morva", "--list-presets"),
}


@dataclasses.dataclass(frozen=True)
class Failing:
    """A failure to try: during `use`, call number `number` of this kind fails with this error."""

    use: str
    kind: str
    number: int
    error: int

    @classmethod
    def read(cls, text):
        use, call = text.split("/")
        kind, number, error = call.split()
        return cls(use, kind, int(number), getattr(errno, error))

    def __str__(self):
        return f"{self.use}/{self.kind} {self.number} {errno.errorcode[self.error]}"

    def call(self):
        """The call as the library reads it."""
        return f"{self.kind} {self.number} {self.error}"


def spread(failures, count):
    """Selects `count` failures at random, in turn from each pair of a use and a kind, so that even a few include every kind of call."""
    by_kind = collections.defaultdict(list)
    for failing in random.Random(SEED).sample(failures, len(failures)):
        by_kind[failing.use, failing.kind].append(failing)
    in_turn = itertools.chain(*itertools.zip_longest(*by_kind.values()))
    return list(itertools.islice(filter(None, in_turn), count))


@dataclasses.dataclass
class Outcome:
    """A run's status, output and error output, the files with their contents, the jobs as the filter got them, and the jobs that still
    wait at the server."""

    status: int
    said: str
    complained: str
    files: dict
    printed: list
    left: list


class OneFailureTest(TerminalCase):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        ppd = cls.cups.folder / "long.ppd"
        ppd.write_text(PPD.read_text().replace(LIMITS, FILLING + LIMITS))
        cls.cups.add_queue("Morva", ppd)

    def setUp(self):
        super().setUp()
        self.home = self.cups.folder / "home"
        self.counts = self.temporary_folder() / "counts"
        self.save(SAVED)
        saved = self.trim("-d", "Morva", *each("--set", ["Valid=On", "Bottom=11"]), "--save-preset", "Kept")
        self.assertEqual(saved.returncode, 0, saved.stderr)
        self.kept = self.files()

    def save(self, saved):
        (self.home / ".cups").mkdir(exist_ok=True)
        (self.home / ".cups/lpoptions").write_text(saved)

    def files(self):
        return {
            str(path.relative_to(self.home)): path.read_text() for path in self.home.rglob("*") if path.is_file() and path.suffix != ".lock"
        }

    def restore(self):
        """Restores the files as they were before the first run."""
        for name, text in self.files().items():
            if self.kept.get(name) != text:
                (self.home / name).unlink()
        for name, text in self.kept.items():
            (self.home / name).write_text(text)

    def run_with(self, use, failing="", **more):
        """Runs the program for this use while the given call fails."""
        self.restore()
        variables = {"LD_PRELOAD": str(LIBRARY), "TANDEM_TRIM_TIMEOUT": "2", "TANDEM_TRIM_CALLS": str(self.counts)}
        variables |= {"TANDEM_TRIM_FAILING": failing} | more
        result = subprocess.run(
            [PROGRAM, *USES[use]],
            stdin=subprocess.DEVNULL,
            capture_output=True,
            env=self.environment(**variables),
            timeout=PATIENCE,
            check=False,
        )
        left = self.jobs_that_wait()
        printed = [(record.sha256, record.options) for record in self.cups.records()]
        for file in (self.cups.folder / "records").iterdir():
            file.unlink()
        said = NUMBER.sub(r"\1N", result.stdout.decode())
        for _, options in printed:
            for name in [name for name in options if name.startswith(("job-", "document-name")) or "time-at" in name]:
                del options[name]
        return Outcome(result.returncode, said, result.stderr.decode(), self.files(), printed, left)

    def jobs_that_wait(self):
        """Returns the jobs that the server does not print in time, and cancels them."""
        end = time.monotonic() + PATIENCE_WITH_JOBS
        while (left := self.cups.jobs("not-completed")) and time.monotonic() < end:
            time.sleep(INTERVAL)
        self.cups.cancel_all()
        return left

    def counted(self):
        counts = {}
        for line in self.counts.read_text().splitlines():
            kind, count = line.split()
            counts[kind] = counts.get(kind, 0) + int(count)
        return counts

    def expected(self, use):
        """The outcome without a failure."""
        outcome = self.run_with(use)
        self.assertEqual(outcome.status, 0, outcome.complained)
        return outcome

    def failures(self, expected):
        """All failures of all uses. Stores the outcome without a failure in `expected`."""
        for use in USES:
            expected[use] = self.expected(use)
            counts = self.counted()
            self.run_with(use, "malloc 0 0")
            counts["malloc"] = self.counted()["malloc"]
            for kind, count in counts.items():
                yield from itertools.starmap(Failing, itertools.product([use], [kind], range(1, count + 1), ERRORS[kind]))

    def selected(self, expected):
        """The failures that TANDEM_TRIM_FAILURES selects."""
        if "/" in FAILURES:
            failing = Failing.read(FAILURES)
            expected[failing.use] = self.expected(failing.use)
            return [failing]
        failures = list(self.failures(expected))
        if FAILURES.isdigit():
            return spread(failures, int(FAILURES))
        words = FAILURES.split(",")
        return [failing for failing in failures if FAILURES == "all" or failing.use in words or failing.kind in words]

    @staticmethod
    def crashed_elsewhere(complained):
        """Whether a system library crashed. For a crash in a C or C++ library, its caller counts, unless glibc reports its own error."""
        if OWN_ERROR_OF_GLIBC.search(complained):
            return True
        modules = re.findall(r"^(/\S+)\(", complained, re.MULTILINE)
        at_work = [module for module in modules if not OF_LANGUAGE.search(module)]
        return bool(at_work) and not at_work[0].startswith(str(BUILD))

    def judge(self, outcome, expected):
        """Why the outcome is not acceptable; None if it is."""
        if "CRASH" in outcome.complained or outcome.status < 0:
            return None if self.crashed_elsewhere(outcome.complained) else "it crashed"
        if outcome.left and not UNKNOWN.search(outcome.complained):
            return "a job is left behind"
        if outcome.status == 0:
            if outcome.printed != expected.printed:
                return "the filter did not get the job that it reports as printed"
            if outcome.files != expected.files:
                return "it reports success, but the files are wrong"
            if outcome.said != expected.said and not outcome.complained and NO_PANEL not in outcome.said:
                return "its output differs without an error, and it ends with 0"
            return None
        if not outcome.complained:
            return "it does not say why it fails"
        if outcome.files not in (self.kept, expected.files):
            return "the files are neither the old ones nor the new"
        if outcome.printed and NOT_PRINTED.search(outcome.complained):
            return "it reports a printed job as not printed"
        if outcome.printed and outcome.printed != expected.printed and not PARTLY.search(outcome.complained):
            return "it printed something else"
        return None

    def test_one_failure_is_survived_or_reported(self):
        expected = {}
        failures = self.selected(expected)
        for failing in failures:
            # With this variable, the test tries only that failure.
            with self.subTest(TANDEM_TRIM_FAILURES=str(failing)):
                outcome = self.run_with(failing.use, failing.call())
                if fault := self.judge(outcome, expected[failing.use]):
                    again = self.run_with(failing.use, failing.call(), TANDEM_TRIM_WHERE="1")
                    usual, log = expected[failing.use], self.cups.log()[-MOST_LOG:]
                    self.fail(f"{fault}: {outcome}\nwithout a failure: {usual}\nonce more, with the failing call: {again}\n{log}")
        print(f"{len(failures)} failing calls")


if __name__ == "__main__":
    unittest.main()
