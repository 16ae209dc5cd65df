"""The tests of a build, from CTest's list: which places each reaches, how long it takes, and how to run some of them."""
import hashlib
import json
import os
import pathlib
import re
import resource
import subprocess
import tempfile
import time
from dataclasses import dataclass

from one_by_one import places_reached

HERE = pathlib.Path(__file__).resolve().parent
# Tests that check other things than the mutated sources, tests that take minutes, and repetitions on another screen, in another language,
# by keys or with a view that code makes.
LEFT_OUT = re.compile(r'packages|volume|installation|Wayland|\((c|arabic)\)|_alone:|_module:|fuzz_|surroundings|architecture|resources|'
                      r'macOS|made by code|appkit_host_test: in (?!en)|by key')
FILTER = '--gtest_filter='
# Fewer random sequences, and the same ones for every mutant.
SHORT = ('TANDEM_TRIM_SEED=1', 'TANDEM_TRIM_SEQUENCES=1000')
# Runs a command in separate process and mount namespaces with an empty /tmp. All its processes end with the first one.
APART = ('unshare', '--mount', '--pid', '--fork', '--kill-child', '--mount-proc', '--', 'sh', '-c',
         'mount -t tmpfs -o mode=1777 tests /tmp && "$@"; exit $?', 'sh')
SILENT = {'stdin': subprocess.DEVNULL, 'stdout': subprocess.DEVNULL, 'stderr': subprocess.DEVNULL}
MEMORY = 4 << 30  # bytes; stops an endless loop that allocates


@dataclass(frozen=True)
class Program:
    """A program of GoogleTest or modules of Python's unittest, as CTest runs them."""
    name: str
    command: tuple
    folder: str

    @property
    def is_python(self):
        return 'unittest' in self.command

    @property
    def executable(self):
        """The test program of GoogleTest, before its first option."""
        return next(word for word, option in zip(self.command, self.command[1:]) if option.startswith('--gtest'))

    @property
    def cases(self):
        """The cases of GoogleTest that CTest selects, as an option's value."""
        return next((word.removeprefix(FILTER) for word in self.command if word.startswith(FILTER)), '*')

    def tests(self, names):
        """The command that runs only the tests of these names and stops at the first failure."""
        if self.is_python:
            return [*self.command[:self.command.index('unittest') + 1], '-f', *names]
        kept = (word for word in self.command if word != '--gtest_shuffle' and not word.startswith(FILTER))
        return [*kept, FILTER + ':'.join(f'{name}*' for name in names), '--gtest_fail_fast', '--gtest_brief=1']

    def digest(self):
        """The digest of the test modules or the test program."""
        if self.is_python:
            modules = (name.split('.')[0] for name in self.command[self.command.index('unittest') + 1:])
            files = [pathlib.Path(self.folder, f'{name}.py') for name in modules]
        else:
            files = [pathlib.Path(self.executable)]
        return hashlib.sha256(b''.join(file.read_bytes() for file in files)).hexdigest()


@dataclass(frozen=True)
class Suite:
    """A Python test or a GoogleTest suite, with the seconds that it takes and the places that it reaches."""
    program: Program
    name: str
    seconds: float
    reached: frozenset


def programs_of(build, wanted):
    """The programs and modules whose names in CTest match the regular expression `wanted`, each once."""
    shown = subprocess.run(['ctest', '--show-only=json-v1', '--test-dir', build], check=True, capture_output=True, text=True).stdout
    programs = {}
    for test in json.loads(shown)['tests']:
        name, command = test['name'], test.get('command', [])
        is_test = 'unittest' in command or '--gtest_shuffle' in command
        if is_test and not LEFT_OUT.search(name) and wanted.search(name):
            folder = next((each['value'] for each in test['properties'] if each['name'] == 'WORKING_DIRECTORY'), build)
            tests = tuple(word for word in command if word.startswith(('test_', '/', FILTER)) or '-m' == word)
            programs.setdefault((folder, tests), Program(name, (command[0], *SHORT, *command[1:]), str(folder)))
    return list(programs.values())


def run(program, command, environment, usual):
    """Whether a command succeeds within a multiple of its usual seconds. Endless loops run into that limit."""
    def limit_resources():
        seconds = 5 + int(5 * usual)
        resource.setrlimit(resource.RLIMIT_CPU, (seconds, seconds))
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
        resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY))

    try:
        return subprocess.run([*APART, *command], cwd=program.folder, env={**os.environ, **environment}, timeout=20 + 5 * usual,
                              preexec_fn=limit_resources, **SILENT).returncode == 0
    except subprocess.TimeoutExpired:
        return False


def tests_of(program, record):
    """Yields, for each suite of a program, its name, whether it passes, its seconds and the places that it reaches (from `record`)."""
    reached = {'TANDEM_TRIM_MUTANT_REACHED': str(record)}
    if program.is_python:
        passed, at = record.with_name('tests'), program.command.index('unittest')
        passed.touch()
        run(program, [*program.command[:at - 1], HERE / 'one_by_one.py', passed, *program.command[at + 1:]], reached, 600)
        yield from map(json.loads, passed.read_text().splitlines())
        return
    listed = subprocess.run([program.executable, '--gtest_list_tests', FILTER + program.cases], check=True, capture_output=True,
                            text=True).stdout
    names = re.findall(r'^(\S+\.)(?:\s+#.*)?$', listed, re.MULTILINE)
    # Cases that CTest selects need a process of their own.
    for name in names if program.cases == '*' or program.cases.startswith('-') else [program.cases]:
        begin = time.monotonic()
        passes = run(program, program.tests([name]), reached, 60)
        yield name, passes, time.monotonic() - begin, places_reached(record)


def suites_of(program, places):
    """The suites of a program that pass. `places` is the number of all places."""
    suites = []
    with tempfile.TemporaryDirectory(dir='/dev/shm') as folder:
        os.chmod(folder, 0o755)
        record = pathlib.Path(folder, 'reached')
        record.write_bytes(bytes(places))
        record.chmod(0o666)
        for name, passes, seconds, reached in tests_of(program, record):
            if passes:
                suites.append(Suite(program, name, seconds, frozenset(reached)))
            else:
                print(f'{program.name}, {name}: fails without a mutant and is left out', flush=True)
    if not suites:
        print(f'{program.name}: none of its tests passes', flush=True)
    return suites


def known_suites(file, program, places, sources):
    """The suites of a program. A file caches them until the sources (their digest) or the tests change; an empty list is not cached."""
    key = f'{sources} {program.digest()}'
    if file.exists():
        kept = json.loads(file.read_text())
        if kept['key'] == key:
            return [Suite(program, name, seconds, frozenset(reached)) for name, seconds, reached in kept['suites']]
    suites = suites_of(program, places)
    if not suites:
        return suites
    file.parent.mkdir(exist_ok=True)
    file.write_text(json.dumps({'key': key, 'suites': [(each.name, each.seconds, sorted(each.reached)) for each in suites]}))
    return suites


def pieces(suites, preference, seconds=10):
    """Groups suites of the same program into runs of about `seconds`, those whose first suite has the least `preference` first."""
    by_program = {}
    for suite in sorted(suites, key=preference):
        by_program.setdefault(suite.program, []).append(suite)
    found = []
    for program, ordered in by_program.items():
        piece = []
        for suite in ordered:
            piece.append(suite)
            if sum(each.seconds for each in piece) >= seconds or suite is ordered[-1]:
                found.append(piece)
                piece = []
    return sorted(found, key=lambda piece: preference(piece[0]))
