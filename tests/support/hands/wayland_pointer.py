"""A pointer on a Wayland screen, by the compositor's protocol for virtual pointers: Debian 12 has no command-line program for it."""

import os
import socket
import struct

DISPLAY, REGISTRY, ANSWER, MANAGER, POINTER = 1, 2, 3, 4, 5  # the objects' numbers; the first is fixed, this client chooses the others
GET_REGISTRY, BIND, SYNC, CREATE_POINTER, MOVE_TO, BUTTON, FRAME = 1, 0, 0, 0, 1, 2, 4  # requests
GLOBAL, DONE = 0, 0  # events
INTERFACE = "zwlr_virtual_pointer_manager_v1"
LEFT_BUTTON = 0x110
SIZE = (1024, 600)


def _text(text):
    raw = text.encode() + b"\0"
    return struct.pack("I", len(raw)) + raw + bytes(-len(raw) % 4)


class Pointer:
    """A virtual pointer. Make it before a program starts, so that the program listens to it."""

    def __init__(self):
        self._socket = socket.socket(socket.AF_UNIX)
        self._socket.connect(os.environ["WAYLAND_DISPLAY"])
        self._events = self._socket.makefile("rb")
        self._ask(DISPLAY, GET_REGISTRY, struct.pack("I", REGISTRY))
        names = {}
        for sender, what, content in self._until_done():
            if (sender, what) == (REGISTRY, GLOBAL):
                name, length = struct.unpack_from("II", content)
                names[content[8 : 8 + length - 1].decode()] = name
        self._ask(REGISTRY, BIND, struct.pack("I", names[INTERFACE]) + _text(INTERFACE) + struct.pack("II", 1, MANAGER))
        self._ask(MANAGER, CREATE_POINTER, struct.pack("II", 0, POINTER))
        self._settle()

    def click(self, x, y):
        self.hold(x, y)
        self.release()

    def hold(self, x, y):
        self.move(x, y)
        self._set_button(1)

    def move(self, x, y):
        self._ask(POINTER, MOVE_TO, struct.pack("IIIII", 0, x, y, *SIZE))
        self._ask(POINTER, FRAME)
        self._settle()

    def release(self):
        self._set_button(0)

    def _set_button(self, is_pressed):
        self._ask(POINTER, BUTTON, struct.pack("III", 0, LEFT_BUTTON, is_pressed))
        self._ask(POINTER, FRAME)
        self._settle()

    def _ask(self, target, what, content=b""):
        self._socket.sendall(struct.pack("II", target, (8 + len(content)) << 16 | what) + content)

    def _until_done(self):
        """Yields the events until the compositor has handled all requests so far, as (sender, what, content)."""
        self._ask(DISPLAY, SYNC, struct.pack("I", ANSWER))
        while True:
            sender, size_and_what = struct.unpack("II", self._events.read(8))
            what, content = size_and_what & 0xFFFF, self._events.read((size_and_what >> 16) - 8)
            if (sender, what) == (ANSWER, DONE):
                return
            if (sender, what) == (DISPLAY, 0):
                raise ConnectionError(content)
            yield sender, what, content

    def _settle(self):
        for _ in self._until_done():
            pass
