"""A user's hands: presses keys and clicks on a test's screen. Keys are named as in X ("ctrl+a", "Return")."""

import functools
import os
import subprocess

from hands.wayland_pointer import Pointer


def _run(*words):
    subprocess.run(words, check=True, capture_output=True)


class XHands:
    def click(self, x, y):
        _run("xdotool", "mousemove", str(x), str(y), "click", "1")

    def hold(self, x, y):
        _run("xdotool", "mousemove", str(x), str(y), "mousedown", "1")

    def move(self, x, y):
        _run("xdotool", "mousemove", str(x), str(y))

    def release(self):
        _run("xdotool", "mouseup", "1")

    def press(self, *keys):
        _run("xdotool", "key", *keys)

    def press_quickly(self, *keys):
        """Presses the keys without a delay between them."""
        _run("xdotool", "key", "--delay", "0", *keys)


class WaylandHands:
    def __init__(self):
        pointer = Pointer()
        self.click, self.hold, self.move, self.release = pointer.click, pointer.hold, pointer.move, pointer.release

    def press(self, *keys):
        words = []
        for key in keys:
            *modifiers, last = key.split("+")
            for modifier in modifiers:
                words += ["-M", modifier]
            words += ["-k", last]
            for modifier in modifiers:
                words += ["-m", modifier]
        _run("wtype", *words)

    press_quickly = press


@functools.cache
def of_this_screen():
    return WaylandHands() if "WAYLAND_DISPLAY" in os.environ else XHands()
