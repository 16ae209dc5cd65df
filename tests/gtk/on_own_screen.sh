#!/usr/bin/env bash
# Runs a command on a screen, a session bus and in a home folder of its own: on_own_screen.sh COMMAND [ARGUMENT ...]
set -euo pipefail
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
mkdir -m 700 "$home/run"
env -u WAYLAND_DISPLAY -u LANGUAGE HOME="$home" XDG_RUNTIME_DIR="$home/run" XDG_CONFIG_HOME="$home/config" XDG_CACHE_HOME="$home/cache" \
  XDG_DATA_HOME="$home/data" XDG_STATE_HOME="$home/state" LC_ALL=C.UTF-8 GDK_BACKEND=x11 GDK_DEBUG=gl-disable GSK_RENDERER=cairo \
  xvfb-run -a -s '-screen 0 1280x1024x24 -nolisten tcp -noreset' dbus-run-session -- "$@"
