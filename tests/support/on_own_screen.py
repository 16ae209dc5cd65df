#!/usr/bin/python3
"""Runs a command on a screen, a session bus and in a home folder of its own: on_own_screen.py COMMAND [ARGUMENT ...]"""

import ctypes
import os
import pathlib
import signal
import subprocess
import sys
import tempfile

PR_SET_CHILD_SUBREAPER = 36
XVFB = ("Xvfb", "-screen", "0", "1280x1024x24", "-nolisten", "tcp", "-noreset")
# No settings of the person who runs it, and the same drawing on every machine.
TOOLKITS = {"LC_ALL": "C.UTF-8", "GDK_BACKEND": "x11", "GDK_DEBUG": "gl-disable", "GSK_RENDERER": "cairo"}
OTHERS = ("LANGUAGE", "WAYLAND_DISPLAY", "XAUTHORITY", "DBUS_SESSION_BUS_ADDRESS")


def end_children():
    """Ends all children, those included that the toolkits' daemons became by leaving their parents."""
    children = pathlib.Path(f"/proc/self/task/{os.getpid()}/children")
    while pids := [int(pid) for pid in children.read_text().split()]:
        for pid in pids:
            os.kill(pid, signal.SIGTERM)
        for pid in pids:
            os.waitpid(pid, 0)


def start_screen():
    """The name of a free display, which the server takes and tells once it is ready."""
    reading, writing = os.pipe()
    quiet = {"stdin": subprocess.DEVNULL, "stderr": subprocess.DEVNULL}
    subprocess.Popen([*XVFB, "-displayfd", str(writing)], pass_fds=[writing], **quiet)
    os.close(writing)
    number = os.fdopen(reading).readline().strip()
    if not number:
        sys.exit("Xvfb did not start")
    return f":{number}"


def surroundings(home):
    """The environment of a person whose home folder has nothing in it yet."""
    folders = {"XDG_RUNTIME_DIR": "run", "XDG_CONFIG_HOME": "config", "XDG_CACHE_HOME": "cache"}
    folders |= {"XDG_DATA_HOME": "data", "XDG_STATE_HOME": "state", "TMPDIR": "tmp", "TEMP": "tmp"}
    os.chmod(home, 0o755)  # print servers that are started below it give up root's rights
    os.mkdir(f"{home}/run", 0o700)
    os.mkdir(f"{home}/tmp")
    inherited = {name: value for name, value in os.environ.items() if name not in OTHERS}
    return inherited | TOOLKITS | {"HOME": home} | {name: f"{home}/{folder}" for name, folder in folders.items()}


def main():
    ctypes.CDLL(None).prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0)
    with tempfile.TemporaryDirectory(prefix="tandem-trim-screen-") as home:
        try:
            environment = surroundings(home) | {"DISPLAY": start_screen()}
            return subprocess.run(["dbus-run-session", "--", *sys.argv[1:]], env=environment).returncode
        finally:
            end_children()


if __name__ == "__main__":
    sys.exit(main())
