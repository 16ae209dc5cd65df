#!/usr/bin/python3
"""A temporary CUPS server: a free port, temporary folders, and printers that record their jobs.

As a command it runs one program against such a server and then prints what the server's printers received:

    ./private_cups.py MorvaTandemKV2.ppd -- lp -d Morva -o PageSize=A4 sample.pdf
"""

import argparse
import dataclasses
import getpass
import json
import pathlib
import shutil
import subprocess
import sys
import urllib.parse

# Run as a command, this file lacks the tests' module path.
sys.path.append(str(pathlib.Path(__file__).resolve().parents[1]))

import ipp  # noqa: E402
import surroundings  # noqa: E402
from cups_daemon import BACKEND, PATH, CupsDaemon  # noqa: E402
from patience import until  # noqa: E402
from records import read_records  # noqa: E402

NOWHERE = "file:///dev/null"
RECORDER = f"{BACKEND}:/paper"


class PrivateCups(CupsDaemon):
    """A CUPS daemon with operations on its printers and jobs."""

    # Its printers.

    def _printer(self, name):
        return (ipp.URI, "printer-uri", f"ipp://localhost/printers/{urllib.parse.quote(name)}")

    def add_queue(self, name, ppd=None, accepting=True, enabled=True, device=None):
        """Adds or changes a printer. With a PPD, the PPD's filter records the jobs; without one, the backend does."""
        settings = (
            (ipp.URI, "device-uri", device or (NOWHERE if ppd else RECORDER)),
            (ipp.BOOLEAN, "printer-is-accepting-jobs", accepting),
            (ipp.ENUM, "printer-state", 3 if enabled else 5),
        )
        data = pathlib.Path(ppd).read_bytes() if ppd else b""
        ipp.ask(self.address, ipp.ADD_PRINTER, [self._printer(name)], settings, "/admin/", data)

    def remove(self, name):
        ipp.ask(self.address, ipp.DELETE_PRINTER, [self._printer(name)], path="/admin/")

    def ppd_of(self, name):
        """The file in which the server keeps the printer's PPD."""
        return self.folder / f"server/ppd/{name}.ppd"

    def keys(self):
        """The files of the server's certificate and its key, once it has encrypted a connection."""
        return [next((self.folder / "keys").glob(f"*.{kind}")) for kind in ("crt", "key")]

    # Its clients and jobs.

    def environment(self):
        """The variables of a program that prints here, without any of the user's settings."""
        home = str(self.folder / "home")
        return surroundings.of_this_test(surroundings.SHARED) | {
            "PATH": PATH,
            "HOME": home,
            "LANG": "C.UTF-8",
            "TMPDIR": home,
            "CUPS_SERVER": f"{self.address[0]}:{self.address[1]}",
            "CUPS_SERVERROOT": home,  # the folder of the options saved for all users
        }

    def jobs(self, which="all"):
        """The numbers of the server's jobs ("all", "completed" or "not-completed")."""
        attributes = [
            (ipp.URI, "printer-uri", "ipp://localhost/"),
            (ipp.NAME, "requesting-user-name", getpass.getuser()),
            (ipp.KEYWORD, "requested-attributes", "job-id"),
            (ipp.KEYWORD, "which-jobs", which),
        ]
        return sorted(job["job-id"][0] for job in ipp.ask(self.address, ipp.GET_JOBS, attributes) if job)

    def wait_for_jobs(self):
        """Waits until no job is left to print."""
        try:
            until(lambda: not self.jobs("not-completed"), "the end of all jobs")
        except TimeoutError as error:
            raise TimeoutError(f"{error}; the server's log:\n{self.log()[-4000:]}") from None

    def cancel_all(self):
        """Cancels all jobs that are not printed yet."""
        for job in self.jobs("not-completed"):
            attributes = [
                (ipp.URI, "job-uri", f"ipp://localhost/jobs/{job}"),
                (ipp.NAME, "requesting-user-name", getpass.getuser()),
            ]
            try:
                ipp.ask(self.address, ipp.CANCEL_JOB, attributes, path="/jobs/")
            except ipp.IppError:
                pass  # the job has ended

    def records(self):
        return read_records(self.folder / "records")

    def forget(self):
        """Cancels all jobs, waits for their filters, which may be writing records, and clears the records and the clients' home folder."""
        self.cancel_all()
        self.wait_for_jobs()
        for name in ("records", "home"):
            for path in (self.folder / name).iterdir():
                shutil.rmtree(path) if path.is_dir() else path.unlink()


def main():
    parser = argparse.ArgumentParser(description="Run a program against a private CUPS server.")
    parser.add_argument("ppd", help="the PPD of the printer Morva")
    parser.add_argument("command", nargs="+")
    arguments = parser.parse_args()
    with PrivateCups() as cups:
        cups.add_queue("Morva", arguments.ppd)
        status = subprocess.run(arguments.command, env=cups.environment(), check=False).returncode
        cups.wait_for_jobs()
        for record in cups.records():
            print(json.dumps(dataclasses.asdict(record)))
    return status


if __name__ == "__main__":
    sys.exit(main())
