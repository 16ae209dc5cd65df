"""Finds the places in the sources that can be mutated, by clang's syntax tree."""
import concurrent.futures
import functools
import hashlib
import json
import os
import pathlib
import pickle
import re
import shlex
import subprocess
import sys
from dataclasses import dataclass, field

COMPILER = 'clang++-19'
RELATIONS = {'<': 'less', '<=': 'lessOrEqual', '>': 'greater', '>=': 'greaterOrEqual'}
OPERATORS = RELATIONS | {'+': 'plus', '-': 'minus', '*': 'times', '<<': 'leftShift', '>>': 'rightShift', '|': 'bitOr', '&': 'bitAnd',
                         '+=': 'add'}
# Nodes that only wrap one child.
WRAPPERS = {'ImplicitCastExpr', 'ExprWithCleanups', 'ParenExpr', 'CXXBindTemporaryExpr', 'MaterializeTemporaryExpr',
            'CXXFunctionalCastExpr'}
STATEMENTS = {'CallExpr', 'CXXMemberCallExpr', 'CXXOperatorCallExpr', 'CompoundAssignOperator', 'ObjCMessageExpr', 'UnaryOperator'}
# Nodes that the compiler evaluates or adds, and the texts of exceptions, which tests need not check.
PASSED_OVER = {'StaticAssertDecl', 'TemplateArgument', 'EnumDecl', 'ConstantExpr', 'UserDefinedLiteral', 'CXXDefaultArgExpr',
               'CXXThrowExpr'}
# Functions whose last argument is the text of an exception.
RAISING = re.compile(r'(\w+::)*(requiredText|requiredDecimalText)\b')
# Macros of Objective-C that stand for a constant.
CONSTANTS = {b'nil', b'NO', b'YES'}
CLASS = re.compile(rb'^@implementation (\w+)$', re.MULTILINE)
HEADERS = ('.h', '.hpp')


@dataclass(frozen=True)
class Place:
    """The bytes from `begin` to `end` of a file. `kind` is the function of switch.hpp to call there, or another kind of change.
    `detail` is an operator's begin and end, the name of a condition's variable, or a step's operator."""
    file: str
    begin: int
    end: int
    kind: str
    detail: tuple = field(default=(), compare=False)

    @property
    def mutants(self):
        return ('true', 'false') if self.kind in ('condition', 'declared') else ('',)


def flags_of(commands):
    """The include folders, macros and dialect of each file, from the build's commands."""
    flags, kinds = {}, ('-I', '-D', '-isystem', '-fobjc', '-fconstant-string')
    for each in commands:
        words = iter(shlex.split(each['command'])[1:])
        chosen = ([word, next(words)] if word == '-isystem' else [word] for word in words if word.startswith(kinds))
        flags.setdefault(each['file'], sum(chosen, []))
    return flags


def names_in(source, text):
    """What the project's declarations in a source have in their names. Objective-C has no namespaces, and clang 19 cannot write the tree
    of a protocol."""
    if not source.endswith('.mm'):
        return ['tandemtrim']
    return ['tandemtrim', '(anonymous namespace)', *(name.decode() for name in CLASS.findall(text))]


def syntax_trees(root, source, flags, name):
    """The declarations with this in their names, in a source and its headers. Clang names a location's file only when it changes;
    `locate` adds it to the others."""
    file = None

    def locate(node):
        nonlocal file
        if 'offset' in node:
            file = node.setdefault('file', file)
        return node

    command = [COMPILER, '-std=c++20', '-I.', *flags, '-fsyntax-only', '-w', '-Xclang', '-ast-dump=json',
               '-Xclang', f'-ast-dump-filter={name}', source]
    text = subprocess.run(command, cwd=root, check=True, capture_output=True, text=True).stdout.strip()
    decoder = json.JSONDecoder(object_hook=locate)
    at = 0
    while at < len(text):
        tree, at = decoder.raw_decode(text, at)
        yield tree
        at += len(text[at:at + 80]) - len(text[at:at + 80].lstrip())


def type_of(node):
    return node.get('type', {}).get('desugaredQualType', node.get('type', {}).get('qualType', ''))


