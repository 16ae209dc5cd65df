"""What a user hears from a running program: the events that it sends to screen readers, as words."""

import dbus
import dbus.bus
import dbus.mainloop.glib
import screen_reader
from gi.repository import GLib

# States that a screen reader announces when they begin; for "checked" also when it ends.
STATES = ("focused", "selected", "expanded", "checked")
PROPERTIES = {"accessible-name": "name", "accessible-description": "description"}


def words(*spoken):
    """The words that are spoken. Names that the toolkit derives from a class are left out."""
    return frozenset(word for word in spoken if word and not word.startswith("Gtk"))


class Listener:
    """Listens to a program from now on. Like a screen reader, it follows the texts of numbers by their change events only."""

    def __init__(self, program):
        self._program = program
        self._bus = dbus.bus.BusConnection(screen_reader.bus_address(), mainloop=dbus.mainloop.glib.DBusGMainLoop())
        self._events = []
        self._nodes = {}
        self.texts = {}
        place = program.place_on_bus
        self._bus.add_signal_receiver(self._note, dbus_interface="org.a11y.atspi.Event.Object", bus_name=place, member_keyword="member", path_keyword="path")
        self._look()

    def _note(self, kind, begin, _length, value, _more, member, path):
        self._events.append((member, str(kind), str(path), int(begin), value))

    def _look(self):
        self._nodes |= {node.path: node for window in self._program.windows() for node in window.all()}
        for node in self._nodes.values():
            if node.role == "spin button" and node.path not in self.texts:
                self.texts[node.path] = self._program.text(node)

    def hears(self):
        """What has been spoken since the last call: a set of (event, role, words)."""
        # Events that were sent before the answer to this call arrive before it.
        self._bus.call_blocking(self._program.place_on_bus, screen_reader.ROOT, "org.a11y.atspi.Accessible", "GetRole", "", ())
        while GLib.MainContext.default().iteration(False):
            pass
        events, self._events = self._events, []
        if events:
            self._look()
        return {said for event in events if (said := self._said(*event))}

    def _said(self, member, kind, path, begin, value):
        node = self._nodes.get(path)
        if not node:
            return None
        if member == "TextChanged" and path in self.texts:
            known = self.texts[path]
            self.texts[path] = known[:begin] + str(value) + known[begin:] if kind == "insert" else known[:begin] + known[begin + len(value) :]
            return "text", node.role, words(node.name, self.texts[path])
        # A changed label outside the focus is not spoken.
        if member == "PropertyChange" and kind in PROPERTIES and node.role != "label":
            return PROPERTIES[kind], node.role, words(node.name, str(value))
        if member == "StateChanged" and kind in STATES and (begin or kind == "checked"):
            spoken = words(node.name, node.description, self.texts.get(path))
            return ("focused" if kind == "focused" else kind if begin else f"not {kind}"), node.role, spoken
        return None


def is_heard(said, heard):
    """Whether `heard` has this event and role with at least these words."""
    event, role, spoken = said
    return any(other[:2] == (event, role) and spoken <= other[2] for other in heard)
