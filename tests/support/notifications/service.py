#!/usr/bin/python3
"""Receives the session's notifications and writes each to a file as a line of JSON: service.py FILE [CAPABILITY ...]"""

import json
import pathlib
import sys

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

NAME = "org.freedesktop.Notifications"
INTERFACE = f"""
<node><interface name="{NAME}">
  <method name="GetCapabilities"><arg type="as" direction="out"/></method>
  <method name="Notify">
    <arg type="s" direction="in"/><arg type="u" direction="in"/><arg type="s" direction="in"/><arg type="s" direction="in"/>
    <arg type="s" direction="in"/><arg type="as" direction="in"/><arg type="a{{sv}}" direction="in"/><arg type="i" direction="in"/>
    <arg type="u" direction="out"/>
  </method>
</interface></node>"""


def main():
    file, capabilities = pathlib.Path(sys.argv[1]), sys.argv[2:]
    last = 0

    def serve(_bus, _sender, _path, _interface, method, values, call):
        nonlocal last
        if method == "GetCapabilities":
            return call.return_value(GLib.Variant("(as)", (capabilities,)))
        application, replaced, icon, heading, body, actions, hints, time = values.unpack()
        last = replaced or last + 1
        shown = {"id": last, "replaced": replaced, "application": application, "icon": icon, "heading": heading, "body": body}
        with file.open("a", encoding="utf-8") as notes:
            notes.write(json.dumps(shown | {"actions": actions, "hints": hints, "time": time}) + "\n")
        return call.return_value(GLib.Variant("(u)", (last,)))

    bus = Gio.bus_get_sync(Gio.BusType.SESSION)
    bus.register_object("/org/freedesktop/Notifications", Gio.DBusNodeInfo.new_for_xml(INTERFACE).interfaces[0], serve, None, None)
    Gio.bus_own_name_on_connection(bus, NAME, Gio.BusNameOwnerFlags.NONE, lambda *_: file.touch(), None)
    GLib.MainLoop().run()


if __name__ == "__main__":
    main()
