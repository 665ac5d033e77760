#!/usr/bin/env bash
# Runs a program for Windows under Wine, with a Windows of its own in a folder.
#   wine.sh PREFIX PROGRAM [ARGUMENT...]
set -euo pipefail

[[ $# -ge 2 ]] || { echo "usage: wine.sh PREFIX PROGRAM [ARGUMENT...]" >&2; exit 2; }
export WINEPREFIX=$1
shift
export WINEARCH=${WINEARCH:-win64} WINEDEBUG=${WINEDEBUG:--all}
# No questions for Mono and Gecko, no menu entries on this desktop.
export WINEDLLOVERRIDES="mscoree=;mshtml=;winemenubuilder.exe=d"
mkdir -p "$(dirname "$WINEPREFIX")"
exec wine "$@"
