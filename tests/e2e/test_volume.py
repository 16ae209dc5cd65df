"""Many jobs with random settings: each one's options as its filter saw them are those that were saved, and none is lost."""

import os
import pathlib
import random
import shutil
import subprocess
import unittest

from cups_daemon import FILTER
from patience import until
from records import parse_options
from terminal_case import BUILD, DEFAULTS, PPD, SAMPLE
import private_cups

SENDER = BUILD / "tests/e2e/tandemtrim_many_jobs"
JOBS = int(os.environ.get("TANDEM_TRIM_JOBS", 1000))
SEED = int(os.environ.get("TANDEM_TRIM_SEED", random.SystemRandom().randrange(1 << 32)))
PRINTERS = [f"Morva{number}" for number in range(4)]


class VolumeTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.cups = private_cups.PrivateCups()
        cls.addClassCleanup(cls.cups.stop)
        shutil.copy(pathlib.Path(private_cups.__file__).with_name("line_filter.sh"), cls.cups.folder / "programs/filter" / FILTER)
        for printer in PRINTERS:
            cls.cups.add_queue(printer, PPD)

    def seen(self):
        """What the filters have written so far, one text a job."""
        path = self.cups.folder / "records/lines"
        return path.read_text().splitlines() if path.exists() else []

    def wait_for(self, jobs):
        """Waits until so many jobs are printed, as long as there is any progress."""
        while (printed := len(self.seen())) < jobs:
            until(lambda: len(self.seen()) > printed, f"job {printed + 1} of {jobs}")
        self.cups.wait_for_jobs()

    def test_every_job_reaches_its_filter_once_with_what_was_saved(self):
        with self.subTest(TANDEM_TRIM_SEED=SEED):
            environment = self.cups.environment() | {"TANDEM_TRIM_PLUGIN_PATH": str(BUILD)}
            sent = subprocess.run(
                [SENDER, str(JOBS), str(SEED), SAMPLE, *PRINTERS], env=environment, capture_output=True, check=False
            )
            self.assertEqual((sent.returncode, sent.stderr.decode()), (0, ""))
            saved = {}
            for line in sent.stdout.decode().splitlines():
                job, printer, *options = line.split("\t")
                saved[job] = (printer, dict(option.split("=", 1) for option in options))
            self.assertEqual(len(saved), JOBS)

            self.wait_for(JOBS)
            received = [line.split("\t") for line in self.seen()]
            self.assertEqual(sorted(job for job, _, _ in received), sorted(saved))
            for job, printer, text in received:
                options = parse_options(text)
                kept = {keyword: options.get(keyword) for keyword in saved[job][1]}
                self.assertEqual((printer, kept), saved[job], f"job {job}")
                self.assertEqual(DEFAULTS.keys() - kept.keys(), set())


if __name__ == "__main__":
    unittest.main()
