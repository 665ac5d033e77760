#!/usr/bin/env bash
# Makes the packages of Debian of what has been built:
#   package.sh BUILD OUTPUT    BUILD is a folder of CMake's, OUTPUT where the .deb files go
# The sources stay as they are; the work is done in a folder of its own.
set -euo pipefail
[[ $# -eq 2 ]] || { echo "usage: package.sh BUILD OUTPUT" >&2; exit 2; }
root=$(cd "$(dirname "$0")/.." && pwd)
BUILD=$(cd "$1" && pwd)
mkdir -p "$2"
PACKAGES=$(cd "$2" && pwd)
export BUILD PACKAGES
command -v dh >/dev/null || { echo "package.sh: dh is missing: run scripts/setup.sh --tests" >&2; exit 1; }

work=$(mktemp -d "${TMPDIR:-/tmp}/lumenfold-package.XXXXXX")
trap 'rm -rf "$work"' EXIT
mkdir "$work/lumenfold"
cp -r "$root/debian" "$work/lumenfold"
cd "$work/lumenfold"
# As dpkg-buildpackage would tell it: control needs no root.
DEB_RULES_REQUIRES_ROOT=no debian/rules binary >"$work/log" 2>&1 || { cat "$work/log" >&2; exit 1; }
ls -l "$PACKAGES"
