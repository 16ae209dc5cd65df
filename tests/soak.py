#!/usr/bin/python3
"""Runs the long tests for hours and counts their jobs, calls and inputs: soak.py HOURS [RUN ...]

Each run has new random values, except "requests", which makes the same choices each time.
The exit status is 1 if a run failed; build/soak then has its command and whole output. After each run its count is added to
build/soak/totals.json.
"""

import collections
import concurrent.futures
import dataclasses
import itertools
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys
import threading
import time

PROJECT = pathlib.Path(__file__).resolve().parents[1]
BUILD = PROJECT / "build/release"
LOGS = PROJECT / "build/soak"
TOTALS = LOGS / "totals.json"
UNITTEST = ("/usr/bin/python3", "-m", "unittest")


@dataclasses.dataclass(frozen=True)
class Run:
    """A few minutes of work: a command, its folder and variables, and the pattern of the count in its output."""

    command: tuple
    folder: str = ""
    variables: tuple = ()
    counted: str = r"\b(\d+) {}$"
    on_screen: bool = False


def many_jobs(name, case, folder, count, on_screen=False):
    """Two runs of the tests in volume_case.py: with whole connections, and with some that break."""

    def run(test, counted):
        return Run((*UNITTEST, f"{case}.test_{test}"), folder, (f"JOBS={count}",), counted, on_screen)

    return {
        name: run("every_job_reaches_its_filter_once_with_the_saved_options", r"^(\d+) jobs$"),
        f"broken-{name}": run("a_confirmed_job_is_printed_once_and_complete_even_if_connections_break", r"^(\d+) jobs over breaking connections$"),
    }


# The runs by name.
RUNS = {
    "sequences": Run((BUILD / "tests/sequences/tandemtrim_sequences_test",), "", ("SEQUENCES=1000000",), r"sequences of (\d+) calls"),
    **many_jobs("jobs", "test_volume.OneConnectionTest", "tests/e2e", 5000),
    **many_jobs("program-jobs", "test_volume.TerminalProgramTest", "tests/e2e", 5000),
    **many_jobs("dialog-jobs", "test_volume.DialogsTest", "tests/e2e", 5000),
    **many_jobs("portal-jobs", "test_many_prints.ManyPrintsTest", "tests/e2e/portal", 500, on_screen=True),
    "cuts": Run((*UNITTEST, "test_cut_jobs"), "tests/e2e", ("CUTS=200", "LARGE_CUTS=4")),
    "requests": Run((*UNITTEST, "test_clients_that_die"), "tests/e2e/portal", ("REQUESTS=1000",), on_screen=True),
    "failing-calls": Run((*UNITTEST, "test_one_failure"), "tests/e2e/shortage", ("FAILURES=2000",)),
    "inputs": Run((PROJECT / "fuzz/run.sh", "120"), "", (), r"number_of_executed_units: (\d+)"),
}


def command_of(run):
    wrapper = PROJECT / "tests/support" / ("on_own_screen.py" if run.on_screen else "surroundings.py")
    return [wrapper, f"TANDEM_TRIM_BUILD={BUILD}", *(f"TANDEM_TRIM_{each}" for each in run.variables), *run.command]


def read_totals():
    return collections.Counter(json.loads(TOTALS.read_text()) if TOTALS.exists() else {})


class Soak:
    def __init__(self, hours):
        self._end = time.monotonic() + 3600 * hours
        self._lock = threading.Lock()
        self._tried = collections.Counter()
        self._failed = []

    def work(self, names):
        """Does the named runs in turn until the time is over."""
        for name in names:
            if time.monotonic() >= self._end:
                return
            self._do(name, RUNS[name])

    def _do(self, name, run):
        result = subprocess.run(command_of(run), cwd=PROJECT / run.folder, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
        output = result.stdout.decode(errors="replace")
        with self._lock:
            self._count(name, sum(map(int, re.findall(run.counted.format(name.replace('-', ' ')), output, re.MULTILINE))))
            if result.returncode != 0:
                log = LOGS / f"{name}-{time.time_ns()}.log"
                log.write_text(f"cd {PROJECT / run.folder} && {shlex.join(map(str, command_of(run)))}\n{output}")
                self._failed.append(log)
                print(f"{name}: a run failed, see {log}", flush=True)

    def _count(self, name, count):
        self._tried[name] += count
        totals = read_totals()
        totals[name] += count
        TOTALS.write_text(json.dumps(totals, indent=2) + "\n")

    def report(self):
        """Prints the counts and returns the exit status."""
        for name, count in sorted(read_totals().items()):
            print(f"{name:>20}: {self._tried[name]:>14,}   in all {count:>16,}")
        print(f"{len(self._failed)} runs failed")
        if not self._tried.total():
            sys.exit("nothing was tried")
        return 1 if self._failed else 0


def main():
    hours, *names = sys.argv[1:] or ["1"]
    if unknown := [name for name in names if name not in RUNS]:
        sys.exit(f"there is no run {unknown[0]}; there are: {', '.join(RUNS)}")
    LOGS.mkdir(parents=True, exist_ok=True)
    soak = Soak(float(hours))
    workers = os.cpu_count()
    runs = list(names or RUNS)
    with concurrent.futures.ThreadPoolExecutor(workers) as pool:
        # Each worker begins with a different run, if there are enough.
        turns = [itertools.cycle(runs[first % len(runs) :] + runs[: first % len(runs)]) for first in range(workers)]
        list(pool.map(soak.work, turns))
    return soak.report()


if __name__ == "__main__":
    sys.exit(main())
