#!/usr/bin/env python3
"""Checks that the tests notice each mutant of the sources. All mutants are compiled once, each behind a switch (switch.hpp), and each is
tried by the tests that reach its place. Fails when a folder misses its goal, or when a mutant in equivalent.txt does not survive."""
import argparse
import concurrent.futures
import datetime
import hashlib
import json
import os
import pathlib
import random
import re
import subprocess
import sys
import time
from collections import Counter

import places
import suites
import switches

ROOT = pathlib.Path(__file__).resolve().parents[2]
HERE = pathlib.Path(__file__).resolve().parent
COPY, BUILD, KEPT = ROOT / 'build/mutants/source', ROOT / 'build/mutants/build', ROOT / 'build/mutants/suites'
SOURCES = ('plugin', 'model', 'view', 'adapters/appkit', 'adapters/gtk', 'adapters/linux', 'adapters/memory', 'adapters/shared', 'host')
# The percentage of mutants that the tests must notice, not counting those in equivalent.txt. The longest matching folder counts.
GOALS = {'': 100, 'adapters/appkit': 95, 'adapters/gtk': 95, 'host': 95, 'host/cli': 100, 'host/cups': 100, 'host/job': 100}
# Targets that end-to-end tests need besides the test programs.
PARTS = ('endless_lookup', 'tandemtrim_dialog_tests', 'tandemtrim_newer_toolkit')


def project_files(*patterns):
    listed = subprocess.run(['git', 'ls-files', '--cached', '--others', '--exclude-standard', '--', *patterns], cwd=ROOT, check=True,
                            capture_output=True, text=True)
    return [file for file in listed.stdout.split() if (ROOT / file).is_file()]


def copy_file(file, content):
    """Writes a file of the copy. An unchanged file keeps its time stamp."""
    copy = COPY / file
    if not copy.exists() or copy.read_bytes() != content:
        copy.parent.mkdir(parents=True, exist_ok=True)
        copy.write_bytes(content)
        copy.chmod((ROOT / file).stat().st_mode)


def configure(texts):
    """Copies the project, except the files of `texts` that the copy already has, and configures its build."""
    for file in project_files():
        if file not in texts or not (COPY / file).exists():
            copy_file(file, (ROOT / file).read_bytes())
    subprocess.run(['cmake', '-S', COPY, '-B', BUILD, '-G', 'Ninja', '--log-level=WARNING', '-DCMAKE_BUILD_TYPE=Mutants',
                    '-DTANDEM_TRIM_APPKIT=ON', '-DCMAKE_CXX_FLAGS=-w -D_GLIBCXX_ASSERTIONS', '-DCMAKE_OBJCXX_FLAGS=-w'], check=True,
                   stdout=subprocess.DEVNULL)


def numbered_places(texts):
    flags = places.flags_of(json.loads((BUILD / 'compile_commands.json').read_text()))
    flags = {file.removeprefix(f'{COPY}/'): [word.replace(str(COPY), str(ROOT)) for word in words] for file, words in flags.items()}
    return switches.numbered(places.places_of(ROOT, texts, flags, BUILD.parent / 'places'), texts)


def build(texts, ones, programs):
    """Builds what the tests need, with switches in the files of `texts`."""
    by_file = {}
    for one in ones:
        by_file.setdefault(one.place.file, []).append(one)
    for file, text in texts.items():
        copy_file(file, switches.with_switches(text, by_file.get(file, [])))
    targets = [pathlib.Path(each.executable).name for each in programs if not each.is_python]
    if any(each.is_python for each in programs):
        targets += PARTS
    result = subprocess.run(['ninja', '-C', BUILD, '-k', '0', *targets], capture_output=True, text=True)
    if result.returncode:
        sys.exit('\n'.join(line for line in result.stdout.splitlines() if 'error' in line))


def outcome(known, kills, file, place, mutant, is_listed):
    """'killed', 'survived', or 'not reached' by any test. The suites that kill most of the file's mutants per second run first. Only the
    quick C++ tests try a listed mutant."""
    reaching = [suite for suite in known if place in suite.reached and not (is_listed and suite.program.is_python)]
    for piece in suites.pieces(reaching, lambda suite: suite.seconds / (1 + kills[file, suite.name])):
        program, seconds = piece[0].program, sum(suite.seconds for suite in piece)
        if not suites.run(program, program.tests([suite.name for suite in piece]), {'TANDEM_TRIM_MUTANT': str(mutant)}, seconds):
            for suite in piece:
                kills[file, suite.name] += 1 / len(piece)
            return 'killed'
    return 'survived' if reaching else 'not reached'


