#!/usr/bin/env bash
# Makes up inputs for each target, so many seconds long: run.sh SECONDS [target ...]. Where a property breaks it fails, and names the
# input's file. What is new goes to build/fuzz/inputs; run.sh keep adds to the kept inputs what reaches more of the program than they do.
set -euo pipefail
cd "$(dirname "$0")/.."
programs=build/fuzz/fuzz
inputs=build/fuzz/inputs
time=$1
LSAN_OPTIONS=suppressions=$PWD/fuzz/leaks.supp:print_suppressions=0
targets=(answers command_line page portal_arguments ppd_limits setting_info stored_values strings_table typed_text)
[ $# -eq 1 ] || targets=("${@:2}")

try() {
  local target=$1 log=build/fuzz/$1.log
  mkdir -p "$inputs/$target"
  if [ "$time" = keep ]; then
    "$programs/fuzz_$target" -use_counters=0 -merge=1 "fuzz/corpus/$target" "$inputs/$target" >"$log" 2>&1 || { tail -n 40 "$log"; return 1; }
    return
  fi
  "$programs/fuzz_$target" -max_total_time="$time" -max_len=4096 -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 \
    -dict="fuzz/dictionaries/$target.dict" -artifact_prefix="build/fuzz/$target-" \
    "$inputs/$target" "fuzz/corpus/$target" >"$log" 2>&1 || { tail -n 40 "$log"; return 1; }
  echo "$target: $(grep -o 'number_of_executed_units: .*' "$log"), $(grep -o 'cov: [0-9]* ft: [0-9]*' "$log" | tail -n 1)"
}

export -f try
export programs inputs time LSAN_OPTIONS
printf '%s\n' "${targets[@]}" | xargs -P "$(nproc)" -I '{}' bash -euo pipefail -c 'try {}'
