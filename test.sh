#!/usr/bin/env bash
# Builds everything and runs every test; the exit code is that of ctest.
set -euo pipefail
cd "$(dirname "$0")"

scripts/setup.sh --tests
cmake --preset release
cmake --build --preset release
exec ctest --preset release -j2
