#!/usr/bin/env python3
"""Runs a command on an X display of its own, with a home folder of its own: on_display.py XVFB COMMAND..."""

import ctypes
import os
import pathlib
import signal
import subprocess
import sys
import tempfile

PR_SET_CHILD_SUBREAPER = 36


def end_children():
    """Ends all children, those included that the toolkit's daemons became by leaving their parents."""
    children = pathlib.Path(f"/proc/self/task/{os.getpid()}/children")
    while pids := [int(pid) for pid in children.read_text().split()]:
        for pid in pids:
            os.kill(pid, signal.SIGTERM)
        for pid in pids:
            os.waitpid(pid, 0)


def start(xvfb):
    """The name of a free display, which the server takes and tells once it is ready."""
    reading, writing = os.pipe()
    subprocess.Popen(
        [xvfb, "-displayfd", str(writing), "-screen", "0", "1024x768x24", "-nolisten", "tcp"],
        pass_fds=[writing], stdin=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    os.close(writing)
    number = os.fdopen(reading).readline().strip()
    if not number:
        sys.exit(f"{xvfb} did not start")
    return f":{number}"


def main():
    xvfb, *command = sys.argv[1:]
    ctypes.CDLL(None).prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0)
    with tempfile.TemporaryDirectory(prefix="tandem-trim-display-") as home:
        try:
            surroundings = dict(os.environ, DISPLAY=start(xvfb), HOME=home, TMPDIR=home, TEMP=home)
            return subprocess.run(command, env=surroundings).returncode
        finally:
            end_children()


if __name__ == "__main__":
    sys.exit(main())
