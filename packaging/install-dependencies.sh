#!/usr/bin/env bash
# Installs what is missing of the Debian packages that a group of tasks needs, one of those below: install-dependencies.sh GROUP
# Root installs directly, anybody else by sudo; with nothing missing it asks for neither and touches no network.
set -euo pipefail

build='g++ cmake ninja-build make pkg-config libcups2-dev zlib1g-dev libcli11-dev nlohmann-json3-dev libgtkmm-4.0-dev'
build+=' libpoppler-glib-dev libseccomp-dev'
# The demonstration and the end-to-end tests start a print server of their own; the system's is not used.
server='cups cups-client cups-filters python3 util-linux'
# Without a screen the dialog is shown on a virtual one and driven through accessibility.
screen='xvfb dbus xdotool scrot at-spi2-core python3-dbus python3-gi gir1.2-atspi-2.0 gir1.2-gtk-4.0 adwaita-icon-theme fonts-dejavu-core'
# The desktop portal, and an editor that prints by it.
portal='xdg-desktop-portal gnome-text-editor'
# To make the packages and to test them: Debian's own view of them, an empty root to install them in.
package='dpkg-dev file lintian fakeroot fonts-dejavu-core'
tests='libgtest-dev libgmock-dev libxtst-dev locales binutils fonts-cantarell fonts-noto-core'
# A Wayland compositor that needs no screen, keys for it and pictures of it.
tests+=' sway wtype grim'
# Tells the pages of what an editor printed.
tests+=' poppler-utils'
# An editor of GTK 3, which prints by the portal as that of GTK 4 does.
tests+=' mousepad'
# The shells that complete command lines.
tests+=' bash-completion zsh fish'
# The bundle for macOS, built on GNUstep where there is no Mac.
tests+=' clang libgnustep-gui-dev gnustep-back0.29-cairo'
# What g++ has not: libFuzzer, the coverage of conditions, the syntax tree.
clang='clang-19 libclang-rt-19-dev'
# The bundle for macOS in its own form: a linker for it, the system's C++ library and headers of a C library that is not this system's.
macho='clang-19 lld-19 llvm-19 libc++-19-dev musl-dev libgmock-dev cmake ninja-build make python3 fonts-dejavu-core'

case "${1:-}" in
  run) packages="$build $server $screen $portal" ;;
  package) packages="$build $server $package" ;;
  trial) packages="$build $server $package mmdebstrap" ;;
  test) packages="$build $server $screen $portal $package $tests" ;;
  bench) packages="$build $server $screen libbenchmark-dev valgrind binutils libxdamage-dev libxtst-dev xdg-desktop-portal-gtk" ;;
  coverage) packages="$build $server $screen $portal $package $tests gcovr" ;;
  memcheck) packages="$build $server $screen $portal $package $tests valgrind" ;;
  mcdc) packages="$build $server $screen $portal $package $tests $clang llvm-19" ;;
  mutants) packages="$build $server $screen $portal $package $tests $clang" ;;
  fuzz) packages="$build $clang" ;;
  macho) packages="$macho" ;;
  fresh) packages='mmdebstrap git util-linux' ;;
  lint) packages="$build $server $screen $portal $package $tests clang-format clang-tidy mandoc pyflakes3 desktop-file-utils appstream" ;;
  *)
    echo "$0: no such group: ${1:-}" >&2
    exit 2
    ;;
esac

missing=()
for package in $packages; do
  state=$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null || true)
  [ "$state" = installed ] || missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

echo "Installing: ${missing[*]}"
as_root=()
if [ "$(id -u)" -ne 0 ]; then
  command -v sudo >/dev/null || { echo "$0: sudo is needed to install: ${missing[*]}" >&2; exit 1; }
  as_root=(sudo)
fi
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}"
