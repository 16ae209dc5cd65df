#!/bin/bash
# Installs the bundle beside this script for all users of this Mac, signed for this Mac alone. It asks for an administrator's password.
set -euo pipefail
cd "$(dirname "$0")"
[ "$(uname)" = Darwin ] || { echo "$0: this needs a Mac" >&2; exit 1; }
folder=/Library/Printers/Morva/PDEs
# All users read what is installed, whatever this user's own files are like.
umask 022

# By its name: a Mac does not start a script that a browser has marked as from the network.
bash check.sh files TandemTrim.bundle
# Only a bundle that is ready takes the place of one that is installed.
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
ready=$scratch/TandemTrim.bundle
cp -R TandemTrim.bundle "$ready"
chmod -R u=rwX,go=rX "$ready"
# What came from the network is marked, and not loaded without Apple's signature. It is no error that nothing is marked.
xattr -dr com.apple.quarantine "$ready" 2>/dev/null || true
codesign --force --sign - "$ready"
sudo mkdir -p "$folder"
sudo rm -rf "$folder/TandemTrim.bundle"
sudo cp -R "$ready" "$folder/"
sudo chown -R root:wheel "$folder/TandemTrim.bundle"
bash check.sh installed "$folder/TandemTrim.bundle"
echo "Installed. Quit an application that has shown its print dialog before, and open it again."
