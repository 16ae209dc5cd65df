#!/usr/bin/env bash
# Runs a command in an environment that breaks any test that depends on it: tests/hostile_environment.sh make test
set -euo pipefail
home=$(mktemp -d /tmp/tandem-trim-hostile.XXXXXX)
trap 'rm -rf "$home"' EXIT
mkdir -p "$home"/{.config/gtk-4.0,.cups,GNUstep/Defaults,python,closed}
printf '[Settings]\ngtk-font-name=Serif 30\ngtk-theme-name=HighContrast\ngtk-icon-theme-name=none\n' >"$home/.config/gtk-4.0/settings.ini"
printf 'Default Nobody MVTandemTrim=On\nDest Morva MVTandemTrim=On MVTopMargin=19\n' >"$home/.cups/lpoptions"
echo 'ServerName nowhere' >"$home/.cups/client.conf"
echo '{ NSGlobalDomain = { NSLanguages = (ar); NSFontSize = 30; }; }' >"$home/GNUstep/Defaults/.GNUstepDefaults"
echo '<fontconfig><dir>/nonexistent</dir></fontconfig>' >"$home/fonts.conf"
for module in json sitecustomize subprocess surroundings unittest; do
  echo 'raise ImportError("rubbish")' >"$home/python/$module.py"
done
chmod 700 "$home/closed"

environment=(
  HOME="$home" TMPDIR="$home/closed" TEMP=/nonexistent TZ=Pacific/Kiritimati LD_BIND_NOW=1 COLUMNS=1
  LANG=tr_TR.UTF-8 LANGUAGE=ar LC_ALL=tr_TR.UTF-8 LC_MESSAGES=ja_JP.UTF-8 LOCPATH=/nonexistent
  XDG_CONFIG_HOME="$home/.config" XDG_CONFIG_DIRS=/nonexistent XDG_DATA_HOME=/nonexistent XDG_DATA_DIRS=/nonexistent
  XDG_CACHE_HOME=/nonexistent XDG_STATE_HOME=/nonexistent XDG_RUNTIME_DIR=/nonexistent XDG_CURRENT_DESKTOP=none
  FONTCONFIG_FILE="$home/fonts.conf" FONTCONFIG_PATH=/nonexistent
  DISPLAY=:99 WAYLAND_DISPLAY=wayland-9 XAUTHORITY=/nonexistent DBUS_SESSION_BUS_ADDRESS=unix:path=/nonexistent
  AT_SPI_BUS_ADDRESS=unix:path=/nonexistent NO_AT_BRIDGE=1
  GTK_THEME=HighContrast GTK_DEBUG=interactive GTK_A11Y=none GTK_IM_MODULE=xim GTK_PATH=/nonexistent GTK_DATA_PREFIX=/nonexistent
  GDK_SCALE=2 GDK_DPI_SCALE=2 GDK_BACKEND=wayland GDK_DEBUG=all GSK_RENDERER=gl G_DEBUG=fatal-warnings G_MESSAGES_DEBUG=all
  GSETTINGS_BACKEND=none GSETTINGS_SCHEMA_DIR=/nonexistent GIO_MODULE_DIR=/nonexistent
  CUPS_SERVER=nowhere CUPS_SERVERROOT="$home/.cups" CUPS_USER=nobody CUPS_ENCRYPTION=Required LPDEST=Nobody PRINTER=Nobody IPP_PORT=1
  TANDEM_TRIM_BUILD=/nonexistent TANDEM_TRIM_BUNDLE=/nonexistent TANDEM_TRIM_PLUGIN_PATH=/nonexistent TANDEM_TRIM_SURROUNDINGS=none
  TANDEM_TRIM_FONT=None TANDEM_TRIM_JOBS=0 TANDEM_TRIM_SEQUENCES=0 TANDEM_TRIM_TIMEOUT=0 TANDEM_TRIM_TYPING=none
  GTEST_FILTER=None GTEST_REPEAT=0 GTEST_FAIL_FAST=1 GTEST_OUTPUT=xml:/nonexistent/ GTEST_TOTAL_SHARDS=9 GTEST_SHARD_INDEX=8
  PYTHONPATH="$home/python" PYTHONSTARTUP=/nonexistent PYTHONWARNINGS=error PYTHONOPTIMIZE=2 PYTHONINSPECT=1
)
umask 077
env "${environment[@]}" "$@"
