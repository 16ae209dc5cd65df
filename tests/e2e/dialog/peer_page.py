#!/usr/bin/python3
"""The controls of the panel's page as plain toolkit widgets with labels. A test compares what a listener hears from both."""

import gi

gi.require_version("Gtk", "4.0")
from gi.repository import GLib, Gtk  # noqa: E402

# The panel's state when the test begins.
MENUS = {"Image Direction:": (("Long-Edge Feed", "Short-Edge Feed"), 0), "Print Position:": (("Left", "Center", "Right"), 1)}
LIMITS = {"Top Margin:": 20, "Bottom Margin:": 30, "Left Margin:": 15, "Right Margin:": 25}
DEFAULT, STEP, PAGE = 5, 1, 10
AT_FIRST = {"Top Margin:": 12}


def main():
    loop = GLib.MainLoop()
    page = Gtk.Grid(row_spacing=12, column_spacing=12)
    switch = Gtk.CheckButton(label="Use Tandem Trim", active=True)
    page.attach(switch, 0, 0, 2, 1)
    numbers = []

    def add(label, control):
        page.attach_next_to(Gtk.Label(label=label, mnemonic_widget=control), None, Gtk.PositionType.BOTTOM, 1, 1)
        page.attach_next_to(control, page.get_last_child(), Gtk.PositionType.RIGHT, 1, 1)

    for label, (titles, chosen) in MENUS.items():
        menu = Gtk.DropDown.new_from_strings(titles)
        menu.set_selected(chosen)
        add(label, menu)
    for label, limit in LIMITS.items():
        value = AT_FIRST.get(label, DEFAULT)
        numbers.append(Gtk.SpinButton(adjustment=Gtk.Adjustment(value=value, upper=limit, step_increment=STEP, page_increment=PAGE)))
        add(label, numbers[-1])
    restore = Gtk.Button(label="Restore Defaults")
    restore.connect("clicked", lambda _: [number.set_value(DEFAULT) for number in numbers])
    page.attach_next_to(restore, None, Gtk.PositionType.BOTTOM, 2, 1)
    window = Gtk.Window(child=page)
    window.connect("close-request", lambda _: loop.quit())
    window.present()
    loop.run()


if __name__ == "__main__":
    main()
