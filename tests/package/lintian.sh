#!/usr/bin/env bash
# Packs what was built, and asks lintian.
#   lintian.sh BUILD
set -euo pipefail
cd "$(dirname "$0")/../.."
command -v lintian >/dev/null || { echo "lintian is missing: run scripts/setup.sh --tests" >&2; exit 1; }
packages=$(mktemp -d)
trap 'rm -rf "$packages"' EXIT
scripts/package.sh "$1" "$packages"
lintian --allow-root --fail-on error,warning "$packages"/*.deb
