"""Reads the built bundle by LLVM's tools, and the stubs that it was linked with."""

import dataclasses
import json
import os
import pathlib
import re
import shlex
import subprocess

SOURCES = pathlib.Path(__file__).resolve().parents[2]
SDK = SOURCES / "cmake/macos/sdk"
BUILD = pathlib.Path(os.environ["TANDEM_TRIM_BUILD"])
CONTENTS = BUILD / "TandemTrim.bundle/Contents"
EXECUTABLE = CONTENTS / "MacOS/TandemTrim"
PROCESSORS = ("arm64", "x86_64")
LLVM = pathlib.Path("/usr/lib/llvm-19/bin")


def output_of(tool, *arguments):
    return subprocess.run([LLVM / tool, *arguments, EXECUTABLE], check=True, capture_output=True, text=True).stdout


@dataclasses.dataclass
class Class:
    superclass: str = ""
    protocols: set = dataclasses.field(default_factory=set)
    selectors: set = dataclasses.field(default_factory=set)
    class_selectors: set = dataclasses.field(default_factory=set)


@dataclasses.dataclass
class Metadata:
    classes: dict
    protocols: set
    sections: set


def metadata(processor):
    """The bundle's Objective-C classes, protocols and sections."""
    classes, protocols, sections = {}, set(), set()
    section, current, is_meta, expects_protocol = None, None, False, False
    for line in output_of("llvm-objdump", "--macho", f"--arch={processor}", "--objc-meta-data").splitlines():
        if found := re.match(r"Contents of \(\w+,(\w+)\)", line):
            sections.add(found[1])
            section = found[1]
        elif section == "__objc_protolist":
            protocols.update(re.findall(r"__OBJC_PROTOCOL_\$_(\w+)", line))
        elif section != "__objc_classlist":
            continue
        elif found := re.match(r"[0-9a-f]{16} 0x[0-9a-f]+ _OBJC_CLASS_\$_(\w+)", line):
            current, is_meta = classes.setdefault(found[1], Class()), False
        elif line == "Meta Class":
            is_meta = True
        elif found := re.match(r" +superclass 0x[0-9a-f]+ _OBJC_CLASS_\$_(\w+)", line):
            current.superclass = found[1]
        elif found := re.match(r"\s+imp ([-+])\[\w+ (\S+)\]", line):
            (current.class_selectors if found[1] == "+" else current.selectors).add(found[2])
        elif re.match(r"\s+list\[\d+\]", line):
            expects_protocol = not is_meta
        elif expects_protocol and (found := re.match(r"\s+name 0x[0-9a-f]+ (\w+)", line)):
            current.protocols.add(found[1])
            expects_protocol = False
    return Metadata(classes, protocols, sections)


def imports(processor):
    """Every symbol that the bundle takes from a library, as (install name, symbol)."""
    names = {re.sub(r"[.].*", "", pathlib.PurePath(path).name): path for path in libraries(processor)}
    lines = output_of("llvm-nm", "-m", f"--arch={processor}", "--undefined-only").splitlines()
    found = [re.search(r"external (\S+) \(from (\S+)\)", line) for line in lines if line.strip()]
    return {(names[symbol[2]], symbol[1]) for symbol in found if symbol}


def libraries(processor):
    """The install names of the libraries that the bundle links."""
    return re.findall(r"^\t(\S+) \(", output_of("llvm-otool", "-arch", processor, "-L"), re.MULTILINE)


def stubs(processor):
    """Every symbol of the stubs, as (install name, symbol)."""
    found = set()
    for path in SDK.rglob("*.tbd"):
        for document in path.read_text().split("--- !tapi-tbd\n")[1:]:
            library = re.search(r"^install-name: (\S+)", document, re.MULTILINE)[1]
            for part in re.split(r"^  - targets:", document, flags=re.MULTILINE)[1:]:
                if f"{processor}-macos" not in part.splitlines()[0]:
                    continue
                for kind, listed in re.findall(r"^    (symbols|objc-classes):((?:.*\n)(?:^      - .*\n)*)", part, re.MULTILINE):
                    for name in re.findall(r"[\w$]+", listed):
                        found.update((library, prefix + name) for prefix in PREFIXES[kind])
    return found


PREFIXES = {"symbols": ("",), "objc-classes": ("_OBJC_CLASS_$_", "_OBJC_METACLASS_$_")}


def errors_of(source, change, processor="arm64"):
    """The compiler's errors for a source if `change` alters its command in the build."""
    commands = json.loads((BUILD / processor / "compile_commands.json").read_text())
    command = next(command for command in commands if command["file"].endswith(source))
    changed = change(command["command"])
    assert changed != command["command"], source
    arguments = shlex.split(changed)
    del arguments[arguments.index("-o"):arguments.index("-o") + 2]
    return subprocess.run([*arguments, "-fsyntax-only"], cwd=command["directory"], capture_output=True, text=True).stderr
