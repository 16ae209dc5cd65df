#!/usr/bin/env bash
# Packs build/macho/TandemTrim.bundle for Macs without Xcode: build/macho/TandemTrim-VERSION-macos.tar.gz, with scripts that install, check
# and remove it. The same commit produces the same archive.
set -euo pipefail
cd "$(dirname "$0")/../../.."
macos=packaging/macos build=build/macho
version=$(sed -n '/CFBundleShortVersionString/{n;s/.*<string>\(.*\)<.*/\1/p;}' "$build/TandemTrim.bundle/Contents/Info.plist")
name=TandemTrim-$version-macos
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
mkdir "$scratch/$name"
cp -R "$build/TandemTrim.bundle" "$scratch/$name/"
cp "$build/arm64/MorvaTandemKV2.ppd" LICENSE "$macos/archive/install.sh" "$macos/archive/check.sh" "$macos/uninstall.sh" "$scratch/$name/"
(cd "$scratch/$name" && find . -type f ! -name SHA256SUMS -print0 | LC_ALL=C sort -z | xargs -0 sha256sum >SHA256SUMS)
tar -C "$scratch" --sort=name --owner=root --group=root --numeric-owner --mode=u=rwX,go=rX --mtime="@$(git log -1 --format=%ct)" -cf - "$name" |
  gzip >"$build/$name.tar.gz"
echo "$build/$name.tar.gz"
