#!/bin/bash
# Says what is right and what is wrong with a bundle on this Mac: check.sh files BUNDLE, as it was unpacked, or check.sh installed BUNDLE.
# The status is 1 if anything is wrong.
set -uo pipefail
when=$1 bundle=$2 failed=0
here=$(cd "$(dirname "$0")" && pwd)
check() {
  local name=$1
  shift
  if "$@" >/dev/null 2>&1; then echo "ok      $name"; else echo "failed  $name"; failed=1; fi
}
of_info() { plutil -extract "$1" raw "$bundle/Contents/Info.plist"; }
is_new_enough() { [ "$(printf '%s\n' "$(of_info LSMinimumSystemVersion)" "$(sw_vers -productVersion)" | sort -V | head -n 1)" = "$(of_info LSMinimumSystemVersion)" ]; }
is_whole() { (cd "$here" && shasum -a 256 -c SHA256SUMS); }
has_processor() { file "$bundle/Contents/MacOS/TandemTrim" | grep -q "$(uname -m)"; }
is_root_s() { [ "$(stat -f %Su:%Sg "$bundle")" = root:wheel ]; }
is_not_marked() { ! xattr -r "$bundle" | grep -q com.apple.quarantine; }

check "the bundle's description can be read" plutil -lint "$bundle/Contents/Info.plist"
check "this macOS is new enough" is_new_enough
check "the code is for this Mac's processor" has_processor
if [ "$when" = files ]; then
  check "every file is as it was packed" is_whole
else
  check "the bundle is signed" codesign --verify --strict "$bundle"
  check "the bundle is not marked as from the network" is_not_marked
  check "the bundle belongs to root" is_root_s
fi
exit $failed
