#!/usr/bin/env bash
# On a Mac: builds the bundle, signs it for this Mac only, installs it, makes the queue TandemTrimTrial, opens a small application that
# prints to it, and writes a report: build/macos/report.txt. `trial.sh clean` removes all of it again.
set -uo pipefail
cd "$(dirname "$0")/../../.."
[ "$(uname)" = Darwin ] || { echo "$0: this needs a Mac with Xcode" >&2; exit 1; }

build=build/macos report=build/macos/report.txt
bundle=/Library/Printers/Morva/PDEs/TandemTrim.bundle queue=TandemTrimTrial
failed=0
# All users must be able to read the installed files, regardless of this user's umask.
umask 022

case "${1:-}" in
  '') ;;
  clean)
    ! lpstat -p "$queue" >/dev/null 2>&1 || sudo lpadmin -x "$queue" || failed=1
    sudo rm -rf "$bundle" || failed=1
    sudo rmdir /Library/Printers/Morva/PDEs /Library/Printers/Morva 2>/dev/null
    rm -rf "$build" || failed=1
    exit $failed
    ;;
  *) echo "usage: $0 [clean]" >&2; exit 2 ;;
esac

note() { printf '%s\n' "$*" | tee -a "$report"; }
# check NAME COMMAND ...: notes whether the command succeeds. Its output goes into the report, and to the terminal if it fails.
check() {
  local name=$1 output status=0
  shift
  output=$("$@" 2>&1) || status=$?
  output=${output:+$(printf '%s\n' "$output" | sed 's/^/        /')}
  if [ $status = 0 ]; then
    note "ok      $name"
    [ -z "$output" ] || printf '%s\n' "$output" >>"$report"
  else
    failed=1
    note "failed  $name (status $status)"
    [ -z "$output" ] || note "$output"
  fi
  return $status
}
stop() {
  note "See $report; \`make mac-clean\` removes what was installed."
  exit 1
}
# needs TOOL REMEDY COMMAND ...: notes whether the command finds the tool, and the remedy if it does not.
needs() {
  local remedy=$2
  check "$1 is installed" "${@:3}" || note "        $remedy"
}

install_bundle() {
  sudo mkdir -p "$(dirname "$bundle")" && sudo rm -rf "$bundle" && sudo cp -R "$build/TandemTrim.bundle" "$bundle" &&
    sudo chmod -R u=rwX,go=rX "$bundle" && sudo chown -R root:wheel "$bundle"
}
# The number of the last job that waits in the queue.
last_job() { lpstat -W not-completed -o "$queue" | sed -n "s/^$queue-\([0-9]*\) .*/\1/p" | tail -n 1; }
# job_options BEFORE: the panel's options of a job newer than BEFORE; waits for it for half a minute.
job_options() {
  local job='' seconds
  for seconds in {1..30}; do
    job=$(last_job)
    [ "$job" = "$1" ] || break
    sleep 1
  done
  [ -n "$job" ] && [ "$job" != "$1" ] || { echo "no new job waits in the queue"; return 1; }
  ipptool -tv "ipp://localhost/jobs/$job" get-job-attributes.test | grep -E '^ +MV' || { echo "job $job has none of the panel's options"; return 1; }
}
console_lines() {
  log show --last 15m --style compact --predicate 'eventMessage CONTAINS "TandemTrim" OR eventMessage CONTAINS "supportedPPDOptionKeys"' | tail -n 50
}

mkdir -p "$build"
: >"$report"
note "macOS $(sw_vers -productVersion) ($(sw_vers -buildVersion)), $(uname -m), $(git describe --always 2>/dev/null)"
# A Mac has the names of Xcode's tools even without Xcode, so each tool is run.
needs Xcode 'install it from the App Store, then: sudo xcode-select -s /Applications/Xcode.app; sudo xcodebuild -license accept' xcodebuild -version
needs ibtool 'it comes with Xcode' xcrun --find ibtool
needs cmake 'brew install cmake' cmake --version
needs ninja 'brew install ninja' ninja --version
[ $failed = 0 ] || stop
check 'the bundle is configured' cmake --preset macos -DTANDEM_TRIM_SELF_TEST=ON || stop
check 'the bundle is built' cmake --build --preset macos || stop
check 'it is signed for this Mac' codesign --force --sign - "$build/TandemTrim.bundle" || stop
check 'its signature is valid' codesign --verify --strict "$build/TandemTrim.bundle" || stop
check 'it is built for both processors' lipo "$build/TandemTrim.bundle/Contents/MacOS/TandemTrim" -verify_arch arm64 x86_64 || stop
check 'it is installed' install_bundle || stop
# Without the print dialog: status 3 means that the system does not load the bundle, 1 that the bundle fails. The dialog is tried anyway.
check 'it loads and passes the self-test' env GTEST_BRIEF=1 "$build/tandem-trim-self-test" -bundle "$bundle"
check 'the queue is made' sudo lpadmin -p "$queue" -E -v ipp://localhost:9/none -P "$build/MorvaTandemKV2.ppd" -o printer-is-shared=false || stop
check 'the application is built' xcrun clang++ -std=c++20 -framework Cocoa packaging/macos/trial/print_page.mm -o "$build/print_page" || stop
before=$(last_job)
note "The dialog opens, maybe behind this window: the page to be printed says what to look at."
check 'a job is sent from the print dialog' "$build/print_page" && check "the job has the panel's options" job_options "$before"
check 'the console is read' console_lines
[ $failed = 0 ] || stop
note "All is done. Please send $report, and what you saw at each point of the page."
