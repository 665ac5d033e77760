#!/usr/bin/env bash
# Draws the pictures of the decks, and the shop's products, from their SVG sources with headless Chromium.
set -euo pipefail
cd "$(dirname "$0")"
products=../../shop/pictures
draw() {
  local source=$1 picture=$2 size
  size=$(sed -n '1s/.* width="\([0-9]*\)" height="\([0-9]*\)".*/\1,\2/p' "$source")
  chromium --headless --no-sandbox --disable-gpu --hide-scrollbars --default-background-color=00000000 \
    --window-size="$size" --screenshot="$PWD/$picture" "file://$PWD/$source" 2>/dev/null
  echo "$picture drawn"
}
mkdir -p "$products"
for source in *.svg; do draw "$source" "${source%.svg}.png"; done
for source in products/*.svg; do draw "$source" "$products/$(basename "$source" .svg).png"; done
