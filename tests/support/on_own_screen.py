#!/usr/bin/python3 -Es
"""Runs a command in a test's surroundings on its own screen and session bus: on_own_screen.py [VARIABLE=VALUE ...] COMMAND [ARGUMENT ...]

The screen belongs to an X server or, with TANDEM_TRIM_SCREEN=wayland, to a Wayland compositor, whose screen is smaller.
"""

import ctypes
import os
import pathlib
import select
import shutil
import signal
import subprocess
import sys

import surroundings

PR_SET_CHILD_SUBREAPER = 36
SECONDS_TO_END = 5  # Sway sometimes ignores the signal that asks it to end.
XVFB = ("Xvfb", "-screen", "0", "1280x1024x24", "-nolisten", "tcp", "-noreset")
# No X server, and windows as large as the screen. Sway prints the name of its display once it is ready.
SWAY_SETTINGS = """\
xwayland disable
output HEADLESS-1 resolution 1024x600
default_border none
exec echo $WAYLAND_DISPLAY
"""
# Sway needs neither a monitor nor a graphics card nor an input device.
SWAY_VARIABLES = {"WLR_BACKENDS": "headless", "WLR_RENDERER": "pixman", "WLR_LIBINPUT_NO_DEVICES": "1"}
# Sway does not run as root.
ORDINARY_USER = ("setpriv", "--reuid=nobody", "--regid=nogroup", "--clear-groups")
# Keeps a virtual keyboard plugged in: without one, programs begin to listen too late for the first keys that a test presses.
KEYBOARD = ("wtype", "-s", "3600000")


def end_children():
    """Ends all children, and the toolkits' daemons, which this process has adopted as their subreaper. Kills those that do not
    end in time."""
    children = pathlib.Path(f"/proc/self/task/{os.getpid()}/children")
    while pids := [int(pid) for pid in children.read_text().split()]:
        for pid in pids:
            os.kill(pid, signal.SIGTERM)
        for pid in pids:
            process = os.pidfd_open(pid)
            if not select.select([process], [], [], SECONDS_TO_END)[0]:
                os.kill(pid, signal.SIGKILL)
            os.close(process)
            os.waitpid(pid, 0)


def start_x(environment):
    """Starts Xvfb, which takes a free display and reports its number once it is ready."""
    reading, writing = os.pipe()
    quiet = {"stdin": subprocess.DEVNULL, "stderr": subprocess.DEVNULL}
    subprocess.Popen([*XVFB, "-displayfd", str(writing)], pass_fds=[writing], env=environment, **quiet)
    os.close(writing)
    number = os.fdopen(reading).readline().strip()
    if not number:
        sys.exit("Xvfb did not start")
    return {"DISPLAY": f":{number}"}


def start_wayland(environment):
    folder = pathlib.Path(environment["TMPDIR"], "screen")
    folder.mkdir(mode=0o700)
    settings = folder / "settings"
    settings.write_text(SWAY_SETTINGS)
    is_root = os.geteuid() == 0
    if is_root:
        shutil.chown(folder, "nobody")
    command = [*(ORDINARY_USER if is_root else ()), "sway", "--config", settings]
    own = environment | SWAY_VARIABLES | {"XDG_RUNTIME_DIR": str(folder)}
    sway = subprocess.Popen(command, env=own, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
    name = sway.stdout.readline().strip()
    if not name:
        sys.exit("sway did not start")
    screen = {"WAYLAND_DISPLAY": str(folder / name), "GDK_BACKEND": "wayland"}
    subprocess.Popen(KEYBOARD, env=environment | screen, stdin=subprocess.DEVNULL)
    return screen


# How to start each screen. A function returns the variables by which programs find its screen.
SCREENS = {"x": start_x, "wayland": start_wayland}


def start_bus(environment):
    command = ("dbus-daemon", "--session", "--nofork", "--print-address")
    with surroundings.services_log(environment) as log:
        bus = subprocess.Popen(command, env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=log, text=True)
    address = bus.stdout.readline().strip()
    if not address:
        sys.exit("dbus-daemon did not start")
    return {"DBUS_SESSION_BUS_ADDRESS": address}


def main():
    ctypes.CDLL(None).prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0)
    given, command = surroundings.read_arguments()
    start = SCREENS[given.get("TANDEM_TRIM_SCREEN", "x")]
    with surroundings.own(given) as environment:
        try:
            environment |= start(environment)
            return surroundings.run(command, environment | start_bus(environment))
        finally:
            end_children()


if __name__ == "__main__":
    sys.exit(main())
