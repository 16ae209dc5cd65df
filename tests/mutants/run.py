#!/usr/bin/env python3
"""Whether the tests notice each mutant of plugin/, model/, view/ and adapters/linux/: all are compiled once, each behind a switch
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
from dataclasses import dataclass

import places
import switches

ROOT = pathlib.Path(__file__).resolve().parents[2]
HERE = pathlib.Path(__file__).resolve().parent
COPY, BUILD = ROOT / 'build/mutants/source', ROOT / 'build/mutants/build'
FOLDERS = ('plugin', 'model', 'view', 'adapters/linux')
# The same for every mutant; only the first of the sequences; files that need no disk.
ENVIRONMENT = {**os.environ, 'TANDEM_TRIM_SEED': '1', 'TANDEM_TRIM_SEQUENCES': '1000', 'TMPDIR': '/dev/shm'}
MEMORY = 1 << 30  # which a loop without an end soon fills


def project_files(*patterns):
    listed = subprocess.run(['git', 'ls-files', '--cached', '--others', '--exclude-standard', '--', *patterns], cwd=ROOT, check=True,
                            capture_output=True, text=True)
    return [file for file in listed.stdout.split() if (ROOT / file).is_file()]


def write_copy(texts, ones):
    """The project with switches in the files of `texts`; what did not change stays as it is."""
    for file in project_files():
        content = (ROOT / file).read_bytes()
        if file in texts:
            content = switches.with_switches(content, [one for one in ones if one.place.file == file])
        copy = COPY / file
        if not copy.exists() or copy.read_bytes() != content:
            copy.parent.mkdir(parents=True, exist_ok=True)
            copy.write_bytes(content)
            copy.chmod((ROOT / file).stat().st_mode)


def build(programs):
    flags = f'-std=c++20 -w -D_GLIBCXX_ASSERTIONS -include {HERE / "switch.hpp"}'
    subprocess.run(['cmake', '-S', COPY, '-B', BUILD, '-G', 'Ninja', '--log-level=WARNING', '-DCMAKE_BUILD_TYPE=Debug',
                    '-DTANDEM_TRIM_GTK=OFF', '-DTANDEM_TRIM_APPKIT=OFF', f'-DCMAKE_CXX_FLAGS={flags}'], check=True,
                   stdout=subprocess.DEVNULL)
    result = subprocess.run(['ninja', '-C', BUILD, '-k', '0', *(f'tests/{program}' for program in programs)], capture_output=True,
                            text=True)
    if result.returncode:
        sys.exit('\n'.join(line for line in result.stdout.splitlines() if 'error' in line))


def passes(command, environment, usual=10.0):
    """Whether tests pass, in a few times the seconds that they usually take: a loop without an end does not."""
    def held():
        seconds = 2 + int(4 * usual)
        resource.setrlimit(resource.RLIMIT_CPU, (seconds, seconds))
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
        resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY))

    try:
        return subprocess.run([*command, '--gtest_fail_fast', '--gtest_brief=1'], env={**ENVIRONMENT, **environment}, timeout=20 + 20 * usual,
                              preexec_fn=held, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode == 0
    except subprocess.TimeoutExpired:
        return False


@dataclass(frozen=True)
class Suite:
    """The tests of one name in a program, how long they take, and the places that they come to."""
    name: str
    command: list
    seconds: float
    reached: set


def suites_of(programs):
    suites, record = [], BUILD / 'reached.txt'
    for program in (BUILD / 'tests' / name for name in programs):
        listed = subprocess.run([program, '--gtest_list_tests'], check=True, capture_output=True, text=True).stdout
        for name in re.findall(r'^(\S+\.)(?:\s+#.*)?$', listed, re.MULTILINE):
            command = [program, f'--gtest_filter={name}*']
            record.unlink(missing_ok=True)
            begin = time.monotonic()
            if not passes(command, {'TANDEM_TRIM_REACHED': str(record)}):
                sys.exit(f'{program}, {name[:-1]}: fails without a mutant')
            seconds = time.monotonic() - begin
            reached = set(map(int, record.read_text().split())) if record.exists() else set()
            suites.append(Suite(f'{program.name} {name}', command, seconds, reached))
    return suites


def outcome(suites, kills, file, place, mutant):
    """'killed', 'survived', or 'not reached' by any test; what kills most of the file's mutants in a second is tried first."""
    reaching = sorted((suite for suite in suites if place in suite.reached),
                      key=lambda suite: suite.seconds / (1 + kills[file, suite.name]))
    for suite in reaching:
        if not passes(suite.command, {'TANDEM_TRIM_MUTANT': str(mutant)}, suite.seconds):
            kills[file, suite.name] += 1
            return 'killed'
    return 'survived' if reaching else 'not reached'


