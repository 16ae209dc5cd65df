#!/usr/bin/env bash
# On a Mac, as root: removes the installed bundle. Print queues stay as they are.
set -euo pipefail
[ "$(uname)" = Darwin ] || { echo "$0: this is for a Mac" >&2; exit 1; }
rm -rf /Library/Printers/Morva/PDEs/TandemTrim.bundle
rmdir /Library/Printers/Morva/PDEs /Library/Printers/Morva 2>/dev/null || true
# There is no package if the bundle came from an archive.
pkgutil --forget com.morva.printing.pde.tandemtrim 2>/dev/null || true
