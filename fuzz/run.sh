#!/usr/bin/env bash
# Tries random inputs with each target for SECONDS: run.sh SECONDS [target ...]. Fails if a property does not hold, and names the input's
# file. Most of the time goes to programs that do not check memory and try several times as many inputs; the sanitized programs then
# continue from the new inputs that were found, in build/fuzz/inputs. `run.sh keep` replaces the kept inputs by the fewest kept and new ones
# that reach the same code.
set -euo pipefail
cd "$(dirname "$0")/.."
programs=build/fuzz/fuzz
quick=build/fuzz-quick/fuzz
inputs=build/fuzz/inputs
time=$1
LSAN_OPTIONS=suppressions=$PWD/tests/leaks.supp:print_suppressions=0
shopt -s nullglob
targets=("$programs"/fuzz_*[a-z])
targets=("${targets[@]##*/fuzz_}")
[ $# -eq 1 ] || targets=("${@:2}")
[ ${#targets[@]} -gt 0 ] || { echo "there are no programs in $programs; build and run them with make fuzz" >&2; exit 1; }

# run_fuzzer PROGRAM TARGET SECONDS LOG [option ...]
run_fuzzer() {
  "$1/fuzz_$2" -max_total_time="$3" -max_len=4096 -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 \
    -dict="fuzz/dictionaries/$2.dict" -artifact_prefix="build/fuzz/$2-" "${@:5}" \
    "$inputs/$2" "fuzz/corpus/$2" >"$4" 2>&1 || { tail -n 40 "$4"; return 1; }
}

try() {
  local target=$1 log=build/fuzz/$1.log left=$time kept
  mkdir -p "$inputs/$target"
  if [ "$time" = keep ]; then
    kept=$(mktemp -d -p build/fuzz)
    "$programs/fuzz_$target" -use_counters=0 -merge=1 "$kept" "fuzz/corpus/$target" "$inputs/$target" >"$log" 2>&1 \
      || { tail -n 40 "$log"; return 1; }
    rm -r "fuzz/corpus/$target"
    mv "$kept" "fuzz/corpus/$target"
    chmod 755 "fuzz/corpus/$target"
    return
  fi
  if [ -x "$quick/fuzz_$target" ]; then
    left=$((time / 4 + 1))
    run_fuzzer "$quick" "$target" $((time - left)) "$log.quick" -use_counters=0
    echo "$target, quick: $(grep -ao 'number_of_executed_units: .*' "$log.quick")"
  fi
  run_fuzzer "$programs" "$target" "$left" "$log"
  echo "$target: $(grep -ao 'number_of_executed_units: .*' "$log"), $(grep -ao 'cov: [0-9]* ft: [0-9]*' "$log" | tail -n 1)"
}

export -f run_fuzzer try
export programs quick inputs time LSAN_OPTIONS
printf '%s\n' "${targets[@]}" | xargs -P "$(nproc)" -I '{}' bash -euo pipefail -c 'try {}'
