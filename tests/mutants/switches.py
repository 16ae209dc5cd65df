"""Writes sources anew, so that every place asks a switch whether it is to be mutated (switch.hpp)."""
import pathlib
import re
from dataclasses import dataclass

from places import Place

BLOCK = 256
SWITCH = pathlib.Path(__file__).resolve().with_name('switch.hpp')


@dataclass
class Numbered:
    """A place with its number (that of its first mutant), its line, and how many of the same text are in the file up to it."""
    place: Place
    number: int
    line: int
    original: str
    ordinal: int

    def mutants(self):
        """Number and name of each mutant. Wherever the lines go, the name stays: file, kind, text, which of its like."""
        for offset, mutant in enumerate(self.place.mutants):
            kind = f'{self.place.kind} {mutant}'.strip()
            yield self.number + offset, f'{self.place.file} | {kind} | {" ".join(self.original.split())} | {self.ordinal}'


def numbered(places, texts):
    """The places with numbers from 1; each file begins a block, so that a change in one does not compile the others anew."""
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
    """What stands before, instead of the operator within, and behind a place."""
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
    if kind in ('condition', 'constant', 'boolean'):
        return call, None, ')'
    return call, detail, ')'


def evaluated_late(text, ones):
    """Nothing is worked out by the compiler: constexpr variables become constants, functions are inline. No byte moves. The constants of
    classes, which have no places, stay."""
    def changed(match):
        end = text.find(b';', match.end())
        if match[1] is None:
            return b'inline   '
        if text[:match.start()].endswith(b'static ') and not any(match.end() <= one.place.begin < end for one in ones):
            return match[0]
        return (b'const ' if not match[1] else b'').ljust(10) + match[1]

    return re.sub(rb'\bconstexpr ((?:const )?)(?=[^(){}=;]*[={])|\bconst(?:expr|eval)\b', changed, text)


def with_switches(text, ones):
    """The text of a file with the switches of its places."""
    edits = []  # (offset, order at the offset, bytes to leave out, what to write)
    for one in ones:
        place, length = one.place, one.place.end - one.place.begin
        before, operator, behind = around(one)
        edits.append((place.begin, (2, -length, one.number), 0, before))
        edits.append((place.end, (0, length, -one.number), 0, behind))
        if operator:
            edits.append((operator[0], (1, 0, 0), operator[1] - operator[0], ', '))
    text, out, at = evaluated_late(text, ones), [f'#include "{SWITCH}"\n#line 1\n'.encode()], 0
    for offset, _, left_out, written in sorted(edits):
        out += [text[at:offset], written.encode()]
        at = offset + left_out
    return b''.join(out) + text[at:]
