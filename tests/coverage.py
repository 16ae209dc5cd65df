#!/usr/bin/python3
"""Shows how much of each folder's sources the tests cover, by the counters that the programs of build/coverage have written since `begin`.

coverage.py begin: count from zero. coverage.py: show the table, and fail if a folder misses its bound.
coverage.py --show [FOLDER]: also list each line and each branch that no test reaches.
"""
import argparse
import json
import pathlib
import re
import subprocess
import sys
import tempfile
from collections import Counter
from typing import NamedTuple

PROJECT = pathlib.Path(__file__).resolve().parents[1]
BUILD = PROJECT / 'build/coverage'
COUNTERS = BUILD / 'counters'
LEFT_OUT = PROJECT / 'tests/left_out_of_coverage.txt'
SOURCES = ('*.cpp', '*.hpp', '*.mm', '*.h')


class Bound(NamedTuple):
    """The percentages of lines and branches that must be covered, and the goal for both."""
    lines: int
    branches: int
    goal: int = 100


# A row applies to its folder and to the folders below it that have no row. A bound below its goal is the coverage at the time when it was
# set: only raise it.
BOUNDS = {
    'platform': Bound(98, 100),
    'plugin': Bound(100, 100),
    'model': Bound(100, 100),
    'view': Bound(100, 100),
    'adapters/linux': Bound(100, 100),
    'adapters/memory': Bound(100, 100),
    'adapters/module': Bound(100, 100),
    'adapters/shared': Bound(100, 100),
    'host/cups': Bound(99, 92),
    'host/job': Bound(100, 96),
    'host/cli': Bound(99, 96),
    'host': Bound(100, 97),
    'host/presets': Bound(100, 98),
    'host/panel': Bound(99, 99),
    'host/applications': Bound(99, 92),
    'host/notifier': Bound(100, 93),
    'host/preview': Bound(100, 80),
    'host/start': Bound(96, 87),
    'host/portal': Bound(96, 90),
    'host/dialog': Bound(95, 91, goal=95),
    'adapters/gtk': Bound(95, 91, goal=95),
    'adapters/appkit': Bound(95, 91, goal=95),
}


def sources():
    """Each source that counts, relative to the project, and the folder of its bound."""
    listed = subprocess.run(['git', 'ls-files', '--', *(f'{folder}/{kind}' for folder in BOUNDS for kind in SOURCES)],
                            cwd=PROJECT, check=True, capture_output=True, text=True).stdout.splitlines()
    return {file: max((folder for folder in BOUNDS if file.startswith(f'{folder}/')), key=len) for file in listed}


def objects():
    """The programs and modules that count what they run."""
    for file in sorted(BUILD.rglob('*')):
        if file.is_file() and (file.stat().st_mode & 0o111) and file.suffix in ('', '.so') and '.dir' not in str(file):
            if b'__llvm_covmap' in file.read_bytes():
                yield file


def exported(files):
    """For each source that has code: its segments and its branches."""
    with tempfile.TemporaryDirectory() as folder:
        profile = pathlib.Path(folder, 'profile')
        subprocess.run(['llvm-profdata-19', 'merge', *COUNTERS.glob('*.profraw'), '-o', profile], check=True)
        first, *others = objects()
        made = subprocess.run(['llvm-cov-19', 'export', f'-instr-profile={profile}', '-skip-functions', '-skip-expansions', first,
                               *(f'-object={other}' for other in others), '-sources', *(PROJECT / file for file in files)],
                              check=True, capture_output=True)
    for file in json.loads(made.stdout)['data'][0]['files']:
        yield file['filename'].removeprefix(f'{PROJECT}/'), file['segments'], file['branches']


def lines_of(segments):
    """Whether each line that has code is reached: a line's count is the largest of the regions that begin on it or reach into it."""
    counts = {}
    reaching = None
    for index, (line, _, count, has_count, is_entry, is_gap) in enumerate(segments):
        if has_count and is_entry and not is_gap:
            counts[line] = max(counts.get(line, 0), count)
        following = segments[index + 1][0] if index + 1 < len(segments) else line
        reaching = count if has_count and not is_gap else None
        if reaching is not None:
            for inside in range(line + 1, following + 1):
                counts[inside] = max(counts.get(inside, 0), reaching)
    return {line: count > 0 for line, count in counts.items()}


def branches_of(branches):
    """Whether each outcome of each condition is reached, in any instantiation: {(line, column, outcome): bool}."""
    found = {}
    for line, column, _, _, true, false, *_ in branches:
        for outcome, count in (('true', true), ('false', false)):
            place = (line, column, outcome)
            found[place] = found.get(place, False) or count > 0
    return found


def left_out():
    """A regular expression for the whole lines that do not count."""
    lines = [line for line in LEFT_OUT.read_text().splitlines() if line and not line.startswith('#')]
    return re.compile('|'.join(f'(?:{line})' for line in lines) or r'(?!)')


def runs(lines):
    """The first and the last of each run of lines that no test reaches."""
    run = []
    for line, reached in [*sorted(lines.items()), (None, True)]:
        if not reached:
            run.append(line)
        elif run:
            yield run[0], run[-1]
            run = []


def show(file, text, lines, branches):
    for first, last in runs(lines):
        print(f"{file}:{first}{f'-{last}' if last > first else ''}: {text[first - 1].strip()}")
    for line, column, outcome in sorted(place for place, reached in branches.items() if not reached):
        if lines.get(line):
            print(f'{file}:{line}:{column}: never {outcome}: {text[line - 1].strip()}')


def percentage(reached, total):
    return 100 * reached / total if total else 100


def judge(shown):
    files = sources()
    totals = {folder: Counter() for folder in BOUNDS}
    uncounted = left_out()
    for file, segments, branches in exported(files):
        text = (PROJECT / file).read_text().splitlines()
        out = {number for number, line in enumerate(text, 1) if uncounted.fullmatch(line.strip())}
        lines = {line: reached for line, reached in lines_of(segments).items() if line not in out}
        reached = {place: reached for place, reached in branches_of(branches).items() if place[0] not in out}
        totals[files[file]].update(lines=len(lines), branches=len(reached), lines_reached=sum(lines.values()),
                                   branches_reached=sum(reached.values()))
        if shown is not None and file.startswith(shown):
            show(file, text, lines, reached)
    print('| folder | lines | % | branches | % | goal | bound |\n|---|---|---|---|---|---|---|')
    is_met = True
    for folder, bound in BOUNDS.items():
        count = totals[folder]
        lines, branches = (percentage(count[f'{kind}_reached'], count[kind]) for kind in ('lines', 'branches'))
        meets = count['lines'] > 0 and lines >= bound.lines and branches >= bound.branches
        is_met = is_met and meets
        print(f"| `{folder}` | {count['lines_reached']}/{count['lines']} | {lines:.1f} | {count['branches_reached']}/{count['branches']} | "
              f"{branches:.1f} | {bound.goal} | {bound.lines}, {bound.branches}{'' if meets else ' MISSED'} |")
    return 0 if is_met else 1


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument('act', nargs='?', choices=['begin'], help='count from zero')
    parser.add_argument('--show', nargs='?', const='', metavar='FOLDER', help='also list what no test reaches')
    arguments = parser.parse_args()
    if arguments.act == 'begin':
        for file in COUNTERS.glob('*'):
            file.unlink()
        return 0
    return judge(arguments.show)


if __name__ == '__main__':
    sys.exit(main())