class Finder:
    """Walks a syntax tree and collects the places in the files of `texts`."""

    def __init__(self, texts):
        self.texts = texts
        self.places = set()

    def written(self, location):
        """The location in the text. It is empty in a macro, unless the macro stands for a constant."""
        macro = location.get('expansionLoc')
        if macro is None:
            return location
        text, begin = self.texts.get(os.path.normpath(macro.get('file', '')), b''), macro.get('offset', 0)
        return macro if text[begin:begin + macro.get('tokLen', 0)] in CONSTANTS else {}

    def range(self, node):
        """File, begin and end of a node; None if it is not in a file of `texts`."""
        begin, end = (self.written(node.get('range', {}).get(edge, {})) for edge in ('begin', 'end'))
        if 'offset' not in begin or 'offset' not in end:
            return None
        file, first, last = os.path.normpath(begin['file']), begin['offset'], end['offset'] + end['tokLen']
        return (file, first, last) if file in self.texts and first < last else None

    def constant(self, node):
        """The constant of Objective-C that the node is, or None."""
        found = self.range(node)
        text = found and self.texts[found[0]][found[1]:found[2]]
        return text if text in CONSTANTS else None

    def add(self, node, kind, detail=()):
        if found := self.range(node):
            self.places.add(Place(*found, kind, detail))

    def walk(self, node):
        kind, inner = node.get('kind', ''), node.get('inner', [])
        if kind in PASSED_OVER or node.get('explicitlyDefaulted') or (node.get('isImplicit') and kind != 'CXXRecordDecl'):
            return  # a lambda's implicit class is walked, as the body there has types
        if constant := self.constant(node):
            if constant != b'nil':
                self.add(node, 'boolean')
            return
        if kind in ('FunctionTemplateDecl', 'ClassTemplateDecl'):  # without its instantiations
            declared = [child for child in inner if 'Template' not in child.get('kind', '')]
            inner = declared[:1]
        if kind == 'CXXRecordDecl':  # without static constants, which the compiler evaluates
            inner = [child for child in inner if child.get('kind') != 'VarDecl']
        self.statement(node, kind, inner)
        self.expression(node, kind, inner)
        if kind == 'CXXForRangeStmt':  # without the loop that the compiler generates
            inner = [child for child in inner[:-1] if self.names_range(child)] + inner[-1:]
        if kind == 'CallExpr' and self.raises(node):
            inner = inner[:-1]
        if node.get('selector') == 'raise:format:':
            inner = inner[:1]
        if kind == 'ObjCStringLiteral':
            inner = []
        if kind == 'CXXRewrittenBinaryOperator':  # as written, without the comparison that the compiler generates
            inner = self.operands_as_written(node)
            self.operator(node, inner, of_class=True)
        for child in inner:
            self.walk(child)

    @staticmethod
    def names_range(node):
        return any(child.get('name', '').startswith('__range') for child in node.get('inner', []))

    def operands_as_written(self, node):
        """The operands of the inner call that covers the same text as the node."""
        inside = [node]
        while inside:
            each = inside.pop(0)
            if each.get('kind') in ('CXXOperatorCallExpr', 'BinaryOperator') and self.range(each) == self.range(node):
                return each['inner'][-2:]
            inside += each.get('inner', [])
        return []

    def raises(self, node):
        found = self.range(node)
        return found and RAISING.match(self.texts[found[0]][found[1]:found[2]].decode())

    def statement(self, node, kind, inner):
        if kind in ('IfStmt', 'WhileStmt'):
            first = int(node.get('hasInit', False))
            if node.get('hasVar'):
                variable = inner[first]['inner'][0]
                if kind == 'IfStmt':  # a `while` cannot have both a declaration and a condition
                    self.add(variable, 'declared', (variable['name'],))
                first += 1
            elif not node.get('isConstexpr'):
                self.condition(inner[first])
            for child in inner[first + 1:]:
                self.removable(child, of_branch=node.get('hasElse', False))
        elif kind == 'ForStmt':
            self.condition(inner[2])
            self.removable(inner[-1])
        elif kind in ('CXXForRangeStmt', 'ObjCForCollectionStmt'):
            self.removable(inner[-1])
        elif kind == 'CompoundStmt':
            for child in inner:
                self.removable(child)

    def removable(self, node, of_branch=False):
        """Adds a statement that can be left out, but no jump before an `else`: an `if` in its place would take the `else`."""
        if node.get('kind') in ('BreakStmt', 'ContinueStmt') and not of_branch:
            self.add(node, 'jump')
            return
        outermost = node
        while node.get('kind') in ('ExprWithCleanups', 'ImplicitCastExpr'):
            node = node['inner'][0]
        if node.get('kind') in STATEMENTS or (node.get('kind') == 'BinaryOperator' and node['opcode'] == '='):
            self.add(outermost, 'statement')

    def condition(self, node):
        """Adds the operands of a condition, each of which mutants make true and false."""
        kind, inner, opcode = node.get('kind', ''), node.get('inner', []), node.get('opcode')
        if kind in WRAPPERS and len(inner) == 1:
            self.condition(inner[0])
        elif kind == 'BinaryOperator' and opcode in ('&&', '||'):
            self.condition(inner[0])
            self.condition(inner[1])
        elif kind == 'BinaryOperator' and opcode == ',':
            self.condition(inner[1])
        elif kind == 'UnaryOperator' and opcode == '!':
            self.condition(inner[0])
        elif kind not in ('CXXBoolLiteralExpr', '') and not self.constant(node):
            self.add(node, 'condition')

    def expression(self, node, kind, inner):
        opcode = node.get('opcode')
        if kind in ('BinaryOperator', 'CompoundAssignOperator', 'CXXOperatorCallExpr'):
            self.operator(node, inner[1:] if kind == 'CXXOperatorCallExpr' else inner, kind == 'CXXOperatorCallExpr')
        if (kind == 'BinaryOperator' and opcode in ('&&', '||')) or kind == 'CXXRewrittenBinaryOperator':
            self.condition(node)
        elif kind == 'ConditionalOperator' or (kind == 'UnaryOperator' and opcode == '!'):
            self.condition(inner[0])
        elif kind in ('ReturnStmt', 'VarDecl') and inner and self.is_bool(node if kind == 'VarDecl' else inner[0]):
            self.condition(inner[-1])
        elif kind == 'UnaryOperator' and opcode in ('++', '--'):
            self.add(node, 'step', (opcode,))
        elif kind in ('IntegerLiteral', 'CharacterLiteral', 'FloatingLiteral'):
            self.add(node, 'constant')
        elif kind == 'CXXBoolLiteralExpr':
            self.add(node, 'boolean')
        elif kind == 'StringLiteral':
            self.add(node, 'text')
        elif kind == 'ObjCStringLiteral':
            self.add(node, 'string')

    @staticmethod
    def is_bool(node):
        named = node.get('type', {}).get('qualType', '').removeprefix('const ')
        return named == 'BOOL' or type_of(node).removeprefix('const ') == 'bool'

    def operator(self, node, operands, of_class):
        ranges = [self.range(each) for each in (node, *operands)]
        if len(operands) != 2 or not all(ranges):
            return
        (file, *_), (_, _, left), (_, right, _) = ranges
        written = self.texts[file][left:right].decode().strip()
        if written in ('==', '!=', *RELATIONS):
            self.add(node, 'condition')
        is_distance = written == '-' and all('*' in type_of(each) for each in operands)
        is_known = not of_class and 'dependent' not in type_of(node) and not is_distance
        if written in RELATIONS or (written in OPERATORS and is_known):
            self.add(node, OPERATORS[written], (left, right))


