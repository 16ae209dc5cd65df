"""A temporary CUPS daemon in a temporary folder and on a free port."""

import getpass
import grp
import http.client
import os
import pathlib
import random
import resource
import shutil
import signal
import socket
import subprocess
import tempfile
import uuid

import ipp
import surroundings
from patience import PATIENCE, until

SYSTEM_DAEMON = pathlib.Path("/usr/sbin/cupsd")
SYSTEM_PROGRAMS = pathlib.Path("/usr/lib/cups")
PATH = surroundings.PATH
FILTER = "morvatandem"  # in the sample printer's PPD
OTHER_FILTER = "lundfoldline"  # in the second family's PPD
BACKEND = "recorder"
HOST = "127.0.0.1"
ATTEMPTS = 5
NOTE = "/is-that-all-"  # the beginning of a path that only requests() uses

SERVER_SETTINGS = """\
Listen {host}:{port}
Browsing Off
WebInterface No
DefaultAuthType None
LogLevel info
AccessLogLevel all
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
ServerKeychain {folder}/keys
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


def free_port():
    """A port without a listener, outside the range from which the system assigns ports to clients."""
    while True:
        port = random.SystemRandom().randrange(20000, 32000)
        with socket.socket() as probe:
            try:
                probe.bind((HOST, port))
            except OSError:
                continue
        return port


class CupsDaemon:
    """Runs for the duration of a `with` statement, or until stop(). Root or an ordinary user may start it. `more_settings` are lines
    for its cupsd.conf."""

    def __init__(self, more_settings=""):
        self._more_settings = more_settings
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="private-cups-"))
        self.address = None
        self._server = None
        self._logged_before = 0
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

    def _prepare(self):
        for name in ("server", "spool", "spool/tmp", "cache", "state", "records", "home"):
            (self.folder / name).mkdir()
        (self.folder / "records").chmod(0o1777)
        (self.folder / "keys").mkdir(mode=0o700)
        for name in ("programs/filter", "programs/backend"):
            (self.folder / name).mkdir(parents=True)
            for program in (SYSTEM_PROGRAMS / pathlib.Path(name).name).iterdir():
                (self.folder / name / program.name).symlink_to(program)
        for name in ("daemon", "notifier", "monitor"):
            (self.folder / "programs" / name).symlink_to(SYSTEM_PROGRAMS / name)
        for name in (f"filter/{FILTER}", f"filter/{OTHER_FILTER}", f"backend/{BACKEND}"):
            recorder = self.folder / "programs" / name
            shutil.copyfile(pathlib.Path(__file__).with_name("recording_filter.py"), recorder)
            recorder.chmod(0o755)
        # Root's server runs filters as another user, who needs access under any umask.
        for folder in (".", "programs", "programs/filter", "programs/backend"):
            (self.folder / folder).chmod(0o755)
        # A copy, as a security profile of the system may restrict the program at the daemon's usual path.
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
            if self._runs():
                return
        # Other programs were faster to take each port, or the settings are wrong.
        raise RuntimeError(f"cupsd does not start:\n{(self.folder / 'output').read_text()}{self.log()}")

    def _runs(self):
        """Starts the server at its address; false if it ends at once."""
        (self.folder / "cupsd.conf").write_text(SERVER_SETTINGS.format(host=HOST, port=self.address[1]) + self._more_settings)
        self._logged_before = self._logged_bytes()
        command = [self.folder / "cupsd", "-f", "-c", self.folder / "cupsd.conf"]
        command += ["-s", self.folder / "cups-files.conf"]
        # The server ends with this process, however that ends.
        with open(self.folder / "output", "ab") as output:
            self._server = subprocess.Popen(
                ["env", "--ignore-signal=XFSZ", "setpriv", "--pdeathsig", "TERM", *command],
                stdin=subprocess.DEVNULL,
                stdout=output,
                stderr=output,
                start_new_session=True,
                env={"PATH": PATH, "LANG": "C.UTF-8"},
            )
        until(lambda: self._server.poll() is not None or self._answers(), "the start of cupsd")
        return self._server.poll() is None

    def _answers(self):
        try:
            ipp.ask(self.address, ipp.GET_PRINTERS)
        except ipp.IppError:
            pass  # it has no printer yet
        except OSError:
            return False
        # One that lost the port to another has logged no request since its start.
        return self._logged_bytes() > self._logged_before

    def _logged_bytes(self):
        requests = self.folder / "access_log"
        return requests.stat().st_size if requests.exists() else 0

    def freeze(self):
        """Stops the server without closing its port, so that it does not answer."""
        self._server.send_signal(signal.SIGSTOP)
        self._frozen = True

    def thaw(self):
        self._server.send_signal(signal.SIGCONT)
        self._frozen = False

    def fill_disk(self):
        """Keeps the server from writing files larger than a megabyte, as if its disk were full."""
        resource.prlimit(self._server.pid, resource.RLIMIT_FSIZE, (1 << 20, resource.RLIM_INFINITY))

    def empty_disk(self):
        resource.prlimit(self._server.pid, resource.RLIMIT_FSIZE, (resource.RLIM_INFINITY, resource.RLIM_INFINITY))

    def kill(self):
        """Ends the server at once and closes its port."""
        self._server.kill()
        self._server.wait()

    def revive(self):
        """Starts a killed server again at its address, with the files that it left."""
        if not self._runs():
            raise RuntimeError(f"cupsd does not start again:\n{self.log()}")

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

    def requests(self):
        """The server's log of all requests so far, a line each."""
        # The server logs a request after answering it. Once the log has this last one, it has all earlier ones.
        last = f"{NOTE}{uuid.uuid4()}"
        connection = http.client.HTTPConnection(*self.address, timeout=PATIENCE)
        connection.request("GET", last)
        connection.getresponse()
        connection.close()
        log = self.folder / "access_log"
        until(lambda: last in log.read_text(errors="replace"), "the last request in the server's log")
        return [line for line in log.read_text(errors="replace").splitlines() if NOTE not in line]

    def log(self):
        path = self.folder / "error_log"
        return path.read_text(errors="replace") if path.exists() else ""
