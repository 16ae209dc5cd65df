#!/usr/bin/python3
"""Measures dialogs on a screen in turn, so that other load of the machine affects all, and prints each round's figures as JSON.

measure.py SCREEN MODE ROUNDS COMMAND [-- COMMAND ...]: SCREEN is the program of screen.cpp, MODE one of its modes. For a print backend
COMMAND is its name on the session bus, followed by the command that starts it.
"""

import itertools
import json
import os
import pathlib
import subprocess
import sys

OF_BACKENDS = ("started", "asked", "idle", "dialogs")


def figures(screen, mode, command):
    result = subprocess.run([screen, mode, *command], stdin=subprocess.DEVNULL, capture_output=True, text=True, check=False)
    if result.returncode != 0:
        sys.exit(f"{' '.join(command)}: {result.stderr}")
    # The dialog may print other lines.
    return [int(line) for line in result.stdout.splitlines() if line.removeprefix("-").isdigit()]


def switch_animations_off():
    """Switches GTK's animations off, as they would hide the drawing that is waited for."""
    for toolkit in ("gtk-3.0", "gtk-4.0"):
        folder = pathlib.Path(os.environ.get("XDG_CONFIG_HOME") or pathlib.Path.home() / ".config", toolkit)
        folder.mkdir(parents=True, exist_ok=True)
        (folder / "settings.ini").write_text("[Settings]\ngtk-enable-animations=false\n")


def register_service(name, *command):
    folder = pathlib.Path(os.environ["XDG_RUNTIME_DIR"], "dbus-1/services")
    folder.mkdir(parents=True, exist_ok=True)
    (folder / f"{name}.service").write_text(f"[D-BUS Service]\nName={name}\nExec={' '.join(command)}\n")


def main():
    switch_animations_off()
    screen, mode, rounds, *words = sys.argv[1:]
    groups = itertools.groupby(words, lambda word: word == "--")
    commands = [list(group) for is_separator, group in groups if not is_separator]
    if mode in OF_BACKENDS:
        for command in commands:
            register_service(*command)
        bus = "org.freedesktop.DBus"
        reload = ["dbus-send", "--session", "--print-reply", f"--dest={bus}", "/org/freedesktop/DBus", f"{bus}.ReloadConfig"]
        subprocess.run(reload, stdout=subprocess.DEVNULL, check=True)
    table = [[figures(screen, mode, command) for command in commands] for _ in range(int(rounds) + 1)]
    # Without the first round, which reads the files from the disk.
    print(json.dumps(table[1:]))


if __name__ == "__main__":
    main()
