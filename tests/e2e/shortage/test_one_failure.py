"""The terminal program while one call of the system, or one allocation, fails: it does what was asked for, or says what is wrong and ends
with another status than 0. It never crashes, loses a setting, leaves a file that is half written, or calls a job confirmed that the server
does not hold whole."""

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
# How many failures, chosen at random; "all", or those of some kinds or uses: "malloc", "print". Without it a few, the same ones each time.
FAILURES = os.environ.get("TANDEM_TRIM_FAILURES", "150")
SEED = int(os.environ.get("TANDEM_TRIM_SEED", random.SystemRandom().randrange(1 << 32) if "TANDEM_TRIM_FAILURES" in os.environ else 1))
PATIENCE = 60  # seconds until a program counts as hanging
PATIENCE_WITH_JOBS = 8  # seconds until a job counts as left behind
# What is said of a job that is not, or may not be, printed whole.
PARTLY = re.compile("is incomplete: |lost: |could not be cancelled|was cancelled")
NO_PANEL = "no panel: "  # what the list of printers says of one, with the reason
UNKNOWN = re.compile("may (still be printed|wait there)")  # what is said of a job that may be left behind
LIES = re.compile("nothing was (printed|sent)")
OF_LANGUAGE = re.compile(r"/(libone_failure|libc|libm|libstdc\+\+|libgcc_s|ld-linux[-\w]*)\.so")
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

# Its beginning is a PPD by itself, without the limits.
LIMITS = "*MVMaxTandemTrimMarginTop:"
FILLING = "*% A line of a long file.\n" * 4000
SAVED = f"Dest Morva {MARGINS['Left']}=9\nDest Other media=a5\n"
WISHES = each("--set", ["Valid=On", "Top=18"])
PRESET = ("-d", "Morva", "--preset", "Kept")
# What a user does, by its name: the arguments.
USES = {
    "print": ("-d", "Morva", *each("--set", ACTS_THAT_CHANGE[:-2]), SAMPLE),
    "print by a preset": (*PRESET, SAMPLE),
    "save as default": ("-d", "Morva", *WISHES, "--save-as-default"),
    "reset defaults": ("-d", "Morva", "--reset-defaults"),
    "summary": ("-d", "Morva", "--summary"),
    "json": (*PRESET, "--json"),
    "list": ("--list",),
    "save a preset": ("-d", "Morva", *WISHES, "--save-preset", "New"),
    "save another under its name": ("-d", "Morva", *WISHES, "--save-preset", "Kept"),
    "delete a preset": ("-d", "Morva", "--delete-preset", "Kept"),
    "list presets": ("-d", "Morva", "--list-presets"),
}


@dataclasses.dataclass
class Outcome:
    """What a run of the program says, and what it leaves behind: files with their contents, jobs as their
    filter got them, jobs that wait at the server."""

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
        self.keep(SAVED)
        saved = self.trim("-d", "Morva", *each("--set", ["Valid=On", "Bottom=11"]), "--save-preset", "Kept")
        self.assertEqual(saved.returncode, 0, saved.stderr)
        self.kept = self.files()

    def keep(self, saved):
        (self.home / ".cups").mkdir(exist_ok=True)
        (self.home / ".cups/lpoptions").write_text(saved)

    def files(self):
        return {
            str(path.relative_to(self.home)): path.read_text() for path in self.home.rglob("*") if path.is_file() and path.suffix != ".lock"
        }

    def restore(self):
        """Makes the files what they were before the first run."""
        for name, text in self.files().items():
            if self.kept.get(name) != text:
                (self.home / name).unlink()
        for name, text in self.kept.items():
            (self.home / name).write_text(text)

    def run_with(self, use, failing="", **more):
        """Does it while this call fails."""
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
        """The jobs that are not printed though the server has had the time for it; they are cancelled."""
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

    def failures(self, expected):
        """All failures of all uses as (use, kind, number, error)."""
        for use in USES:
            expected[use] = self.run_with(use)
            self.assertEqual(expected[use].status, 0, expected[use].complained)
            counts = self.counted()
            self.run_with(use, "malloc 0 0")
            counts["malloc"] = self.counted()["malloc"]
            for kind, count in counts.items():
                yield from itertools.product([use], [kind], range(1, count + 1), ERRORS[kind])

    @staticmethod
    def crashed_elsewhere(complained):
        """Whether a library of the system crashed. Those of the language are at work for whoever called them, unless they say it is them."""
        if "Fatal glibc error" in complained:
            return True
        modules = re.findall(r"^(/\S+)\(", complained, re.MULTILINE)
        at_work = [module for module in modules if not OF_LANGUAGE.search(module)]
        return bool(at_work) and not at_work[0].startswith(str(BUILD))

    def judge(self, outcome, expected):
        """Why the outcome is none that a user may get; none if it is."""
        if "CRASH" in outcome.complained or outcome.status < 0:
            return None if self.crashed_elsewhere(outcome.complained) else "it crashed"
        if outcome.left and not UNKNOWN.search(outcome.complained):
            return "a job is left behind"
        if outcome.status == 0:
            if outcome.printed != expected.printed:
                return "what is called printed is not"
            if outcome.files != expected.files:
                return "what is called kept is not"
            if outcome.said != expected.said and not outcome.complained and NO_PANEL not in outcome.said:
                return "it says something else, and ends with 0"
            return None
        if not outcome.complained:
            return "it does not say why it fails"
        if outcome.files not in (self.kept, expected.files):
            return "the files are neither the old ones nor the new"
        if outcome.printed and LIES.search(outcome.complained):
            return "it printed what it calls not printed"
        if outcome.printed and outcome.printed != expected.printed and not PARTLY.search(outcome.complained):
            return "it printed something else"
        return None

    def test_one_failure_is_survived_or_told(self):
        expected = {}
        failures = list(self.failures(expected))
        if FAILURES.isdigit():
            failures = random.Random(SEED).sample(failures, int(FAILURES))
        elif FAILURES != "all":
            failures = [failure for failure in failures if any(word in failure[:2] for word in FAILURES.split(","))]
        for use, kind, number, error in failures:
            with self.subTest(use=use, failing=f"{kind} {number} {errno.errorcode[error]}", TANDEM_TRIM_SEED=SEED):
                outcome = self.run_with(use, f"{kind} {number} {error}")
                fault = self.judge(outcome, expected[use])
                if fault:
                    where = self.run_with(use, f"{kind} {number} {error}", TANDEM_TRIM_WHERE="1").complained
                    said = outcome.said[-400:] + outcome.complained[-4000:]
                    self.fail(f"{fault}: status {outcome.status}, {said}\nThe failing call: {where[:4000]}")
        print(f"{len(failures)} failing calls")


if __name__ == "__main__":
    unittest.main()
