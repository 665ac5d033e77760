#!/usr/bin/env bash
# Draws the pictures of the decks from their SVG sources with headless Chromium.
set -euo pipefail
cd "$(dirname "$0")"
for source in *.svg; do
  size=$(sed -n '1s/.* width="\([0-9]*\)" height="\([0-9]*\)".*/\1,\2/p' "$source")
  chromium --headless --no-sandbox --disable-gpu --hide-scrollbars --default-background-color=00000000 \
    --window-size="$size" --screenshot="$PWD/${source%.svg}.png" "file://$PWD/$source" 2>/dev/null
  echo "${source%.svg}.png drawn"
done
