"""Runs programs and counts: instructions by callgrind, allocations by a preloaded hook."""

import dataclasses
import json
import os
import pathlib
import re
import subprocess
import tempfile
import time

PROJECT = pathlib.Path(__file__).resolve().parents[1]
ON_OWN_SCREEN = PROJECT / "tests/support/on_own_screen.py"
MICROSECONDS = 1_000_000
PATH = "/usr/bin:/bin:/usr/sbin:/sbin"


@dataclasses.dataclass
class Usage:
    """The resources that a program has used: seconds by the clock and of the processor, and its peak of memory in kilobytes."""

    seconds: float
    processor: float
    peak: int


@dataclasses.dataclass
class Bench:
    """A build, and the environment of all programs."""

    build: pathlib.Path
    variables: dict = dataclasses.field(default_factory=dict)

    @property
    def bundle(self):
        return self.build / "TandemTrim.bundle"

    def program(self, name):
        return self.build / "bench" / name

    @property
    def program_itself(self):
        return self.build / "host/tandem-trim"

    def environment(self):
        """The variables of a fixed environment: a language that the bundle has, and every symbol bound when the program starts."""
        return {"PATH": PATH, "HOME": os.devnull, "LC_ALL": "C.UTF-8", "LANGUAGE": "en", "LD_BIND_NOW": "1"} | self.variables

    def run(self, command, screen=False, **variables):
        """The standard output of a command that must succeed."""
        environment = self.environment() | variables
        if screen:
            # on_own_screen.py sets the home folder.
            given = (f"{name}={value}" for name, value in environment.items() if name not in ("HOME", "TMPDIR", "LANGUAGE"))
            command = [ON_OWN_SCREEN, *given, *map(str, command)]
        result = subprocess.run(command, env=environment, capture_output=True, text=True, check=False)
        if result.returncode != 0:
            raise RuntimeError(f"{' '.join(map(str, command))} failed:\n{result.stdout}{result.stderr}")
        return result.stdout

    def on_screen(self, mode, rounds, *commands):
        """The figures of felt/measure.py for these commands on one screen: a list for each round, in it one for each command."""
        words = [word for command in commands for word in ("--", *command)]
        answer = self.run([PROJECT / "bench/felt/measure.py", self.program("screen"), mode, str(rounds), *words], screen=True, LD_BIND_NOW="")
        return json.loads(next(line for line in answer.splitlines() if line.startswith("[[")))

    def usage(self, *command):
        """The resources that a program uses from its start to its end, without LD_BIND_NOW, as in normal use."""
        with tempfile.TemporaryFile() as output:
            start = time.perf_counter()
            environment = self.environment() | {"LD_BIND_NOW": ""}
            process = subprocess.Popen(list(map(str, command)), env=environment, stdin=subprocess.DEVNULL, stdout=output, stderr=output)
            _, status, used = os.wait4(process.pid, 0)
            seconds = time.perf_counter() - start
            process.returncode = os.waitstatus_to_exitcode(status)
            if process.returncode != 0:
                output.seek(0)
                raise RuntimeError(f"{' '.join(map(str, command))} failed:\n{output.read().decode()}")
        return Usage(seconds, used.ru_utime + used.ru_stime, used.ru_maxrss)

    def callgrind(self, command, options, **how):
        """The instructions of each part of the run that was dumped, as (reason of the dump, count)."""
        with tempfile.TemporaryDirectory() as folder:
            counter = ["valgrind", "--quiet", "--tool=callgrind", f"--callgrind-out-file={folder}/out", *options]
            self.run([*counter, *command], **how)
            dumps = [path.read_text() for path in sorted(pathlib.Path(folder).iterdir(), key=number_of_dump)]
        return [(re.search(r"^desc: Trigger: (?:Client Request: )?(.*)$", dump, re.MULTILINE)[1],
                 int(re.search(r"^(?:totals|summary): (\d+)", dump, re.MULTILINE)[1])) for dump in dumps]

    def instructions(self, *command, **how):
        """The instructions of the parts that a measuring program names; those of one name in the order of their runs."""
        counts = {}
        for name, count in self.callgrind(command, ["--instr-atstart=no"], **how):
            if name != "Program termination":
                counts.setdefault(name, []).append(count)
        return counts

    def numbers(self, *command, **how):
        """The numbers that a measuring program prints, by their names; those of one name in the order of their lines."""
        counts = {}
        for name, number in re.findall(r"^(.*)\t(-?\d+)$", self.run(command, **how), re.MULTILINE):
            counts.setdefault(name, []).append(int(number))
        return counts

    def allocations(self, *command, **how):
        return self.numbers("env", f"LD_PRELOAD={self.program('allocations.so')}", *command, **how)


def number_of_dump(path):
    ending = path.suffix[1:]
    return int(ending) if ending.isdigit() else 0
