#!/usr/bin/python3
"""Prints the sample document on a sample printer and shows the options that reached the printer's filter.

The print server is CUPS itself, started for this alone; it and its files are gone at the end.
"""

import argparse
import pathlib
import shlex
import subprocess
import sys

PROJECT = pathlib.Path(__file__).resolve().parents[1]
SAMPLES = PROJECT / "resources/sample"
PRINTER = "Morva"

# The panel's control, the option that it stands for and what is set.
SETTINGS = (
    ("Valid", "MVTandemTrim", "On"),
    ("Direction", "MVImageDirectionPriority", "ShortEdgeFeed"),
    ("Position", "MVPrintPosition", "Left"),
    ("Top", "MVTopMargin", "12"),
    ("Bottom", "MVBottomMargin", "8"),
    ("Left", "MVLeftMargin", "3"),
    ("Right", "MVRightMargin", "20"),
)

sys.path.insert(0, str(PROJECT / "tests/e2e"))
from private_cups import PrivateCups  # noqa: E402


def print_sample(cups, build):
    """Prints by the program as a person would, and gives whether it succeeded."""
    command = [build / "host/tandem-trim", "-d", PRINTER, "--plugin", build / "TandemTrim.bundle"]
    for control, _, value in SETTINGS:
        command += ["--set", f"{control}={value}"]
    command += ["--summary", SAMPLES / "sample.pdf"]
    print("$", shlex.join(map(str, command)), end="\n\n", flush=True)
    return subprocess.run(command, env=cups.environment(), check=False).returncode == 0


def compare(received):
    """Shows what was set beside what was received, and gives whether all of it is the same."""
    print("\nThe printer's filter received:\n")
    row = "  {:<9}  {:<25}  {:<14}  {:<14}  {}".format
    print(row("Setting", "Option", "Set", "Received", "").rstrip())
    for control, keyword, value in SETTINGS:
        arrived = received.get(keyword, "(nothing)")
        print(row(control, keyword, value, arrived, "ok" if arrived == value else "DIFFERENT"))
    return all(received.get(keyword) == value for _, keyword, value in SETTINGS)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--build", type=pathlib.Path, default=PROJECT / "build/release", help="the build folder")
    build = parser.parse_args().build.resolve()
    with PrivateCups() as cups:
        cups.add_queue(PRINTER, SAMPLES / "MorvaTandemKV2.ppd")
        if not print_sample(cups, build):
            return 1
        cups.wait_for_jobs()
        records = cups.records()
    return 0 if compare(records[0].options if records else {}) else 1


if __name__ == "__main__":
    sys.exit(main())
