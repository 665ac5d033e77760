#!/usr/bin/env bash
# Runs a fuzzer over its kept inputs and on with new ones.
#   run.sh PROGRAM SECONDS [OPTION...] [FOLDER OF INPUTS]
# An input that breaks a promise is left in the folder where it was run from.
set -euo pipefail
program=$1 seconds=$2
shift 2
found=$(mktemp -d "${TMPDIR:-/tmp}/lumenfold-fuzz.XXXXXX")
trap 'rm -rf "$found"' EXIT
options=() inputs=()
for each in "$@"; do
  if [[ $each == -* ]]; then options+=("$each"); else inputs+=("$each"); fi
done
"$program" "${options[@]}" -max_total_time="$seconds" -timeout=25 -rss_limit_mb=4096 \
  -artifact_prefix="$PWD/" "$found" "${inputs[@]}"
