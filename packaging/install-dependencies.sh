#!/usr/bin/env bash
# Installs the missing Debian packages of a group, one of those below: install-dependencies.sh GROUP
# Root installs directly, any other user with sudo. If nothing is missing, it uses neither sudo nor the network.
set -euo pipefail

build='g++ cmake ninja-build make pkg-config libcups2-dev zlib1g-dev libcli11-dev nlohmann-json3-dev libgtkmm-4.0-dev'
build+=' libpoppler-glib-dev libseccomp-dev'
# The demonstration and the end-to-end tests start their own print server; the system's is not used.
server='cups cups-client cups-filters python3 util-linux'
# Without a screen the dialog is shown on a virtual one and driven through accessibility.
screen='xvfb dbus xdotool scrot at-spi2-core python3-dbus python3-gi gir1.2-atspi-2.0 gir1.2-gtk-4.0 adwaita-icon-theme fonts-dejavu-core'
# The desktop portal, and an editor that prints through it.
portal='xdg-desktop-portal gnome-text-editor'
# To make and test the packages: Debian's checks of packages, and tools to install them in an empty root.
package='dpkg-dev file lintian fakeroot fonts-dejavu-core'
tests='libgtest-dev libgmock-dev libxtst-dev locales binutils fonts-cantarell fonts-noto-core'
# A Wayland compositor that needs no screen, and tools for its keys and pictures.
tests+=' sway wtype grim'
# Reads the pages that an editor printed.
tests+=' poppler-utils'
# A GTK 3 editor, which prints through the portal as the GTK 4 one does.
tests+=' mousepad'
# The shells that complete command lines.
tests+=' bash-completion zsh fish'
# The bundle for macOS, built on GNUstep where there is no Mac.
tests+=' clang libgnustep-gui-dev gnustep-back0.29-cairo'
# What g++ lacks: libFuzzer, the coverage of programs that are killed and of conditions, the syntax tree.
clang='clang-19 libclang-rt-19-dev'
# The bundle for macOS in the Mach-O format: a linker, macOS's C++ library, and headers of a C library other than this system's.
macho='clang-19 lld-19 llvm-19 libc++-19-dev musl-dev libgmock-dev cmake ninja-build make python3 fonts-dejavu-core'

case "${1:-}" in
  run) packages="$build $server $screen $portal" ;;
  package) packages="$build $server $package" ;;
  trial) packages="$build $server $package mmdebstrap" ;;
  test) packages="$build $server $screen $portal $package $tests" ;;
  bench) packages="$build $server $screen libbenchmark-dev valgrind binutils libxdamage-dev libxtst-dev xdg-desktop-portal-gtk" ;;
  coverage) packages="$build $server $screen $portal $package $tests $clang llvm-19" ;;
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
