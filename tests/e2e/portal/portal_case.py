"""Shared by the tests of printing from other programs: Debian's desktop portal with this print backend, and editors that print through it.

The portal and the backend run on the test's own session bus and screen. The portal's folder of backends contains only this one, so that
it is used whatever is installed on the machine.
"""

import contextlib
import ctypes
import json
import os
import pathlib
import re
import shutil
import signal
import subprocess

import dbus
import hands
import surroundings
from dialog_case import DialogCase, PrintDialog, until
from screen_reader import Program
from terminal_case import BUILD, PROJECT, complaints

PORTAL = "/usr/libexec/xdg-desktop-portal"
BACKEND = BUILD / "host/tandem-trim-portal"
PORTAL_NAME = "org.freedesktop.portal.Desktop"
BACKEND_NAME = "org.freedesktop.impl.portal.desktop.tandemtrim"

def bus():
    session = dbus.SessionBus()
    return dbus.Interface(session.get_object(dbus.BUS_DAEMON_NAME, dbus.BUS_DAEMON_PATH), dbus.BUS_DAEMON_IFACE)


def process_of(name):
    """The process that owns this name on the session bus; None if no process does."""
    try:
        return int(bus().GetConnectionUnixProcessID(name))
    except dbus.DBusException:
        return None


def parent_window(window):
    """The X window that this one is transient for; 0 if it has none."""
    x = ctypes.CDLL("libX11.so.6")
    x.XOpenDisplay.restype = ctypes.c_void_p
    display = ctypes.c_void_p(x.XOpenDisplay(None))
    parent = ctypes.c_ulong(0)
    x.XGetTransientForHint(display, ctypes.c_ulong(window), ctypes.byref(parent))
    x.XCloseDisplay(display)
    return parent.value


def window_type(window):
    """The type that this X window declares to window managers."""
    x = ctypes.CDLL("libX11.so.6")
    x.XOpenDisplay.restype = ctypes.c_void_p
    x.XInternAtom.restype = ctypes.c_ulong
    x.XGetAtomName.restype = ctypes.c_char_p
    display = ctypes.c_void_p(x.XOpenDisplay(None))
    kind = ctypes.c_ulong(x.XInternAtom(display, b"_NET_WM_WINDOW_TYPE", 0))
    any_type, ignored, value = ctypes.c_ulong(0), ctypes.c_ulong(0), ctypes.POINTER(ctypes.c_ulong)()
    others = [ctypes.byref(ignored)] * 4
    x.XGetWindowProperty(display, ctypes.c_ulong(window), kind, 0, 1, 0, any_type, *others, ctypes.byref(value))
    name = x.XGetAtomName(display, ctypes.c_ulong(value[0])).decode()
    x.XCloseDisplay(display)
    return name


def on_wayland():
    return "WAYLAND_DISPLAY" in os.environ


def wayland_windows():
    """The compositor's description of each process's window, by process."""
    (socket,) = pathlib.Path(os.environ["WAYLAND_DISPLAY"]).parent.glob("sway-ipc.*")
    tree = subprocess.run(["swaymsg", "--socket", socket, "-t", "get_tree"], capture_output=True, text=True, check=True).stdout

    def windows(node):
        if "pid" in node:
            yield node["pid"], node
        for inside in (*node["nodes"], *node["floating_nodes"]):
            yield from windows(inside)

    return dict(windows(json.loads(tree)))


def windows_of(pid):
    """The numbers of a process's visible X windows."""
    found = subprocess.run(["xdotool", "search", "--onlyvisible", "--pid", str(pid)], capture_output=True, text=True, check=False)
    return [int(number) for number in found.stdout.split()]


class Editor:
    """An editor of another project that shows a text, and the user who operates it."""

    def __init__(self, command, environment, document):
        self.document = document
        self.process = subprocess.Popen([*command, document], env=environment, stdin=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)
        self.hands = hands.of_this_screen()
        until(lambda: document.name in self.title(), "the document in the editor")

    def press_print(self):
        self.go_into_the_text()
        self.hands.press("ctrl+p")

    def type(self, *keys):
        self.go_into_the_text()
        self.hands.press(*keys)

    def save(self):
        self.hands.press("ctrl+s")

    def close(self):
        if self.process.returncode is None:
            self.process.terminate()
            self.process.communicate()


