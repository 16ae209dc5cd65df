#!/usr/bin/env bash
# Tries the Debian packages as users get them, with apt in a bare Debian 12 with its archives: installs, prints, upgrades, removes.
# usage: trial.sh FOLDER [FORMER]
#   FOLDER  contains the packages
#   FORMER  an older package that they replace; by default one with the files of both
# The bare system is a temporary folder of mmdebstrap in its own namespaces. Exit status: 0 if all goes well.
set -euo pipefail
if [ "${1:-}" != --inside ]; then
  [ $# = 1 ] || [ $# = 2 ] || { sed -n '3,6p' "$0"; exit 2; }
  project=$(cd "$(dirname "$0")/.." && pwd)
  work=$(mktemp -d)
  trap 'rm -rf "$work"' EXIT
  cp "$1"/tandem-trim_*.deb "$1"/tandem-trim-gtk_*.deb "$work"
  if [ -n "${2:-}" ]; then
    cp "$2" "$work/former.deb"
  else
    for package in "$work"/*.deb; do dpkg-deb --extract "$package" "$work/former"; done
    mkdir "$work/former/DEBIAN"
    printf '%s: %s\n' Package tandem-trim Version 0.1.0 Architecture all Maintainer 'Nobody <nobody@morva.example>' \
      Description 'one package with the files of both' > "$work/former/DEBIAN/control"
    dpkg-deb --root-owner-group --build "$work/former" "$work/former.deb"
    rm -r "$work/former"
  fi
  mkdir -p "$work/tests" "$work/resources" "$work/packaging"
  cp -r "$project/tests/support" "$work/tests"
  cp -r "$project/resources/sample" "$work/resources"
  cp "$0" "$work/packaging"
  chmod 755 "$work"
  # Runs the trial as the last step of making a system, which is then discarded.
  mmdebstrap --quiet --variant=apt --skip=cleanup/apt --customize-hook="copy-in '$work' /srv" \
    --customize-hook='chroot "$1" bash /srv/'"$(basename "$work")"'/packaging/trial.sh --inside >&2' bookworm /dev/null
  exit
fi

# From here on, runs inside the bare system.
cd "$(dirname "$0")/.."
export DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8
terminal=$(echo ./tandem-trim_*.deb)
gtk=$(echo ./tandem-trim-gtk_*.deb)

step() { printf '\n== %s\n' "$*"; }
fails() { echo "FAILED: $*"; exit 1; }
apt() { apt-get -qq -y -o APT::Install-Recommends=true "$@" > log 2>&1 || { cat log; fails "apt-get $*"; }; }
# How much apt would install for these packages.
brings() {
  for recommended in false true; do
    echo "$*, recommended packages: $recommended"
    apt-get --assume-no -o "APT::Install-Recommends=$recommended" install "$@" | grep -E 'newly installed|Need to get|After this' || true
  done
}
nothing_is_left() {
  ! dpkg-query -W -f '${Package} is ${db:Status-Status}\n' 'tandem*' 2>/dev/null | grep -v not-installed || fails "dpkg still lists the packages"
  # Processes and devices come and go, and then find fails.
  local left
  left=$(find / \( -path /proc -o -path /sys -o -path /dev -o -path "$PWD" \) -prune -o -iname '*tandem*' -print) || fails "not all files can be searched"
  [ -z "$left" ] || fails "files are left: $left"
}
prints() {
  tests/support/cups/private_cups.py resources/sample/MorvaTandemKV2.ppd -- \
    tandem-trim -d Morva --set Valid=On --set Top=12 /usr/share/doc/tandem-trim/examples/sample.pdf | tee log
  for option in '"MVTandemTrim": "On"' '"MVTopMargin": "12"'; do grep -qF "$option" log || fails "the filter did not receive $option"; done
}
# Runs the program for a user whose home folder outlives the packages.
as_user() {
  tests/support/cups/private_cups.py resources/sample/MorvaTandemKV2.ppd -- \
    env HOME="$PWD/user" CUPS_SERVERROOT="$PWD/user/cups" tandem-trim -d Morva "$@"
}
knows_presets() { tandem-trim --help | grep -q save-preset; }
saves_settings() {
  mkdir -p user/cups
  as_user --set Valid=On --set Top=12 --save-as-default
  ! knows_presets || as_user --set Valid=On --set Left=3 --save-preset Narrow
  find user -type f -exec sha256sum {} + > user.sums
}
settings_are_kept() {
  sha256sum --quiet --check user.sums || fails "settings have changed"
  as_user --summary | grep -x 'Top Margin: 12' || fails "the default is lost"
  [ ! -e user/.config/tandem-trim/presets ] || as_user --preset Narrow --summary | grep -x 'Left Margin: 3' || fails "the preset is lost"
}
# Without a screen, the dialog reports that there is none, after its module and all libraries are loaded.
has_dialog() {
  tandem-trim --dialog -- resources/sample/sample.pdf 2> log && fails "the dialog opened without a screen"
  cat log
  grep -q 'there is no screen' log
}

step "What each package installs"
apt update
brings "$terminal"
brings "$terminal" "$gtk"

step "The terminal package alone prints, and names the package of the dialog"
apt install "$terminal"
! dpkg-query -W -f '${db:Status-Status} ${Package}\n' | grep -E '^installed .*(gtk|x11)' || fails "the terminal package installed GTK"
# For the private print server and the printer's filter.
apt install --no-install-recommends python3 cups-daemon cups-client cups-filters
prints
! has_dialog || fails "the dialog is there although it is not installed"
grep -q 'tandem-trim-gtk' log || fails "the package of the dialog is not named"

step "The dialog can be added"
apt install "$gtk"
has_dialog || fails "the dialog is not found"
prints

step "After removing and purging, nothing is left"
apt purge tandem-trim tandem-trim-gtk
nothing_is_left

step "Both replace the former package"
apt install ./former.deb
saves_settings
apt install "$terminal" "$gtk"
settings_are_kept
dpkg-query -W 'tandem-trim*'
dpkg --verify tandem-trim tandem-trim-gtk || fails "files are missing after the upgrade"
has_dialog || fails "the dialog is not found"
prints
apt remove tandem-trim
nothing_is_left

step "The terminal package alone replaces it, too"
apt install ./former.deb
apt install "$terminal"
dpkg --verify tandem-trim || fails "files are missing after the upgrade"
prints
! has_dialog || fails "the dialog of the former package is left"
apt purge tandem-trim
nothing_is_left
step "All went well"