def outcomes(suites, ones, wanted, listed):
    """The outcome of each mutant, by its name; prints how far it is, and the mutants that survive without being listed."""
    begin, kills, results = time.monotonic(), Counter(), {}
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        waiting = {name: (one.line, pool.submit(outcome, suites, kills, one.place.file, one.number, mutant))
                   for one in ones for mutant, name in one.mutants() if wanted.search(name)}
        for name, (line, future) in waiting.items():
            results[name] = future.result()
            if results[name] != 'killed' and name not in listed:
                print(f'{results[name]}, line {line}: {name}', flush=True)
            if len(results) % 100 == 0:
                print(f'{len(results)} of {len(waiting)} mutants, {time.monotonic() - begin:.0f} s', flush=True)
    return results


def equivalent():
    """The mutants that no caller can notice."""
    lines = (HERE / 'equivalent.txt').read_text().splitlines()
    return {line for line in lines if line and not line.startswith('#')}


def report(results, listed, all_are_tried):
    """Prints a table by file and what is wrong; whether nothing is."""
    kinds = {name: 'killed' if found == 'killed' else 'listed' if name in listed else 'survived' for name, found in results.items()}
    by_file = Counter((name.split(' | ')[0], kind) for name, kind in kinds.items())
    by_file.update(('all', kind) for kind in kinds.values())
    print(f'{"":44}{"mutants":>9}{"killed":>9}{"listed":>9}{"survived":>9}')
    for file in sorted({file for file, _ in by_file}, key=lambda file: (file == 'all', file)):
        counts = [by_file[file, kind] for kind in ('killed', 'listed', 'survived')]
        print(f'{file:44}' + ''.join(f'{count:9}' for count in (sum(counts), *counts)))
    wrong = [f'survived: {name}' for name, kind in kinds.items() if kind == 'survived']
    wrong += [f'listed as equivalent, but killed: {name}' for name in sorted(listed) if kinds.get(name) == 'killed']
    wrong += [f'listed as equivalent, but not there: {name}' for name in sorted(listed - kinds.keys()) if all_are_tried]
    print(f'{100 * by_file["all", "killed"] / max(1, len(kinds)):.1f} % killed', *wrong, sep='\n')
    return not wrong


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument('--only', default='', help='only mutants whose names hold this regular expression')
    parser.add_argument('program', nargs='+', help='a test program, by its path below tests/')
    arguments = parser.parse_args()
    texts = {file: (ROOT / file).read_bytes() for file in project_files(*(f'{folder}/*.[ch]pp' for folder in FOLDERS))}
    ones = switches.numbered(places.places_of(ROOT, texts), texts)
    print(f'{sum(len(one.place.mutants) for one in ones)} mutants', flush=True)
    write_copy(texts, ones)
    build(arguments.program)
    suites = suites_of(arguments.program)
    print(f'{len(suites)} suites of tests, {sum(suite.seconds for suite in suites):.0f} s', flush=True)
    listed = equivalent()
    results = outcomes(suites, ones, re.compile(arguments.only), listed)
    return 0 if report(results, listed, not arguments.only) else 1


if __name__ == '__main__':
    sys.exit(main())
