#!/usr/bin/python3
"""A CUPS server of one's own for a short time: a free port, temporary folders, printers that record what they get.

As a command it runs one program against such a server and then shows what the printer "Morva" received:

    ./private_cups.py MorvaTandemKV2.ppd -- lp -d Morva -o PageSize=A4 sample.pdf
"""

import argparse
import dataclasses
import getpass
import grp
import json
import os
import pathlib
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import time

import ipp
from records import read_records

SYSTEM_DAEMON = pathlib.Path("/usr/sbin/cupsd")
SYSTEM_PROGRAMS = pathlib.Path("/usr/lib/cups")
FILTER = "morvatandem"  # as the sample printer's PPD names it
BACKEND = "recorder"
NOWHERE = "file:///dev/null"
RECORDER = f"{BACKEND}:/paper"
HOST = "127.0.0.1"
ATTEMPTS = 5
PATIENCE = 30  # seconds until the server or a job counts as stuck
INTERVAL = 0.02  # seconds between two looks
KEPT_VARIABLES = ("ASAN_", "UBSAN_", "LSAN_", "GCOV_")

SERVER_SETTINGS = """\
Listen {host}:{port}
Browsing Off
WebInterface No
DefaultAuthType None
LogLevel info
MaxLogSize 0
MaxJobs 0
MaxClients 500
<Location />
Order allow,deny
Allow all
</Location>
<Policy default>
JobPrivateAccess all
JobPrivateValues none
SubscriptionPrivateAccess all
SubscriptionPrivateValues none
<Limit All>
Order allow,deny
Allow all
</Limit>
</Policy>
"""

FILE_SETTINGS = """\
User {user}
Group {group}
SystemGroup sys
FileDevice Yes
FatalErrors config listen
ServerRoot {folder}/server
ServerBin {folder}/programs
RequestRoot {folder}/spool
TempDir {folder}/spool/tmp
CacheDir {folder}/cache
StateDir {folder}/state
AccessLog {folder}/access_log
ErrorLog {folder}/error_log
PageLog {folder}/page_log
Printcap {folder}/printcap
SetEnv TANDEM_TRIM_RECORDS {folder}/records
"""


def until(condition, what):
    """The first true value of condition(); TimeoutError that names `what` when there is none in time."""
    deadline = time.monotonic() + PATIENCE
    while not (value := condition()):
        if time.monotonic() > deadline:
            raise TimeoutError(f"{what}: not within {PATIENCE} seconds")
        time.sleep(INTERVAL)
    return value


def free_port():
    with socket.socket() as probe:
        probe.bind((HOST, 0))
        return probe.getsockname()[1]