def outcomes(known, chosen, listed, jobs):
    """The outcome of each mutant, by its name. Prints the progress, and the unlisted mutants that survive."""
    begin, kills, results = time.monotonic(), Counter(), {}
    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        waiting = {pool.submit(outcome, known, kills, one.place.file, one.number, mutant, name in listed): (one.line, name)
                   for one, mutant, name in chosen}
        for future in concurrent.futures.as_completed(waiting):
            line, name = waiting[future]
            results[name] = future.result()
            if results[name] != 'killed' and name not in listed:
                print(f'{results[name]}, line {line}: {name}', flush=True)
            if len(results) % 50 == 0:
                print(f'{len(results)} of {len(waiting)} mutants, {time.monotonic() - begin:.0f} s', flush=True)
    return results


def equivalent():
    """The names in equivalent.txt: mutants that no caller can notice."""
    lines = (HERE / 'equivalent.txt').read_text().splitlines()
    return {line for line in lines if line and not line.startswith('#')}


def goal_of(folder):
    return GOALS[max((each for each in GOALS if f'{folder}/'.startswith(f'{each}/' if each else '')), key=len)]


def folder_of(name):
    """The folder that a mutant counts for: at most the first two folders of its path."""
    return '/'.join(name.split(' | ')[0].split('/')[:-1][:2])


def report(results, listed, all_are_tried):
    """Prints a table by folder and what is wrong. Returns whether all is well."""
    kinds = {name: found if found == 'killed' else 'listed' if name in listed else found for name, found in results.items()}
    columns = ('killed', 'listed', 'survived', 'not reached')
    counts = Counter((folder_of(name), kind) for name, kind in kinds.items())
    wrong = []
    print(f'{"":20}{"mutants":>13}' + ''.join(f'{column:>13}' for column in columns) + f'{"goal":>8}')
    for folder in sorted({folder for folder, _ in counts}):
        killed, accepted, *others = numbers = [counts[folder, column] for column in columns]
        print(f'{folder:20}{sum(numbers):13}' + ''.join(f'{number:13}' for number in numbers) + f'{goal_of(folder):6} %')
        if 100 * killed < goal_of(folder) * (sum(numbers) - accepted):
            wrong.append(f'{folder}: below {goal_of(folder)} %')
    wrong += [f'listed as equivalent, but killed: {name}' for name in sorted(listed) if kinds.get(name) == 'killed']
    wrong += [f'listed as equivalent, but not found: {name}' for name in sorted(listed - kinds.keys()) if all_are_tried]
    print(*wrong, sep='\n')
    return not wrong


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument('--folders', nargs='+', default=SOURCES, help='mutates only the sources of these folders, which is faster')
    parser.add_argument('--only', default='', help='only mutants whose names match this regular expression')
    parser.add_argument('--sample', type=int, help='only a random sample of this size')
    parser.add_argument('--seed', type=int, default=datetime.date.today().toordinal(), help='chooses the sample; default: the date')
    parser.add_argument('--tests', default='', help='only tests whose names in CTest match this regular expression')
    parser.add_argument('--jobs', type=int, default=os.cpu_count(), help='the number of parallel runs')
    arguments = parser.parse_args()

    patterns = [f'{folder}/*.{kind}' for folder in arguments.folders for kind in ('cpp', 'h', 'hpp', 'mm')]
    texts = {file: (ROOT / file).read_bytes() for file in project_files(*patterns)}
    configure(texts)
    ones = numbered_places(texts)
    mutants = [(one, mutant, name) for one in ones for mutant, name in one.mutants()]
    wanted = re.compile(arguments.only)
    chosen = [each for each in mutants if wanted.search(each[2])]
    print(f'{len(mutants)} mutants in {len({one.place.file for one in ones})} files', flush=True)
    if arguments.sample and arguments.sample < len(chosen):
        chosen = random.Random(arguments.seed).sample(chosen, arguments.sample)
        print(f'a sample of {len(chosen)}, --seed {arguments.seed}', flush=True)
    programs = suites.programs_of(BUILD, re.compile(arguments.tests))
    if not programs:
        sys.exit(f'no test in CTest matches {arguments.tests}')
    build(texts, ones, programs)

    begin = time.monotonic()
    digest = hashlib.sha256(b''.join(texts.values())).hexdigest()
    with concurrent.futures.ThreadPoolExecutor(arguments.jobs) as pool:
        known = sum(pool.map(lambda each: suites.known_suites(KEPT / re.sub(r'\W', '_', each.name), each, mutants[-1][1] + 1, digest),
                             programs), [])
    print(f'{len(known)} suites of tests, {sum(suite.seconds for suite in known):.0f} s; gathered in {time.monotonic() - begin:.0f} s',
          flush=True)
    listed = equivalent()
    results = outcomes(known, chosen, listed, arguments.jobs)
    return 0 if report(results, listed, len(chosen) == len(mutants) and arguments.folders == SOURCES) else 1


if __name__ == '__main__':
    sys.exit(main())