def places_in(root, texts, flags, kept, source):
    """The places of a source and its headers. The folder `kept` caches them until the source, a header or this file changes."""
    headers = b''.join(text for file, text in texts.items() if file.endswith(HEADERS))
    digest = hashlib.sha256(pathlib.Path(__file__).read_bytes() + headers + texts[source] + repr(flags.get(source)).encode()).hexdigest()
    file = kept / source.replace('/', '_')
    if file.exists():
        known, places = pickle.loads(file.read_bytes())
        if known == digest:
            return places
    finder = Finder(texts)
    for name in names_in(source, texts[source]):
        for tree in syntax_trees(root, source, flags.get(source, []), name):
            finder.walk(tree)
    if any((root / each).read_bytes() != text for each, text in texts.items() if each == source or each.endswith(HEADERS)):
        sys.exit(f'{source} or a header changed while it was read; run it again')
    kept.mkdir(parents=True, exist_ok=True)
    file.write_bytes(pickle.dumps((digest, finder.places)))
    return finder.places


def places_of(root, texts, flags, kept):
    """All places in the files (name to bytes), ordered by where they begin, outer ones first."""
    sources = [file for file in texts if not file.endswith(HEADERS)]
    with concurrent.futures.ProcessPoolExecutor() as pool:
        found = set().union(*pool.map(functools.partial(places_in, root, texts, flags, kept), sources))
    # Of two places with the same text, the kinds that wrap the whole text come first.
    whole = ('statement', 'condition')
    return sorted(found, key=lambda place: (place.file, place.begin, -place.end, place.kind not in whole, place.kind))
