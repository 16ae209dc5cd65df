#!/usr/bin/env bash
# Measures in build/coverage what the tests cover of the core and of adapters/linux. Fails for any line or branch that they miss.
set -euo pipefail
cd "$(dirname "$0")/.."
build=build/coverage

# Stale coverage notes of objects that are no longer built make gcovr fail.
(cd $build && ninja -t inputs all | sed -n 's/\.o$/.gcno/p' | sort -u) >$build/notes.txt
(cd $build && find . -name '*.gcno' -printf '%P\n' | sort | comm -23 - notes.txt | xargs -r rm)
find $build -name '*.gcda' -delete

ctest --test-dir $build --output-on-failure -j 6

left_out=$(grep -v '^#' tests/branches_left_out.txt | paste -s -d '|')
gcovr --root . --object-directory $build --filter '(plugin|model|view|adapters/linux)/' --exclude-throw-branches \
  --exclude-unreachable-branches --exclude-branches-by-pattern "(?:$left_out)\$" --branches --print-summary \
  --fail-under-line 100 --fail-under-branch 100
