#!/usr/bin/python3 -Es
"""Runs a command on a screen and a session bus of its own, in a test's surroundings: on_own_screen.py [VARIABLE=VALUE ...] COMMAND [ARGUMENT ...]"""

import ctypes
import os
import pathlib
import signal
import subprocess
import sys

import surroundings

PR_SET_CHILD_SUBREAPER = 36
XVFB = ("Xvfb", "-screen", "0", "1280x1024x24", "-nolisten", "tcp", "-noreset")


def end_children():
    """Ends all children, those included that the toolkits' daemons became by leaving their parents."""
    children = pathlib.Path(f"/proc/self/task/{os.getpid()}/children")
    while pids := [int(pid) for pid in children.read_text().split()]:
        for pid in pids:
            os.kill(pid, signal.SIGTERM)
        for pid in pids:
            os.waitpid(pid, 0)


def start_screen(environment):
    """The name of a free display, which the server takes and tells once it is ready."""
    reading, writing = os.pipe()
    quiet = {"stdin": subprocess.DEVNULL, "stderr": subprocess.DEVNULL}
    subprocess.Popen([*XVFB, "-displayfd", str(writing)], pass_fds=[writing], env=environment, **quiet)
    os.close(writing)
    number = os.fdopen(reading).readline().strip()
    if not number:
        sys.exit("Xvfb did not start")
    return f":{number}"


def main():
    ctypes.CDLL(None).prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0)
    given, command = surroundings.read_arguments()
    with surroundings.own(given) as environment:
        try:
            return surroundings.run(["dbus-run-session", "--", *command], environment | {"DISPLAY": start_screen(environment)})
        finally:
            end_children()


if __name__ == "__main__":
    sys.exit(main())
