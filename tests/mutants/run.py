#!/usr/bin/env python3
"""Whether the tests notice each mutant of plugin/, model/, view/ and platform/linux/: all are compiled once, each behind a switch
(switch.hpp). Fails for a mutant that survives without standing in equivalent.txt, and for one that stands there and does not."""
import argparse
import concurrent.futures
import os
import pathlib
import re
import resource
import subprocess
import sys
import time
from collections import Counter

import places
import switches

ROOT = pathlib.Path(__file__).resolve().parents[2]
HERE = pathlib.Path(__file__).resolve().parent
FOLDERS = ('plugin', 'model', 'view', 'platform/linux')
# The same for every mutant, and few of the sequences: they come last.
ENVIRONMENT = {**os.environ, 'TANDEM_TRIM_SEED': '1', 'TANDEM_TRIM_SEQUENCES': '1000'}
MEMORY = 1 << 30  # which a loop without an end soon fills


def project_files(*patterns):
    listed = subprocess.run(['git', 'ls-files', '--cached', '--others', '--exclude-standard', '--', *patterns], cwd=ROOT, check=True,
                            capture_output=True, text=True)
    return [file for file in listed.stdout.split() if (ROOT / file).is_file()]


def write_copy(folder, texts, ones):
    """The project with switches in the files of `texts`; what did not change stays as it is."""
    for file in project_files():
        content = (ROOT / file).read_bytes()
        if file in texts:
            content = switches.with_switches(content, [one for one in ones if one.place.file == file])
        copy = folder / file
        if not copy.exists() or copy.read_bytes() != content:
            copy.parent.mkdir(parents=True, exist_ok=True)
            copy.write_bytes(content)
            copy.chmod((ROOT / file).stat().st_mode)


def build(source, folder, programs):
    flags = f'-std=c++20 -w -include {HERE / "switch.hpp"}'
    subprocess.run(['cmake', '-S', source, '-B', folder, '-G', 'Ninja', '--log-level=WARNING', '-DCMAKE_BUILD_TYPE=Debug',
                    '-DTANDEM_TRIM_GTK=OFF', '-DTANDEM_TRIM_APPKIT=OFF', f'-DCMAKE_CXX_FLAGS={flags}'], check=True,
                   stdout=subprocess.DEVNULL)
    result = subprocess.run(['ninja', '-C', folder, '-k', '0', *(f'tests/{program}' for program in programs)], capture_output=True,
                            text=True)
    if result.returncode:
        sys.exit('the mutants do not compile:\n' + result.stdout[-6000:])


def passes(program, environment, limit=None):
    """Whether the program's tests pass, in so many seconds."""
    def held():
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
        resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY))

    try:
        return subprocess.run([program, '--gtest_fail_fast', '--gtest_brief=1'], env={**ENVIRONMENT, **environment}, timeout=limit,
                              preexec_fn=held, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode == 0
    except subprocess.TimeoutExpired:
        return False


class Suite:
    """The test programs, the quickest first, and the places that each of them comes to."""

    def __init__(self, folder, programs):
        self.programs = []
        record = folder / 'reached.txt'
        for program in (folder / 'tests' / name for name in programs):
            record.unlink(missing_ok=True)
            begin = time.monotonic()
            if not passes(program, {'TANDEM_TRIM_REACHED': str(record)}):
                sys.exit(f'{program} fails without a mutant')
            seconds = time.monotonic() - begin
            self.programs.append((seconds, program, set(map(int, record.read_text().split())) if record.exists() else set()))
            print(f'{program.name}: {seconds:.1f} s', flush=True)
        self.programs.sort(key=lambda entry: entry[0])

    def outcome(self, one, mutant):
        """'killed', 'survived', or 'not reached' by any program."""
        reaching = [(seconds, program) for seconds, program, reached in self.programs if one.number in reached]
        for seconds, program in reaching:
            if not passes(program, {'TANDEM_TRIM_MUTANT': str(mutant)}, 10 + 10 * seconds):
                return 'killed'
        return 'survived' if reaching else 'not reached'


def outcomes(suite, ones, wanted):
    """Line and outcome of each mutant, by its name."""
    begin = time.monotonic()
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        waiting = {name: (one.line, pool.submit(suite.outcome, one, mutant))
                   for one in ones for mutant, name in one.mutants() if wanted.search(name)}
        results = {}
        for name, (line, outcome) in waiting.items():
            results[name] = (line, outcome.result())
            if len(results) % 100 == 0:
                print(f'{len(results)} of {len(waiting)} mutants, {time.monotonic() - begin:.0f} s', flush=True)
    return results


def equivalent():
    """The mutants that no caller can notice."""
    lines = (HERE / 'equivalent.txt').read_text().splitlines()
    return {line for line in lines if line and not line.startswith('#')}


def report(results, listed):
    """Prints a table by file and what is wrong; whether nothing is."""
    kinds = {name: 'killed' if outcome == 'killed' else 'listed' if name in listed else 'survived'
             for name, (_, outcome) in results.items()}
    by_file = Counter((name.split(' | ')[0], kind) for name, kind in kinds.items())
    total = Counter(kinds.values())
    print(f'{"":44}{"mutants":>9}{"killed":>9}{"listed":>9}{"survived":>9}')
    for file in sorted({file for file, _ in by_file}) + ['']:
        counts = [by_file[file, kind] if file else total[kind] for kind in ('killed', 'listed', 'survived')]
        print(f'{file or "all":44}' + ''.join(f'{count:9}' for count in (sum(counts), *counts)))
    print(f'{100 * total["killed"] / max(1, len(results)):.1f} % killed')
    wrong = [f'{outcome}, line {line}: {name}' for name, (line, outcome) in results.items() if kinds[name] == 'survived']
    wrong += [f'listed as equivalent, but killed: {name}' for name, kind in kinds.items() if kind == 'killed' and name in listed]
    print(*wrong, sep='\n')
    return not wrong


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument('--build', type=pathlib.Path, default=ROOT / 'build/mutants')
    parser.add_argument('--only', type=re.compile, default='', help='only mutants whose line in equivalent.txt would hold this expression')
    parser.add_argument('program', nargs='+', help='a test program, by its path below tests/')
    arguments = parser.parse_args()
    source, folder = arguments.build.resolve() / 'source', arguments.build.resolve() / 'build'
    texts = {file: (ROOT / file).read_bytes() for folder_ in FOLDERS for file in project_files(f'{folder_}/*.cpp', f'{folder_}/*.hpp')}
    ones = switches.numbered(places.places_of(ROOT, texts), texts)
    print(f'{sum(len(one.place.mutants) for one in ones)} mutants', flush=True)
    write_copy(source, texts, ones)
    build(source, folder, arguments.program)
    results = outcomes(Suite(folder, arguments.program), ones, re.compile(arguments.only))
    listed = equivalent()
    gone = [] if arguments.only else sorted(listed - results.keys())
    for name in gone:
        print('listed as equivalent, but not there:', name)
    return 0 if report(results, listed) and not gone else 1


if __name__ == '__main__':
    sys.exit(main())