class EditorOfGtk4(Editor):
    """An editor that is operated through accessibility."""

    def _windows(self):
        program = Program.of_process(self.process.pid)
        return program.windows() if program else []

    def title(self):
        return next((window.name for window in self._windows()), "")

    def go_into_the_text(self):
        program = Program.of_process(self.process.pid)
        text = next(node for node in program.windows()[0].all() if node.role == "text")
        left, top, width, height = program.place(text)
        self.hands.click(left + width // 2, top + height * 3 // 4)


class EditorOfGtk3(Editor):
    """An editor that is operated through its X window."""

    def _xdotool(self, *words):
        window, *_ = until(lambda: windows_of(self.process.pid), "the editor's window")
        return subprocess.run(["xdotool", *words, str(window)], capture_output=True, text=True, check=True).stdout

    def title(self):
        return self._xdotool("getwindowname")

    def go_into_the_text(self):
        place = {name: int(value) for name, value in re.findall(r"(\w+)=(-?\d+)", self._xdotool("getwindowgeometry", "--shell"))}
        self.hands.click(place["X"] + place["WIDTH"] // 2, place["Y"] + place["HEIGHT"] * 3 // 4)


# By toolkit: the command, the variable that makes it use the portal, and the class that operates it.
EDITORS = {
    "GTK 4": (["gnome-text-editor", "--standalone"], {"GDK_DEBUG": "gl-disable,portals"}, EditorOfGtk4),
    "GTK 3": (["mousepad", "--disable-server"], {"GTK_USE_PORTAL": "1"}, EditorOfGtk3),
}


class ShownDialog(PrintDialog):
    """The dialog that the print backend shows now."""

    def __init__(self):
        self.hands = hands.of_this_screen()
        self.pid = self.program = None
        until(self._appears, "the print dialog")
        self.window = self.program.windows()[-1]

    def _appears(self):
        # An idle backend ends, and the bus starts another one for the next request.
        self.pid = process_of(BACKEND_NAME)
        self.program = self.pid and Program.of_process(self.pid)
        return self.program and self.look("push button", "Print")

    def middle(self, node):
        x, y = super().middle(node)
        if not on_wayland():
            return x, y
        # A dialog's window floats; add its place on the screen.
        place = wayland_windows()[self.pid]["rect"]
        return place["x"] + x, place["y"] + y

    def is_there(self):
        try:
            return self.look("push button", "Print") is not None
        except dbus.DBusException:
            return False

    def wait_until_gone(self):
        """Waits until the dialog is no longer shown."""
        until(lambda: not self.is_there(), "the end of the dialog")


class PortalSession:
    """Runs the portal and the backend on the session bus for the duration of a `with` statement, with their files in this folder."""

    def __init__(self, folder, environment):
        """`environment` is that of a program on this screen that prints on the test's server."""
        self.folder = folder
        self.log = folder / "backend.log"
        self.environment = environment
        self._portal = None

    def __enter__(self):
        portals = self.folder / "portals"
        portals.mkdir()
        shutil.copy(PROJECT / "packaging/portal/tandemtrim.portal", portals)
        self.log.touch()
        of_portal = self.environment | {"XDG_DESKTOP_PORTAL_DIR": str(portals)}
        bus().UpdateActivationEnvironment(of_portal)
        self._let_the_bus_start_the_backend()
        quiet = dict.fromkeys(("stdin", "stdout"), subprocess.DEVNULL)
        with surroundings.services_log() as log:
            self._portal = subprocess.Popen([PORTAL], env=of_portal, stderr=log, **quiet)
        until(lambda: bus().NameHasOwner(PORTAL_NAME), "the portal")
        return self

    def _let_the_bus_start_the_backend(self):
        services = pathlib.Path(os.environ["XDG_RUNTIME_DIR"], "dbus-1/services")
        services.mkdir(parents=True, exist_ok=True)
        script = self.folder / "backend"
        script.write_text(f'#!/bin/sh\nexec "{BACKEND}" 2>>"{self.log}"\n')
        script.chmod(0o755)
        (services / f"{BACKEND_NAME}.service").write_text(f"[D-BUS Service]\nName={BACKEND_NAME}\nExec={script}\n")
        bus().ReloadConfig()

    def kill_portal(self):
        """Kills the portal. The bus starts another one when a program needs it."""
        self._portal.kill()
        self._portal.wait()
        until(lambda: process_of(PORTAL_NAME) != self._portal.pid, "the portal's end")

    @contextlib.contextmanager
    def frozen_portal(self):
        """Freezes the portal for the duration of a `with` statement."""
        os.kill(process_of(PORTAL_NAME), signal.SIGSTOP)
        try:
            yield
        finally:
            os.kill(process_of(PORTAL_NAME), signal.SIGCONT)

    def __exit__(self, *_):
        self._portal.terminate()
        self._portal.wait()
        # The bus may have started another one.
        if pid := process_of(PORTAL_NAME):
            os.kill(pid, signal.SIGTERM)
        until(lambda: not bus().NameHasOwner(PORTAL_NAME), "the portal's end")
        if pid := process_of(BACKEND_NAME):
            with contextlib.suppress(ProcessLookupError):
                os.kill(pid, signal.SIGTERM)
        until(lambda: not bus().NameHasOwner(BACKEND_NAME), "the backend's end")

    def editor(self, toolkit, text, name="text.txt"):
        """Starts this toolkit's editor with a new file of this text."""
        command, variables, operate = EDITORS[toolkit]
        document = self.folder / name
        document.write_text(text)
        others = {name: value for name, value in self.environment.items() if name not in ("GDK_DEBUG", "GTK_USE_PORTAL")}
        return operate(command, others | variables, document)


class PortalCase(DialogCase):
    """Each test has its own portal, backend and print server."""

    @classmethod
    def setUpClass(cls):
        for program in (PORTAL, BACKEND):
            if not pathlib.Path(program).exists():
                raise FileNotFoundError(f"{program}: build or install it first (packaging/install-dependencies.sh)")

    def setUp(self):
        super().setUp()
        self.folder = self.temporary_folder()
        self.session = PortalSession(self.folder, self.environment(**surroundings.of_this_test(surroundings.SCREEN)))
        # Fails if the backend's log contains complaints of the toolkit.
        self.addCleanup(lambda: self.assertEqual(complaints(self.session.log.read_text()), []))
        self.enterContext(self.session)
        self.printed_before = 0

    def editor(self, toolkit, text):
        editor = self.session.editor(toolkit, text)
        self.addCleanup(editor.close)
        return editor

    def dialog_of(self, editor, printer="Morva"):
        """Presses the editor's keys for printing and returns the dialog, with this printer chosen and its details read."""
        editor.press_print()
        dialog = ShownDialog()
        dialog.select_printer(printer)
        dialog.wait_for_tab("Tandem Trim")
        until(lambda: dialog.is_live("spin button", "Copies"), "the printer's details")
        return dialog

    def next_record(self):
        """Waits for a job and returns its record; there must be exactly one new record since the last call."""
        until(lambda: len(self.cups.records()) > self.printed_before, f"a job; the backend said: {self.session.log.read_text()}")
        self.cups.wait_for_jobs()
        records = self.cups.records()[self.printed_before :]
        self.printed_before += len(records)
        self.assertEqual(len(records), 1)
        return records[0]

    def pages(self, document):
        """The width and height of each page of a PDF document, in points."""
        shown = subprocess.run(["pdfinfo", "-f", "1", "-l", "9999", document], capture_output=True, text=True, check=True).stdout
        return [(float(width), float(height)) for width, height in re.findall(r"^Page +\d+ size: +([\d.]+) x ([\d.]+) pts", shown, re.MULTILINE)]
