"""Tests of many jobs with random settings, for every way to send them: no job is lost or printed twice, and the filter gets each
confirmed job complete and with the saved options."""

import dataclasses
import json
import os
import pathlib
import random
import shutil
import subprocess
import sys

import private_cups
import surroundings
from cups_daemon import FILTER
from patience import until
from records import parse_options
from relay import OftenCut
from terminal_case import DEFAULTS, PPD, PROJECT, SAMPLE

PLANNER = surroundings.BUILD / "tests/e2e/tandemtrim_many_jobs"
JOBS = os.environ.get("TANDEM_TRIM_JOBS")
SEED = int(os.environ.get("TANDEM_TRIM_SEED", random.SystemRandom().randrange(1 << 32)))
PRINTERS = [f"Morva{number}" for number in range(4)]
MANY = 100  # with fewer jobs, a larger share of connections is cut
SEVERAL = 4  # programs or dialogs that print at the same time
MOST_FILES, MOST_OF_A_JOB = 1 << 22, 10_000  # bytes: the limit of the server's files, and what each job adds to it
MOST_LOG = 100_000  # characters of the server's log that a failure shows


@dataclasses.dataclass(frozen=True)
class Job:
    """A job that many_jobs.cpp has planned."""

    title: str
    printer: str
    arguments: tuple  # of the terminal program
    options: dict


@dataclasses.dataclass(frozen=True)
class Received:
    """A job as the filter received it."""

    number: int
    printer: str
    title: str
    size: int
    options: dict


class ManyJobs:
    """For a TerminalCase that implements sends()."""

    # By default, the server keeps the documents of printed jobs for a day.
    server_settings = "PreserveJobFiles No\n"

    # How many jobs are sent directly, and over a relay that breaks some connections.
    jobs = 1000
    broken_jobs = 100

    def setUp(self):
        super().setUp()
        shutil.copy(pathlib.Path(private_cups.__file__).with_name("line_filter.sh"), self.cups.folder / "programs/filter" / FILTER)
        for printer in PRINTERS:
            self.cups.add_queue(printer, PPD)

    def sends(self, jobs, environment):
        """Sends the jobs by programs with this environment. Returns the confirmed jobs as title -> number (None if the program does not
        say it), and what was said of the others as title -> text."""
        raise NotImplementedError

    def planned(self, count):
        command = [PLANNER, "plan", str(SEED), str(count), *PRINTERS]
        lines = subprocess.run(command, env=self.environment(), capture_output=True, check=True).stdout.splitlines()
        jobs = [Job(**json.loads(line)) for line in lines]
        for job in jobs:
            self.assertEqual(DEFAULTS.keys() - job.options.keys(), set())
        return jobs

    def received(self):
        """Yields the jobs that filters have received so far."""
        path = self.cups.folder / "records/lines"
        for line in path.read_text().splitlines() if path.exists() else []:
            number, printer, title, size, options = line.split("\t")
            yield Received(int(number), printer, title, int(size), parse_options(options))

    def left(self):
        """Waits while the server prints jobs, and returns those that it does not print."""
        while left := self.cups.jobs("not-completed"):
            try:
                until(lambda: self.cups.jobs("not-completed") != left, "the end of a job")
            except TimeoutError:
                break
        return left

    def repeating(self, count):
        """Returns the command that repeats the run."""
        test = pathlib.Path(sys.modules[type(self).__module__].__file__)
        wrapper = "on_own_screen.py" if "DISPLAY" in os.environ else "surroundings.py"
        return (
            f"To repeat it: cd {test.parent.relative_to(PROJECT)} && TANDEM_TRIM_SEED={SEED} {PROJECT}/tests/support/{wrapper} "
            f"TANDEM_TRIM_BUILD={surroundings.BUILD} TANDEM_TRIM_JOBS={count} /usr/bin/python3 -m unittest {self.id()}"
        )

    def faults(self, jobs, confirmed):
        """Yields a text for each difference between the confirmed jobs and those that the filters received."""
        planned = {job.title: job for job in jobs}
        received = {}
        for each in self.received():
            if each.title in received:
                yield f"printed twice: {each} and {received[each.title]}"
            elif each.title not in planned:
                yield f"sent by nobody: {each}"
            received[each.title] = each
        for title, number in confirmed.items():
            job, got = planned[title], received.get(title)
            if got is None:
                yield f"confirmed as job {number} and lost: {job}"
                continue
            kept = {keyword: got.options.get(keyword) for keyword in job.options}
            same_number = got.number if number is None else number
            if (same_number, job.printer, SAMPLE.stat().st_size, job.options) != (got.number, got.printer, got.size, kept):
                yield f"confirmed as job {number} and printed otherwise: {job}, {got}"

    def judge(self, jobs, confirmed, said, may_fail):
        """Waits for the jobs, then fails with all faults, the command that repeats the run, and the server's log."""
        faults = [f"left at the server: job {number}" for number in self.left()]
        faults += self.faults(jobs, confirmed)
        for job in jobs:
            if job.title not in confirmed and not (may_fail and said.get(job.title)):
                faults.append(f"neither confirmed nor refused with a message: {job}; said: {said.get(job.title)}")
        size = sum(file.stat().st_size for file in self.cups.folder.rglob("*") if file.is_file() and "records" not in file.parts)
        if size > MOST_FILES + MOST_OF_A_JOB * len(jobs):
            faults.append(f"the server's files have {size} bytes")
        if faults:
            others = [f"Said of {title}: {words}" for title, words in said.items()]
            self.fail("\n".join([f"{len(faults)} faults", *faults, self.repeating(len(jobs)), *others, self.cups.log()[-MOST_LOG:]]))

    def test_every_job_reaches_its_filter_once_with_the_saved_options(self):
        jobs = self.planned(int(JOBS or self.jobs))
        self.judge(jobs, *self.sends(jobs, self.environment()), may_fail=False)
        print(f"{len(jobs)} jobs")

    def test_a_confirmed_job_is_printed_once_and_complete_even_if_connections_break(self):
        jobs = self.planned(int(JOBS or self.broken_jobs))
        with OftenCut(self.cups.address, 20 if len(jobs) >= MANY else 4, SEED) as relay:
            confirmed, said = self.sends(jobs, self.environment(CUPS_SERVER=relay.address))
            self.judge(jobs, confirmed, said, may_fail=True)
        self.assertGreater(relay.cuts, 0)
        print(f"{len(jobs)} jobs over breaking connections")
        print(f"{relay.cuts} connections were cut, and {len(jobs) - len(confirmed)} of the jobs were not confirmed")