class PrivateCups:
    """Runs between `with` and its end; root or an ordinary user may start it."""

    def __init__(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="private-cups-"))
        self.address = None
        self._server = None
        self._frozen = False
        try:
            self._prepare()
            self._start()
        except BaseException:
            self.stop()
            raise

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.stop()

    # The server.

    def _prepare(self):
        self.folder.chmod(0o755)  # root's server runs filters as another user
        for name in ("server", "spool", "spool/tmp", "cache", "state", "records", "home", "programs"):
            (self.folder / name).mkdir()
        (self.folder / "records").chmod(0o1777)
        for name in ("filter", "backend"):
            target = self.folder / "programs" / name
            target.mkdir()
            for program in (SYSTEM_PROGRAMS / name).iterdir():
                (target / program.name).symlink_to(program)
        for name in ("daemon", "notifier", "monitor"):
            (self.folder / "programs" / name).symlink_to(SYSTEM_PROGRAMS / name)
        for name in (f"filter/{FILTER}", f"backend/{BACKEND}"):
            recorder = self.folder / "programs" / name
            shutil.copyfile(pathlib.Path(__file__).with_name("recording_filter.py"), recorder)
            recorder.chmod(0o755)
        # A system profile goes by the daemon's path.
        shutil.copy(SYSTEM_DAEMON, self.folder / "cupsd")
        root = os.geteuid() == 0
        settings = FILE_SETTINGS.format(
            folder=self.folder,
            user="lp" if root else getpass.getuser(),
            group="lp" if root else grp.getgrgid(os.getegid()).gr_name,
        )
        (self.folder / "cups-files.conf").write_text(settings)

    def _start(self):
        for _ in range(ATTEMPTS):
            self.address = (HOST, free_port())
            (self.folder / "cupsd.conf").write_text(SERVER_SETTINGS.format(host=HOST, port=self.address[1]))
            command = [self.folder / "cupsd", "-f", "-c", self.folder / "cupsd.conf"]
            command += ["-s", self.folder / "cups-files.conf"]
            # The server ends with its starter, however that ends.
            with open(self.folder / "output", "ab") as output:
                self._server = subprocess.Popen(
                    ["setpriv", "--pdeathsig", "TERM", *command],
                    stdin=subprocess.DEVNULL,
                    stdout=output,
                    stderr=output,
                    start_new_session=True,
                    env={"PATH": "/usr/bin:/bin:/usr/sbin:/sbin", "LANG": "C.UTF-8"},
                )
            if until(lambda: self._server.poll() is not None or self._answers(), "the start of cupsd"):
                if self._server.poll() is None:
                    return
        # Another program took each port in the meantime, or the settings are wrong.
        raise RuntimeError(f"cupsd does not start:\n{(self.folder / 'output').read_text()}{self.log()}")

    def _answers(self):
        try:
            ipp.ask(self.address, ipp.GET_PRINTERS)
        except ipp.IppError:
            return True  # it has no printer yet
        except OSError:
            return False
        return True

    def freeze(self):
        """From now on the server neither works nor answers, but its port stays open."""
        self._server.send_signal(signal.SIGSTOP)
        self._frozen = True

    def thaw(self):
        self._server.send_signal(signal.SIGCONT)
        self._frozen = False

    def stop(self):
        """Ends the server and removes all its files."""
        if self._server is not None and self._server.poll() is None:
            if self._frozen:
                self.thaw()
            self._server.terminate()
            try:
                self._server.wait(PATIENCE)
            except subprocess.TimeoutExpired:
                self._server.kill()
                self._server.wait()
        shutil.rmtree(self.folder, ignore_errors=True)

    def log(self):
        path = self.folder / "error_log"
        return path.read_text(errors="replace") if path.exists() else ""

    # Its printers.

    def _printer(self, name):
        return (ipp.URI, "printer-uri", f"ipp://localhost/printers/{name}")

    def add_queue(self, name, ppd=None, accepting=True, enabled=True, device=None):
        """Adds or changes a printer. Without a PPD its backend records the jobs, else the PPD's filter does."""
        settings = (
            (ipp.URI, "device-uri", device or (NOWHERE if ppd else RECORDER)),
            (ipp.BOOLEAN, "printer-is-accepting-jobs", accepting),
            (ipp.ENUM, "printer-state", 3 if enabled else 5),
        )
        data = pathlib.Path(ppd).read_bytes() if ppd else b""
        ipp.ask(self.address, ipp.ADD_PRINTER, [self._printer(name)], settings, "/admin/", data)

    def remove(self, name):
        ipp.ask(self.address, ipp.DELETE_PRINTER, [self._printer(name)], path="/admin/")

    # Its clients and jobs.

    def environment(self):
        """The variables of a program that is to print here, with nothing of the user's own settings."""
        home = str(self.folder / "home")
        variables = {name: value for name, value in os.environ.items() if name.startswith(KEPT_VARIABLES)}
        return variables | {
            "PATH": "/usr/bin:/bin:/usr/sbin:/sbin",
            "HOME": home,
            "LANG": "C.UTF-8",
            "TMPDIR": home,
            "CUPS_SERVER": f"{self.address[0]}:{self.address[1]}",
            "CUPS_SERVERROOT": home,  # where root's saved options are
        }

    def jobs(self, which="all"):
        """The numbers of the jobs that the server knows ("all", "completed", "not-completed")."""
        attributes = [
            (ipp.URI, "printer-uri", "ipp://localhost/"),
            (ipp.NAME, "requesting-user-name", getpass.getuser()),
            (ipp.KEYWORD, "requested-attributes", "job-id"),
            (ipp.KEYWORD, "which-jobs", which),
        ]
        return sorted(job["job-id"][0] for job in ipp.ask(self.address, ipp.GET_JOBS, attributes) if job)

    def wait_for_jobs(self):
        """Waits until no job is left to print."""
        until(lambda: not self.jobs("not-completed"), "the end of all jobs")

    def records(self):
        return read_records(self.folder / "records")

    def forget(self):
        """Clears the records and what clients saved."""
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
