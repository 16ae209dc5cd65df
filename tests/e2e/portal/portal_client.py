"""A program that calls the print backend directly, without a portal, so that it can send what no portal sends."""

import contextlib
import itertools
import os
import signal
import subprocess

import hands
import patience
from dialog_case import DialogCase, PrintDialog, until
from gi.repository import Gio, GLib
from screen_reader import Program
from surroundings import SCREEN, of_this_test, services_log
from terminal_case import BUILD, OF_TERMINALS, SAMPLE, complaints

SERVICE = BUILD / "host/tandem-trim-portal"
NAME = "org.freedesktop.impl.portal.desktop.tandemtrim"
PLACE = "/org/freedesktop/portal/desktop"
PRINT = "org.freedesktop.impl.portal.Print"
REQUEST = "org.freedesktop.impl.portal.Request"
DONE, CANCELLED, FAILED = 0, 1, 2
NO_LIMIT = 2**31 - 1  # the timeout of a call that waits without limit for its answer
BUS = ("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus")
_numbers = itertools.count(1)


def texts(**entries):
    """Settings as programs pass them."""
    return {key.replace("_", "-"): GLib.Variant("s", value) for key, value in entries.items()}


@contextlib.contextmanager
def own_bus():
    """Runs a session bus for the duration of a `with` statement; yields its address and its process."""
    command = ("dbus-daemon", "--session", "--nofork", "--print-address")
    with services_log() as log, subprocess.Popen(command, stdout=subprocess.PIPE, stderr=log, text=True) as daemon:
        try:
            yield daemon.stdout.readline().strip(), daemon
        finally:
            daemon.kill()


class Call:
    """A pending call of the backend."""

    def __init__(self, client, handle):
        self.client = client
        self.handle = handle
        self.result = None

    def take(self, bus, result):
        try:
            self.result = bus.call_with_unix_fd_list_finish(result)[0].unpack()
        except GLib.Error as error:
            self.result = error

    def is_answered(self):
        while GLib.MainContext.default().iteration(False):
            pass
        return self.result is not None

    def answer(self):
        """Waits for the answer: the response and the results, or the bus's error."""
        patience.until(self.is_answered, "an answer of the backend")
        return self.result

    def close(self):
        """Withdraws the request. The backend then answers the call at once."""
        self.client.ask(NAME, self.handle, REQUEST, "Close")


class Client:
    """A program on the session bus, or on the bus at this address."""

    def __init__(self, application="", address=None):
        flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
        self.bus = Gio.DBusConnection.new_for_address_sync(address or os.environ["DBUS_SESSION_BUS_ADDRESS"], flags, None, None)
        self.application = application

    def ask(self, place, path, interface, method, values=None):
        """Calls a method and waits for its result."""
        answer = self.bus.call_sync(place, path, interface, method, values, None, 0, patience.PATIENCE * 1000, None)
        return answer.unpack()

    def call(self, method, kinds, values, handle=None, files=()):
        """Calls a method of the backend and passes these open files to it."""
        call = Call(self, handle or f"{PLACE}/request/test/{next(_numbers)}")
        descriptors = Gio.UnixFDList.new()
        for file in files:
            descriptors.append(file)
        whole = GLib.Variant(f"(o{kinds})", (call.handle, *values))
        self.bus.call_with_unix_fd_list(NAME, PLACE, PRINT, method, whole, None, 0, NO_LIMIT, descriptors, None, call.take)
        return call

    def prepare(self, settings=None, page_setup=None, title="Print", parent="", handle=None, **options):
        values = (self.application, parent, title, settings or {}, page_setup or {}, options)
        return self.call("PreparePrint", "sssa{sv}a{sv}a{sv}", values, handle)

    def print(self, document=SAMPLE, token=None, title="Print", **options):
        """Prints a file, by its path or an open descriptor."""
        if token is not None:
            options["token"] = token if isinstance(token, GLib.Variant) else GLib.Variant("u", token)
        file = document if isinstance(document, int) else os.open(document, os.O_RDONLY)
        try:
            return self.call("Print", "sssha{sv}", (self.application, "", title, 0, options), files=[file])
        finally:
            if file is not document:
                os.close(file)

    def leave(self):
        """Leaves the bus."""
        self.bus.close_sync(None)


class Shown(PrintDialog):
    """A dialog of the backend, and its user."""

    def __init__(self, process, title):
        self.process = process
        self.hands = hands.of_this_screen()
        self.title = title
        self.program = until(lambda: Program.of_process(process.pid), "the backend on the accessibility bus")
        self.window = until(lambda: next((window for window in self.program.windows() if window.name == title), None), f"the dialog {title!r}")

    def is_gone(self):
        return all(window.name != self.title for window in self.program.windows())


class PortalCase(DialogCase):
    """Each test has its own backend and print server."""

    # A part of the toolkit's complaint that the test itself causes.
    expected = "no complaint is expected"

    def setUp(self):
        super().setUp()
        self.run_command("lpoptions", "-d", "Morva")
        self.process = None
        self.client = Client()

    def tearDown(self):
        if self.process is not None:
            self.end_backend()

    def start(self, *words, **variables):
        """Starts the backend as the bus does, with these arguments."""
        self.start_by(SERVICE, *words, **variables)

    def start_by(self, *command, **variables):
        """Starts the backend by this command."""
        environment = self.environment(**of_this_test(SCREEN)) | variables
        quiet = {"stdin": subprocess.DEVNULL, "stdout": subprocess.DEVNULL}
        # Not a pipe, which would block the backend once it is full.
        self.said = self.temporary_folder() / "said"
        with open(self.said, "wb") as said:
            self.process = subprocess.Popen(command, env=environment, stderr=said, **quiet)
        patience.until(self.has_name, "the backend's name on the bus")

    def has_name(self):
        return self.client.ask(*BUS, "NameHasOwner", GLib.Variant("(s)", [NAME]))[0]

    def end_backend(self):
        """Ends the backend and returns its messages. Fails if they have complaints of the toolkit or words for terminals."""
        process, self.process = self.process, None
        process.terminate()
        ended = process.wait(patience.PATIENCE)
        said = self.said.read_text()
        patience.until(lambda: not self.has_name(), "the backend's name to go")
        self.assertEqual([one for one in complaints(said) if self.expected not in one], [])
        self.assertNotRegex(said, OF_TERMINALS)
        self.assertIn(ended, (0, -signal.SIGTERM), said)
        return said

    def windows(self):
        """The backend's visible windows."""
        program = Program.of_process(self.process.pid)
        return program.windows() if program else []

    def shown(self, title="Print"):
        """Waits for the dialog of this title and its printer's details."""
        dialog = Shown(self.process, title)
        dialog.wait_for_tab("Tandem Trim")
        until(lambda: dialog.is_live("spin button", "Copies"), "the printer")
        return dialog

    def chosen(self, **arguments):
        """Requests a dialog, presses Print in it, and returns the program's results: settings, page setup, token."""
        call = self.client.prepare(**arguments)
        self.shown().press("Print")
        return self.results_of(call)

    def results_of(self, call):
        response, results = call.answer()
        self.assertEqual(response, DONE)
        return results["settings"], results["page-setup"], results["token"]

    def job(self):
        """The record of the only job."""
        self.cups.wait_for_jobs()
        (record,) = self.cups.records()
        return record
