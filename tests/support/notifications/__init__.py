"""The desktop's notification service on the test's session bus, played by service.py, which records all notifications."""

import json
import os
import pathlib
import signal
import subprocess
import sys

import patience

SERVICE = pathlib.Path(__file__).with_name("service.py")
MARKUP = "body-markup"


class Desktop:
    """Receives notifications for the duration of a `with` statement."""

    def __init__(self, folder, *capabilities):
        self._file = folder / "notifications"
        self._command = [sys.executable, SERVICE, self._file, *capabilities]
        self._process = None

    def __enter__(self):
        self._process = subprocess.Popen(self._command, stdin=subprocess.DEVNULL)
        patience.until(self._file.exists, "the desktop's notifications")
        return self

    def __exit__(self, *_):
        self._process.kill()
        self._process.wait()

    def shown(self):
        """All notifications so far, the newest last, each a dictionary with the names in service.py."""
        return [json.loads(line) for line in self._file.read_text().splitlines()]

    def wait_for(self, count):
        """Waits for `count` notifications and returns them all."""
        return patience.until(lambda: len(self.shown()) >= count and self.shown(), f"{count} notifications")

    def freeze(self):
        os.kill(self._process.pid, signal.SIGSTOP)


def notifiers(program, server):
    """The processes of this program that use this print server."""
    found = []
    for process in pathlib.Path("/proc").glob("[0-9]*"):
        try:
            is_it = os.readlink(process / "exe") == str(program)
            if is_it and f"CUPS_SERVER={server}" in (process / "environ").read_bytes().decode(errors="replace").split("\0"):
                found.append(int(process.name))
        except OSError:
            continue  # it has ended
    return found
