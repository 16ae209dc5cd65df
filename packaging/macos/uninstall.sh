#!/usr/bin/env bash
# On a Mac, as root: removes the bundle that the installer package put there. Print queues stay as they are.
set -euo pipefail
[ "$(uname)" = Darwin ] || { echo "$0: this is for a Mac" >&2; exit 1; }
rm -rf /Library/Printers/Morva/PDEs/TandemTrim.bundle
rmdir /Library/Printers/Morva/PDEs /Library/Printers/Morva 2>/dev/null || true
pkgutil --forget com.morva.printing.pde.tandemtrim
