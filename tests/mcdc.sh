#!/usr/bin/env bash
# Runs the test programs of build/mcdc and reports, for each source of the core and of adapters/linux, its branch coverage and its
# modified condition/decision coverage (MC/DC). --show adds every decision that is not fully covered.
set -euo pipefail
cd "$(dirname "$0")/.."
build=build/mcdc
rm -f $build/*.profraw
mapfile -t programs < <(find $build/tests -type f -name '*_test' -executable | sort)
for program in "${programs[@]}"; do
  LLVM_PROFILE_FILE="$build/%p.profraw" "$program" --gtest_brief=1
done
llvm-profdata-19 merge $build/*.profraw -o $build/all.profdata
mapfile -t sources < <(git ls-files 'plugin/*.[ch]pp' 'model/*.[ch]pp' 'view/*.[ch]pp' 'adapters/linux/*.[ch]pp')
objects=("${programs[0]}" "${programs[@]/#/--object=}")
llvm-cov-19 report -show-mcdc-summary -show-region-summary=false -instr-profile=$build/all.profdata "${objects[@]}" "${sources[@]}"
[ "${1:-}" = --show ] || exit 0
llvm-cov-19 show -show-mcdc -instr-profile=$build/all.profdata "${objects[@]}" "${sources[@]}" |
  grep -B40 -E 'C[0-9]+-Pair: not covered' || true
