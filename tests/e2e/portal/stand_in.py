#!/usr/bin/python3
"""Takes the place of a desktop portal that reads settings files (portals.conf), which Debian 12's portal does not do.

It follows the documentation of these files: when the bus starts it, it reads the first of them that exists, and uses the backend that the
file names for each interface. It writes its choices to the file that STAND_IN_CHOICES names, and offers printing if the print backend
answers.
"""

import json
import os
import pathlib
import sys

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

PATH = "/org/freedesktop/portal/desktop"
IMPL = "org.freedesktop.impl.portal"
PARTS = ("Print", "FileChooser", "Settings")
PORTAL = "org.freedesktop.portal.Desktop"
PRINTING = "<node><interface name='org.freedesktop.portal.Print'><property name='version' type='u' access='read'/></interface></node>"


def settings_files():
    home = pathlib.Path(os.environ["HOME"])
    folders = [
        os.environ.get("XDG_CONFIG_HOME") or home / ".config",
        *os.environ["XDG_CONFIG_DIRS"].split(":"),
        "/etc",
        os.environ.get("XDG_DATA_HOME") or home / ".local/share",
        *os.environ["XDG_DATA_DIRS"].split(":"),
    ]
    desktops = [f"{name.lower()}-" for name in os.environ.get("XDG_CURRENT_DESKTOP", "").split(":") if name]
    return [pathlib.Path(folder, "xdg-desktop-portal", f"{name}portals.conf") for folder in folders for name in (*desktops, "")]


def chosen():
    """The backend for each interface."""
    file = next((file for file in settings_files() if file.exists()), None)
    settings = GLib.KeyFile()
    if file:
        settings.load_from_file(str(file), GLib.KeyFileFlags.NONE)

    def backend(part):
        for key in (f"{IMPL}.{part}", "default"):
            try:
                return settings.get_string_list("preferred", key)[0]
            except GLib.Error:
                continue
        return None

    return {part: backend(part) for part in PARTS}


def answers(connection, service):
    arguments = GLib.Variant("(ss)", (f"{IMPL}.Print", "version"))
    try:
        connection.call_sync(service, PATH, "org.freedesktop.DBus.Properties", "Get", arguments, None, 0, 10000, None)
    except GLib.Error:
        return False
    return True


def main():
    if "--version" in sys.argv:
        print(f"xdg-desktop-portal {os.environ['STAND_IN_VERSION']}")
        return
    connection = Gio.bus_get_sync(Gio.BusType.SESSION)
    choices = chosen()
    pathlib.Path(os.environ["STAND_IN_CHOICES"]).write_text(json.dumps(choices), encoding="utf-8")
    if choices["Print"] and answers(connection, f"{IMPL}.desktop.{choices['Print']}"):
        (printing,) = Gio.DBusNodeInfo.new_for_xml(PRINTING).interfaces
        connection.register_object(PATH, printing, None, lambda *_: GLib.Variant("u", 1), None)
    loop = GLib.MainLoop()
    Gio.bus_own_name_on_connection(connection, PORTAL, Gio.BusNameOwnerFlags.NONE, None, lambda *_: loop.quit())
    loop.run()


if __name__ == "__main__":
    main()
