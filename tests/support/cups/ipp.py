"""The few requests of the Internet Printing Protocol that tests send directly."""

import http.client
import struct

from patience import PATIENCE

INTEGER, BOOLEAN, ENUM, TEXT, NAME, KEYWORD, URI, CHARSET, LANGUAGE = 0x21, 0x22, 0x23, 0x41, 0x42, 0x44, 0x45, 0x47, 0x48
NO_VALUE, MIME_TYPE = 0x13, 0x49
OPERATION_GROUP, JOB_GROUP, END, PRINTER_GROUP = 0x01, 0x02, 0x03, 0x04

CREATE_JOB, SEND_DOCUMENT, CANCEL_JOB, GET_JOB, GET_JOBS, GET_PRINTER = 0x0005, 0x0006, 0x0008, 0x0009, 0x000A, 0x000B
GET_DEFAULT, GET_PRINTERS = 0x4001, 0x4002
ADD_PRINTER, DELETE_PRINTER = 0x4003, 0x4004
NOT_FOUND, INTERNAL_ERROR = 0x0406, 0x0500
PROCESSING, COMPLETED = 5, 9  # states of a job


class IppError(Exception):
    """The server refused a request."""


def _attribute(tag, name, *values):
    encoded = b""
    for value in values:
        if tag in (INTEGER, ENUM):
            value = struct.pack(">i", value)
        elif tag == BOOLEAN:
            value = bytes([value])
        else:
            value = value.encode()
        encoded += struct.pack(">BH", tag, len(name)) + name.encode() + struct.pack(">H", len(value)) + value
        name = ""  # another value of the same attribute
    return encoded


def beginning(code, attributes=()):
    """The beginning of a message with this operation or status, up to the end of its first group."""
    message = struct.pack(">HHIB", 0x0200, code, 1, OPERATION_GROUP)
    message += _attribute(CHARSET, "attributes-charset", "utf-8")
    message += _attribute(LANGUAGE, "attributes-natural-language", "en")
    return message + b"".join(_attribute(*attribute) for attribute in attributes)


def group(tag, attributes):
    return bytes([tag]) + b"".join(_attribute(*attribute) for attribute in attributes)


def _start_of(message, tag):
    """The index at which the group of this tag begins; the message's end if there is none."""
    at = 8
    while message[at] not in (tag, END):
        at += 1
        if message[at - 1] >= 0x10:
            for _ in ("name", "value"):
                at += 2 + struct.unpack_from(">H", message, at)[0]
    return at


def attributes_of(message, tag):
    """The encoded attributes of the first group of this tag and of all later groups."""
    return message[_start_of(message, tag) + 1 :] if message[_start_of(message, tag)] == tag else bytes([END])


def _encode(operation, attributes, printer_attributes):
    more = group(PRINTER_GROUP, printer_attributes) if printer_attributes else b""
    return beginning(operation, attributes) + more + bytes([END])


def _decode(message):
    """The groups after the first one, each a dictionary from name to list of values."""
    groups, name, at = [], "", 8
    while message[at] != END:
        tag, at = message[at], at + 1
        if tag < 0x10:
            groups.append({})
            continue
        length = struct.unpack_from(">H", message, at)[0]
        name = message[at + 2 : at + 2 + length].decode() or name
        at += 2 + length
        length = struct.unpack_from(">H", message, at)[0]
        value = message[at + 2 : at + 2 + length]
        at += 2 + length
        if tag in (INTEGER, ENUM):
            value = struct.unpack(">i", value)[0]
        elif tag == BOOLEAN:
            value = bool(value[0])
        elif tag >= 0x40:
            value = value.decode()
        groups[-1].setdefault(name, []).append(value)
    return groups[1:]


def ask(address, operation, attributes=(), printer_attributes=(), path="/", data=b""):
    """Sends a request to (host, port) and returns the groups of the answer. Raises IppError when it is refused."""
    connection = http.client.HTTPConnection(*address, timeout=PATIENCE)
    try:
        body = _encode(operation, attributes, printer_attributes) + data
        connection.request("POST", path, body, {"Content-Type": "application/ipp"})
        answer = connection.getresponse()
        message = answer.read()
    finally:
        connection.close()
    if answer.status != 200:
        raise IppError(f"the server answered with HTTP status {answer.status}")
    status = struct.unpack_from(">H", message, 2)[0]
    if status >= 0x0400:
        raise IppError(f"the server answered with IPP status 0x{status:04x}")
    return _decode(message)
