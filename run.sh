#!/usr/bin/env bash
# Builds the program and shows the departures board with its changing data.
# Arguments go to "lumenfold show". Ctrl-C ends the show.
set -euo pipefail
cd "$(dirname "$0")"

scripts/setup.sh
cmake --preset release
cmake --build --preset release --target lumenfold

# The feed writes into a copy, never into the checkout.
work=$(mktemp -d "${TMPDIR:-/tmp}/lumenfold.XXXXXX")
feed=
# shellcheck disable=SC2317 # called by the trap
cleanup() {
  if [[ -n $feed ]]; then
    kill "$feed" 2>/dev/null || true
    wait "$feed" 2>/dev/null || true
  fi
  rm -rf "$work"
}
trap cleanup EXIT
cp -R samples/departures/. "$work"

"$work/feed.sh" "$work" &
feed=$!

# In the background, so that a signal to this script is answered at once.
build/release/lumenfold show "$work/departures.pptx" "$@" <&0 &
show=$!
trap 'interrupted=true; kill -TERM "$show" 2>/dev/null || true' INT TERM HUP
while true; do
  interrupted=false
  status=0
  wait "$show" || status=$?
  # A signal cuts the wait short; the program's own status comes with the next.
  $interrupted || break
done
exit "$status"
