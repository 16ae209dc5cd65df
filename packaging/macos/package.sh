#!/usr/bin/env bash
# On a Mac: builds the bundle, signs it and makes the installer package build/macos/TandemTrim-VERSION.pkg.
#
# Environment variables:
#   SIGN_AS       the identity that signs the bundle ("Developer ID Application: ..."); without it the signature is an
#                 ad-hoc one, which is valid only on this Mac
#   INSTALLER_AS  the identity that signs the package ("Developer ID Installer: ..."); without it the package is not signed
#   NOTARY        the keychain profile that notarytool stored; without it nothing is sent to be notarised
set -euo pipefail
cd "$(dirname "$0")/../.."
[ "$(uname)" = Darwin ] || { echo "$0: this needs a Mac with Xcode" >&2; exit 1; }

folder=Library/Printers/Morva
cmake --preset macos
cmake --build --preset macos
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
# The installer copies the folders' modes; mktemp's folder is open to its owner only.
umask 022
root=$scratch/root
mkdir "$root"
cmake --install build/macos --prefix "$root/$folder"

bundle=$root/$folder/PDEs/TandemTrim.bundle
plutil -lint "$bundle/Contents/Info.plist"
lipo "$bundle/Contents/MacOS/TandemTrim" -verify_arch arm64 x86_64
signing=(--force --options runtime --sign "${SIGN_AS:--}")
[ -z "${SIGN_AS:-}" ] || signing+=(--timestamp)
codesign "${signing[@]}" "$bundle"
codesign --verify --strict --verbose=2 "$bundle"

# A relocatable bundle would be installed over any copy that the installer finds, such as the one in the build folder.
components=$scratch/components.plist
pkgbuild --analyze --root "$root" "$components"
plutil -replace 0.BundleIsRelocatable -bool NO "$components"

version=$(plutil -extract CFBundleShortVersionString raw "$bundle/Contents/Info.plist")
package=build/macos/TandemTrim-$version.pkg
packing=(--root "$root" --component-plist "$components" --install-location / --ownership recommended --version "$version"
  --identifier com.morva.printing.pde.tandemtrim)
[ -z "${INSTALLER_AS:-}" ] || packing+=(--sign "$INSTALLER_AS")
pkgbuild "${packing[@]}" "$package"

if [ -n "${NOTARY:-}" ]; then
  xcrun notarytool submit "$package" --keychain-profile "$NOTARY" --wait
  xcrun stapler staple "$package"
fi
echo "$package"
