"""Rewrites sources so that a switch decides at every place whether it is mutated (switch.hpp)."""
import pathlib
import re
from dataclasses import dataclass

from places import Place

BLOCK = 256
SWITCH = pathlib.Path(__file__).resolve().with_name('switch.hpp')


@dataclass
class Numbered:
    """A place with the number of its first mutant, its line, its text, and its ordinal among the file's places with the same text."""
    place: Place
    number: int
    line: int
    original: str
    ordinal: int

    def mutants(self):
        """Number and name of each mutant. The name (file, kind, text, ordinal) does not change when lines move."""
        for offset, mutant in enumerate(self.place.mutants):
            kind = f'{self.place.kind} {mutant}'.strip()
            yield self.number + offset, f'{self.place.file} | {kind} | {" ".join(self.original.split())} | {self.ordinal}'


def numbered(places, texts):
    """The places with numbers. Each file begins a block of numbers, so that a small change in one file seldom recompiles the others."""
    result, seen, following, file = [], {}, 1, None
    for place in places:
        if place.file != file:
            file, following = place.file, (following // BLOCK + 1) * BLOCK
        text = texts[place.file]
        original = text[place.begin:place.end].decode()
        like = (place.file, place.kind, original)
        seen[like] = seen.get(like, 0) + 1
        result.append(Numbered(place, following, text.count(b'\n', 0, place.begin) + 1, original, seen[like]))
        following += len(place.mutants)
    return result


def around(one):
    """The text to write before a place, the operator to replace by a comma (begin and end, or None), and the text to write after it."""
    kind, detail = one.place.kind, one.place.detail
    asks, call = f'mutants::is({one.number})', f'mutants::{kind}({one.number}, '
    if kind == 'statement':
        return f'({asks} ? void() : void(', None, '))'
    if kind == 'jump':
        return f'if (!{asks}) ', None, ''
    if kind == 'declared':
        return '', None, f'; mutants::condition({one.number}, {detail[0]})'
    if kind == 'step':
        other = one.original.replace(detail[0], '--' if detail[0] == '++' else '++')
        return f'({asks} ? {other} : ', None, ')'
    if kind == 'text':
        return call, None, f', "^" {one.original})'
    if kind == 'string':
        return f'({asks} ? @"^" {one.original} : ', None, ')'
    if kind == 'constant':  # in parentheses for @1, an object of Objective-C
        return f'({call}', None, '))'
    if kind in ('condition', 'boolean'):
        return call, None, ')'
    return call, detail, ')'


def evaluated_late(text, ones):
    """The text with run-time evaluation: constexpr variables become const, constexpr functions inline. Offsets do not change. Constants of
    classes stay as they are unless they contain a place."""
    def changed(match):
        end = text.find(b';', match.end())
        if match[1] is None:
            return b'inline   '
        if text[:match.start()].endswith(b'static ') and not any(match.end() <= one.place.begin < end for one in ones):
            return match[0]
        return (b'const ' if not match[1] else b'').ljust(10) + match[1]

    return re.sub(rb'\bconstexpr ((?:const )?)(?=[^(){}=;]*[={])|(?<!if )\bconst(?:expr|eval)\b', changed, text)


def with_switches(text, ones):
    """The text of a file with the switches of its places."""
    edits = []  # (offset, order at the offset, number of bytes to remove, text to insert)
    for one in ones:
        place, length = one.place, one.place.end - one.place.begin
        before, operator, after = around(one)
        edits.append((place.begin, (2, -length, one.number), 0, before))
        edits.append((place.end, (0, length, -one.number), 0, after))
        if operator:
            edits.append((operator[0], (1, 0, 0), operator[1] - operator[0], ', '))
    text, out, at = evaluated_late(text, ones), [f'#include "{SWITCH}"\n#line 1\n'.encode()], 0
    for offset, _, left_out, written in sorted(edits):
        out += [text[at:offset], written.encode()]
        at = offset + left_out
    return b''.join(out) + text[at:]
