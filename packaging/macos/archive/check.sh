#!/bin/bash
# Reports what is right and wrong with a bundle on this Mac: check.sh files BUNDLE (as unpacked), or check.sh installed BUNDLE.
# The exit status is 1 if anything is wrong.
set -uo pipefail
case "${1:-} $#" in
  'files 2' | 'installed 2') ;;
  *) echo "usage: $0 files|installed BUNDLE" >&2; exit 2 ;;
esac
when=$1 bundle=$2 failed=0
here=$(cd "$(dirname "$0")" && pwd)
check() {
  local name=$1
  shift
  if "$@" >/dev/null 2>&1; then echo "ok      $name"; else echo "failed  $name"; failed=1; fi
}
# Each of these functions reads a command's whole output before it checks it: a command that fails or is cut off must not look like one that
# found nothing.
is_new_enough() {
  local needed now
  needed=$(plutil -extract LSMinimumSystemVersion raw "$bundle/Contents/Info.plist") && now=$(sw_vers -productVersion) && [ -n "$needed" ] &&
    [ "$(printf '%s\n' "$needed" "$now" | sort -t . -k 1,1n -k 2,2n | head -n 1)" = "$needed" ]
}
has_processor() {
  local processors
  processors=$(file -b "$bundle/Contents/MacOS/TandemTrim") && [[ $processors == *"$(uname -m)"* ]]
}
is_whole() { cd "$here" && shasum -a 256 -c SHA256SUMS; }
is_not_marked() {
  local marks
  marks=$(xattr -r "$bundle") && [[ $marks != *com.apple.quarantine* ]]
}
is_for_all() {
  local others
  others=$(find "$bundle" ! -user root -o ! -group wheel -o ! -perm -444) && [ -z "$others" ]
}

check "the bundle's description can be read" plutil -lint "$bundle/Contents/Info.plist"
check "this macOS is new enough" is_new_enough
check "the code is for this Mac's processor" has_processor
if [ "$when" = files ]; then
  check "every file is as it was packed" is_whole
else
  check "the bundle is signed" codesign --verify --strict "$bundle"
  check "the bundle is not marked as downloaded" is_not_marked
  check "the bundle belongs to root and all users can read it" is_for_all
fi
exit $failed
