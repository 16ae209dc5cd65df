"""Many jobs with random settings: no job is lost, and each filter gets the options that were saved."""

import os
import pathlib
import random
import shutil
import subprocess
import unittest

from cups_daemon import FILTER
from patience import until
from records import parse_options
from relay import OftenCut
from terminal_case import BUILD, DEFAULTS, PPD, SAMPLE
import private_cups

SENDER = BUILD / "tests/e2e/tandemtrim_many_jobs"
JOBS = int(os.environ.get("TANDEM_TRIM_JOBS", 1000))
BROKEN_JOBS = int(os.environ.get("TANDEM_TRIM_BROKEN_JOBS", 100))
SEED = int(os.environ.get("TANDEM_TRIM_SEED", random.SystemRandom().randrange(1 << 32)))
ONE_IN = 20  # one job in so many has a broken connection
NUMBER = "x-number"  # the option that identifies the sender's jobs
# Like line_filter.sh, with the document's size at the end of the line.
MEASURING_FILTER = """#!/bin/sh
[ $# -ge 5 ] && printf '%s\\t%s\\t%s\\t%s\\n' "$1" "$PRINTER" "$5" "$(cat "${6:--}" | wc -c)" >>"$TANDEM_TRIM_RECORDS/lines"
"""
PRINTERS = [f"Morva{number}" for number in range(4)]


class VolumeCase(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.cups = private_cups.PrivateCups()
        cls.addClassCleanup(cls.cups.stop)
        shutil.copy(pathlib.Path(private_cups.__file__).with_name("line_filter.sh"), cls.cups.folder / "programs/filter" / FILTER)
        for printer in PRINTERS:
            cls.cups.add_queue(printer, PPD)

    def sends(self, jobs, **more):
        """Sends so many jobs; returns what was saved for each, as (number, printer, options)."""
        environment = self.cups.environment() | {"TANDEM_TRIM_PLUGIN_PATH": str(BUILD)} | more
        sent = subprocess.run([SENDER, str(jobs), str(SEED), SAMPLE, *PRINTERS], env=environment, capture_output=True, check=False)
        self.assertEqual((sent.returncode, sent.stderr.decode()), (0, ""))
        lines = [line.split("\t") for line in sent.stdout.decode().splitlines()]
        return [(job, printer, dict(option.split("=", 1) for option in options)) for job, printer, *options in lines]

    def seen(self):
        """The lines that the filters have written so far, one for each job."""
        path = self.cups.folder / "records/lines"
        return path.read_text().splitlines() if path.exists() else []

    def wait_for(self, jobs):
        """Waits until so many jobs are printed. Fails only without progress."""
        while (printed := len(self.seen())) < jobs:
            until(lambda: len(self.seen()) > printed, f"job {printed + 1} of {jobs}")
        self.cups.wait_for_jobs()


class VolumeTest(VolumeCase):
    def test_every_job_reaches_its_filter_once_with_the_saved_options(self):
        with self.subTest(TANDEM_TRIM_SEED=SEED):
            saved = {job: (printer, options) for job, printer, options in self.sends(JOBS)}
            self.assertEqual(len(saved), JOBS)

            self.wait_for(JOBS)
            received = [line.split("\t") for line in self.seen()]
            self.assertEqual(sorted(job for job, _, _ in received), sorted(saved))
            for job, printer, text in received:
                options = parse_options(text)
                kept = {keyword: options.get(keyword) for keyword in saved[job][1]}
                self.assertEqual((printer, kept), saved[job], f"job {job}")
                self.assertEqual(DEFAULTS.keys() - kept.keys(), set())
        print(f"{JOBS} jobs")


class BrokenWayTest(VolumeCase):
    def test_a_confirmed_job_is_printed_once_and_complete_even_if_connections_break(self):
        (self.cups.folder / "programs/filter" / FILTER).write_text(MEASURING_FILTER)
        with self.subTest(TANDEM_TRIM_SEED=SEED), OftenCut(self.cups.address, ONE_IN, SEED) as relay:
            saved = self.sends(BROKEN_JOBS, CUPS_SERVER=relay.address, TANDEM_TRIM_BREAKS="1")
            self.cups.wait_for_jobs()
            received = {}
            for job, printer, text, size in (line.split("\t") for line in self.seen()):
                options = parse_options(text)
                self.assertNotIn(options[NUMBER], received, "printed twice")
                received[options[NUMBER]] = (job, printer, int(size), options)
            self.assertEqual(len(saved), BROKEN_JOBS)
            self.assertGreater(relay.cuts, 0)
            for job, printer, options in saved:
                if job == "failed":
                    continue
                self.assertIn(options[NUMBER], received, "lost")
                *where, all_options = received[options[NUMBER]]
                kept = {keyword: all_options.get(keyword) for keyword in options}
                self.assertEqual((*where, kept), (job, printer, SAMPLE.stat().st_size, options))
            failed = sum(job == "failed" for job, _, _ in saved)
            print(f"{BROKEN_JOBS} broken jobs\nof these {relay.cuts} connections were cut, and {failed} jobs were not confirmed")


if __name__ == "__main__":
    unittest.main()
