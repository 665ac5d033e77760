#!/usr/bin/env bash
# Runs a program for Windows under Wine as wine.sh does, with a screen of its own that nobody sees.
#   wine_on_screen.sh PREFIX PROGRAM [ARGUMENT...]
set -euo pipefail

[[ $# -ge 2 ]] || { echo "usage: wine_on_screen.sh PREFIX PROGRAM [ARGUMENT...]" >&2; exit 2; }
here=$(dirname "$(readlink -f "$0")")
# Nobody manages windows there: Wine draws their frames.
if [[ ! -d $1 ]]; then
  "$here/wine.sh" "$1" reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N >/dev/null
  WINEPREFIX=$1 wineserver -w
fi
# A desktop is bound to the screen on which it began, so it ends with it.
run='"$0" "$@" && status=0 || status=$?; WINEPREFIX=$1 wineserver -k || true; exit $status'
exec xvfb-run -a -s "-screen 0 1280x1024x24" bash -c "$run" "$here/wine.sh" "$@"
