"""A running program as a screen reader sees it: its windows and their visible contents, through the accessibility bus.

GTK returns all nodes that were ever requested in one answer, so reading everything takes two calls: one for these nodes, one for the
windows. The children of a node are requested again only if their number has changed, or one of them is gone or hidden.
"""

import dataclasses
import functools

import dbus
import dbus.bus
import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402

from patience import PATIENCE  # noqa: E402

CHECKED, FOCUSED, SELECTED, SENSITIVE, VISIBLE = (
    int(getattr(Atspi.StateType, name)) for name in ("CHECKED", "FOCUSED", "SELECTED", "SENSITIVE", "VISIBLE")
)
IN_WINDOW = 1
ROOT = "/org/a11y/atspi/accessible/root"
Gone = dbus.DBusException  # raised when a node does not exist any more


def _ask(bus, place, path, interface, method, kinds="", *values):
    """Returns the answer's value, or a sequence if it has several."""
    return bus.call_blocking(place, path, interface, method, kinds, values, timeout=PATIENCE)


@functools.cache
def bus_address():
    """The address of the accessibility bus, as the session bus knows it."""
    return _ask(dbus.SessionBus(), "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress")


@functools.cache
def _bus():
    return dbus.bus.BusConnection(bus_address())


@functools.cache
def _role_name(role):
    return Atspi.role_get_name(Atspi.Role(role))


@dataclasses.dataclass
class Node:
    """A visible object as it was when it was read."""

    path: str
    role: str
    name: str
    description: str
    states: int
    inside: list = dataclasses.field(default_factory=list)

    def has(self, state):
        return bool(self.states >> state & 1)

    def all(self):
        """The node and all its descendants, from top to bottom."""
        yield self
        for node in self.inside:
            yield from node.all()


class Program:
    """A program on the accessibility bus."""

    def __init__(self, place):
        self.place_on_bus = place
        self._children = {}

    @classmethod
    def of_process(cls, pid):
        """The program of this process; None until it is on the bus."""
        for place, _ in _ask(_bus(), "org.a11y.atspi.Registry", ROOT, "org.a11y.atspi.Accessible", "GetChildren"):
            if _ask(_bus(), "org.freedesktop.DBus", "/", "org.freedesktop.DBus", "GetConnectionUnixProcessID", "s", place) == pid:
                return cls(place)
        return None

    def ask(self, path, interface, method, kinds="", *values):
        """Calls a method of one of the program's objects and returns the answer."""
        return _ask(_bus(), self.place_on_bus, path, f"org.a11y.atspi.{interface}", method, kinds, *values)

    def windows(self):
        """Its windows with their visible nodes, the newest window last."""
        known, counts = self._known()
        tree = self._tree(ROOT, known, counts)
        if any(path not in known for path in _paths(tree)):
            known, _ = self._known()
        return _nodes(tree, known)[0].inside

    def made(self):
        """The paths of all its objects that were ever requested, visible or not."""
        return set(self._known()[0])

    def _known(self):
        """All nodes that were ever requested, by path and without their children; and each node's number of children."""
        known, counts = {}, {}
        items = self.ask("/org/a11y/atspi/cache", "Cache", "GetItems")
        for (_, path), _, _, _, count, _, name, role, description, (states, _) in items:
            known[path] = Node(path, _role_name(role), name, description, states)
            counts[path] = count
        return known, counts

    def _tree(self, path, known, counts):
        """The path, and the trees of its visible children."""
        children = self._children.get(path, ())
        as_known = len(children) == counts.get(path) and all(child in known and known[child].has(VISIBLE) for child in children)
        if not as_known or path == ROOT:  # GTK does not count windows
            children = self._children[path] = self._ask_for_children(path)
        return path, [self._tree(child, known, counts) for child in children]

    def _ask_for_children(self, path):
        try:
            return [child for _, child in self.ask(path, "Accessible", "GetChildren")]
        except Gone:
            return []

    # A user's actions on a node, and properties beyond its name.

    def press(self, node):
        self.ask(node.path, "Action", "DoAction", "i", 0)

    def replace_text(self, node, text):
        self.ask(node.path, "EditableText", "SetTextContents", "s", text)

    def text(self, node):
        return self.ask(node.path, "Text", "GetText", "ii", 0, 2**31 - 1)

    def value(self, node):
        """The number that the node shows."""
        path, properties = node.path, "org.freedesktop.DBus.Properties"
        return _ask(_bus(), self.place_on_bus, path, properties, "Get", "ss", "org.a11y.atspi.Value", "CurrentValue")

    def place(self, node):
        """The node's left edge, top edge, width and height in its window."""
        return self.ask(node.path, "Component", "GetExtents", "u", IN_WINDOW)


def _paths(tree):
    path, inside = tree
    yield path
    for one in inside:
        yield from _paths(one)


def _nodes(tree, known):
    """A list with the tree's node; empty if the node is gone."""
    path, inside = tree
    if path not in known:
        return []
    return [dataclasses.replace(known[path], inside=[node for one in inside for node in _nodes(one, known)])]
