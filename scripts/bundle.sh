#!/usr/bin/env bash
# The scripts that browsers get with libraries in them are kept as built (src/web/bundles/), so that
# building the program needs neither npm nor a network.
#   bundle.sh           makes them anew
#   bundle.sh --check   fails when they are not made of what stands beside them now
set -euo pipefail
cd "$(dirname "$0")/.."

charts=src/web/charts
bundle=src/web/bundles/charts.min.js

# One sum over all that decides what the bundle is.
sum_of_sources() {
  (cd "$charts" && LC_ALL=C sha256sum -- *.js build.mjs package.json package-lock.json) | sha256sum | cut -d' ' -f1
}

case "$#:${1:-}" in
  0:) ;;
  1:--check)
    if ! grep -qF "made of $(sum_of_sources)" "$bundle"; then
      echo "bundle: $bundle is not made of $charts as it is now; run scripts/bundle.sh and commit what it writes" >&2
      exit 1
    fi
    exit 0 ;;
  *) echo "usage: bundle.sh [--check]" >&2; exit 2 ;;
esac

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp "$charts/package.json" "$charts/package-lock.json" "$work"
(cd "$work" && npm ci --no-audit --no-fund --loglevel=error)
node "$charts/build.mjs" "$work/node_modules" "$bundle" "$(sum_of_sources)"
