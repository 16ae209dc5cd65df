#!/usr/bin/env bash
# On a Mac: builds the bundle, signs it for this Mac alone, installs it, makes the queue TandemTrimTrial, opens a small application that
# prints to it, and writes down what happened: build/macos/report.txt. `trial.sh clean` takes all of it away again.
set -uo pipefail
cd "$(dirname "$0")/../../.."
[ "$(uname)" = Darwin ] || { echo "$0: this needs a Mac with Xcode" >&2; exit 1; }

build=build/macos report=build/macos/report.txt
bundle=/Library/Printers/Morva/PDEs/TandemTrim.bundle queue=TandemTrimTrial

if [ "${1:-}" = clean ]; then
  failed=0
  cancel -a "$queue" 2>/dev/null
  ! lpstat -p "$queue" >/dev/null 2>&1 || sudo lpadmin -x "$queue" || failed=1
  sudo rm -rf "$bundle" || failed=1
  sudo rmdir /Library/Printers/Morva/PDEs /Library/Printers/Morva 2>/dev/null
  rm -rf "$build" || failed=1
  exit $failed
fi

note() { printf '%s\n' "$*" | tee -a "$report"; }
# check NAME COMMAND ...: notes whether the command succeeds, with what it says. After one that fails nothing else is tried.
check() {
  local name=$1 said status=0
  shift
  said=$("$@" 2>&1) || status=$?
  if [ $status = 0 ]; then
    note "ok      $name"
  else
    note "failed  $name (status $status)"
  fi
  [ -z "$said" ] || printf '%s\n' "$said" | sed 's/^/        /' >>"$report"
  [ $status = 0 ] || { note "See $report; \`make mac-clean\` takes away what was installed."; exit 1; }
}
# needs COMMAND REMEDY: whether there is such a command.
needs() { check "$1 is there" sh -c 'command -v "$0" >/dev/null || { echo "missing: $1"; exit 1; }' "$1" "$2"; }

install_bundle() {
  sudo mkdir -p "$(dirname "$bundle")" && sudo rm -rf "$bundle" && sudo cp -R "$build/TandemTrim.bundle" "$bundle" &&
    sudo chown -R root:wheel "$bundle"
}
job_options() {
  local job
  job=$(lpstat -W not-completed -o "$queue" | sed -n "1s/^$queue-\([0-9]*\) .*/\1/p")
  [ -n "$job" ] || { echo "no job waits in the queue"; return 1; }
  ipptool -tv "ipp://localhost/jobs/$job" get-job-attributes.test | grep -E '^ +MV' || { echo "job $job holds none of the panel's options"; return 1; }
}
console_lines() {
  log show --last 15m --style compact --predicate 'eventMessage CONTAINS "TandemTrim" OR eventMessage CONTAINS "supportedPPDOptionKeys"' | tail -n 50
}

mkdir -p "$build"
: >"$report"
note "macOS $(sw_vers -productVersion) ($(sw_vers -buildVersion)), $(uname -m), $(git describe --always 2>/dev/null)"
needs xcrun 'install Xcode from the App Store, then: sudo xcode-select -s /Applications/Xcode.app'
check 'ibtool is there' xcrun --find ibtool
needs cmake 'brew install cmake'
needs ninja 'brew install ninja'
check 'the bundle is configured' cmake --preset macos -DTANDEM_TRIM_SELF_TEST=ON
check 'the bundle is built' cmake --build --preset macos
check 'it is signed for this Mac' codesign --force --sign - "$build/TandemTrim.bundle"
check 'its signature is good' codesign --verify --strict "$build/TandemTrim.bundle"
check 'it has both processors' lipo "$build/TandemTrim.bundle/Contents/MacOS/TandemTrim" -verify_arch arm64 x86_64
check 'it is installed' install_bundle
# By itself, without the print dialog: status 3 is a system that does not load it, 1 a bundle that fails.
check 'it loads and passes the self-test' env GTEST_BRIEF=1 "$build/tandem-trim-self-test" -bundle "$bundle"
check 'the queue is made' sudo lpadmin -p "$queue" -E -v ipp://localhost:9/none -P "$build/MorvaTandemKV2.ppd" -o printer-is-shared=false
check 'the application is built' xcrun clang++ -std=c++20 -framework Cocoa packaging/macos/trial/print_page.mm -o "$build/print_page"
note "The dialog opens: the page to be printed says what to look at."
check 'a job is sent from the print dialog' "$build/print_page"
check 'the job holds the options of the panel' job_options
check 'the console is read' console_lines
note "All is done: $report. Please send it, with what you saw of the page's points."
