#!/usr/bin/env bash
# The service as systemd reads it: nothing in it that systemd does not know, and an exposure of 2.0 at most.
set -euo pipefail
cd "$(dirname "$0")/../../debian"
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
systemd-analyze security --offline=true --threshold=20 "$PWD/lumenfold@.service" | tail -n 1
# As the program is not installed here.
sed 's|/usr/bin/lumenfold|/bin/true|' lumenfold@.service >"$folder/lumenfold@.service"
remarks=$(systemd-analyze verify --man=no "$folder/lumenfold@.service" 2>&1) || true
[[ -z $remarks ]] || { echo "$remarks" >&2; exit 1; }
