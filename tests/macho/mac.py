"""A fake Mac for the scripts of packaging/macos: stand-ins for its commands, which tests can make fail."""

import pathlib
import shutil
import subprocess
import tempfile

import mach_o


class Mac:
    def __init__(self, case, commands, tools, prologue=""):
        """`commands` maps the Mac's commands to scripts for when all goes well; `tools` are commands of this system; `prologue` begins
        each script."""
        folder = tempfile.TemporaryDirectory()
        case.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self._bin, self._well, self._prologue = self.folder / "bin", commands, prologue
        self._bin.mkdir()
        for name in tools:
            (self._bin / name).symlink_to(shutil.which(name))
        for name in commands:
            self.mend(name)

    def command(self, name, does):
        path = self._bin / name
        path.write_text(f"#!/bin/bash\nset -e\n{self._prologue}\n{does}\n")
        path.chmod(0o755)

    def mend(self, name):
        self.command(name, self._well[name])

    def remove(self, name):
        (self._bin / name).unlink()

    def project(self):
        """Copies the scripts into a project folder and returns it."""
        return shutil.copytree(mach_o.SOURCES / "packaging/macos", self.folder / "project/packaging/macos").parents[1]

    def run(self, *command, **options):
        """Runs a command, whose environment is the Mac's PATH and `env`, and returns its result."""
        environment = {"PATH": str(self._bin)} | options.pop("env", {})
        return subprocess.run(command, capture_output=True, text=True, timeout=60, env=environment, **options)
