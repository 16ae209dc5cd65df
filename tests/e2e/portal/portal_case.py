"""What the tests of printing from other programs have in common: Debian's desktop portal with this print backend, and editors that print by it.

The portal and the backend run on the test's own session bus and screen. The portal has a folder of backends of its own, in which ours is
the only one, so that it takes it whatever the machine has installed.
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
    """The process that has this name on the session bus, or none."""
    try:
        return int(bus().GetConnectionUnixProcessID(name))
    except dbus.DBusException:
        return None


def parent_window(window):
    """The window of X for which this one says that it is a dialog, or 0."""
    x = ctypes.CDLL("libX11.so.6")
    x.XOpenDisplay.restype = ctypes.c_void_p
    display = ctypes.c_void_p(x.XOpenDisplay(None))
    parent = ctypes.c_ulong(0)
    x.XGetTransientForHint(display, ctypes.c_ulong(window), ctypes.byref(parent))
    x.XCloseDisplay(display)
    return parent.value


def window_type(window):
    """What this window of X says that it is, for window managers."""
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
    """What Wayland's compositor knows of the window of each process."""
    (socket,) = pathlib.Path(os.environ["WAYLAND_DISPLAY"]).parent.glob("sway-ipc.*")
    tree = subprocess.run(["swaymsg", "--socket", socket, "-t", "get_tree"], capture_output=True, text=True, check=True).stdout

    def windows(node):
        if "pid" in node:
            yield node["pid"], node
        for inside in (*node["nodes"], *node["floating_nodes"]):
            yield from windows(inside)

    return dict(windows(json.loads(tree)))


def windows_of(pid):
    """The windows that a process shows on the screen of X, by their numbers."""
    found = subprocess.run(["xdotool", "search", "--onlyvisible", "--pid", str(pid)], capture_output=True, text=True, check=False)
    return [int(number) for number in found.stdout.split()]


class Editor:
    """A foreign program that shows a text, as its user has it in front."""

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
    """One that is known by accessibility."""

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
    """One that is known by its window on the screen of X."""

    def _asks_of_window(self, *words):
        window, *_ = until(lambda: windows_of(self.process.pid), "the editor's window")
        return subprocess.run(["xdotool", *words, str(window)], capture_output=True, text=True, check=True).stdout

    def title(self):
        return self._asks_of_window("getwindowname")

    def go_into_the_text(self):
        place = {name: int(value) for name, value in re.findall(r"(\w+)=(-?\d+)", self._asks_of_window("getwindowgeometry", "--shell"))}
        self.hands.click(place["X"] + place["WIDTH"] // 2, place["Y"] + place["HEIGHT"] * 3 // 4)


# By their toolkit: the command, the variable that sends it to the portal, and how it is handled.
EDITORS = {
    "GTK 4": (["gnome-text-editor", "--standalone"], {"GDK_DEBUG": "gl-disable,portals"}, EditorOfGtk4),
    "GTK 3": (["mousepad", "--disable-server"], {"GTK_USE_PORTAL": "1"}, EditorOfGtk3),
}


class ShownDialog(PrintDialog):
    """The dialog that the print backend shows now."""

    def __init__(self):
        self.hands = hands.of_this_screen()
        self.pid = self.program = None
        until(self._comes, "the print dialog")
        self.window = self.program.windows()[-1]

    def _comes(self):
        # The backend may end while it has nothing to do, and another one is started then.
        self.pid = process_of(BACKEND_NAME)
        self.program = self.pid and Program.of_process(self.pid)
        return self.program and self.look("push button", "Print")

    def middle(self, node):
        x, y = super().middle(node)
        if not on_wayland():
            return x, y
        # It floats, somewhere.
        place = wayland_windows()[self.pid]["rect"]
        return place["x"] + x, place["y"] + y

    def is_there(self):
        try:
            return self.look("push button", "Print") is not None
        except dbus.DBusException:
            return False

    def goes(self):
        """Waits until it shows no more."""
        until(lambda: not self.is_there(), "the end of the dialog")


class PortalSession:
    """The portal and the backend on the session bus, with files of theirs in a new folder; between `with` and its end."""

    def __init__(self, folder, environment):
        """`environment` is that of a program on this screen that prints at a server."""
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
        quiet = dict.fromkeys(("stdin", "stdout", "stderr"), subprocess.DEVNULL)
        self._portal = subprocess.Popen([PORTAL], env=of_portal, **quiet)
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
        """The portal is gone at once; the bus starts another one when a program asks for it."""
        self._portal.kill()
        self._portal.wait()
        until(lambda: process_of(PORTAL_NAME) != self._portal.pid, "the portal's end")

    @contextlib.contextmanager
    def frozen_portal(self):
        """The portal neither works nor answers, until the end of `with`."""
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
        """The editor of this toolkit, with a new file of this text."""
        command, variables, handled = EDITORS[toolkit]
        document = self.folder / name
        document.write_text(text)
        others = {name: value for name, value in self.environment.items() if name not in ("GDK_DEBUG", "GTK_USE_PORTAL")}
        return handled(command, others | variables, document)


class PortalCase(DialogCase):
    """Each test has a portal, a backend and a print server of its own."""

    @classmethod
    def setUpClass(cls):
        for program in (PORTAL, BACKEND):
            if not pathlib.Path(program).exists():
                raise FileNotFoundError(f"{program}: build or install it first (packaging/install-dependencies.sh)")

    def setUp(self):
        super().setUp()
        self.folder = self.temporary_folder()
        self.session = PortalSession(self.folder, self.environment(**surroundings.of_this_test(surroundings.SCREEN)))
        # What the backend said must hold no complaint of the toolkit.
        self.addCleanup(lambda: self.assertEqual(complaints(self.session.log.read_text()), []))
        self.enterContext(self.session)
        self.printed_before = 0

    def editor(self, toolkit, text):
        editor = self.session.editor(toolkit, text)
        self.addCleanup(editor.close)
        return editor

    def dialog_of(self, editor, printer="Morva"):
        """Presses the editor's keys for printing and gives the dialog that comes, with the printer chosen in it."""
        editor.press_print()
        dialog = ShownDialog()
        dialog.select_printer(printer)
        dialog.wait_for_tab("Tandem Trim")
        until(lambda: dialog.is_live("spin button", "Copies"), "the printer's details")
        return dialog

    def next_record(self):
        """The record of the only job since the last one that was asked for."""
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
