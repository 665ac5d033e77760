#!/usr/bin/env bash
# Builds everything and runs every test, each fuzzer for some seconds among them; the exit
# code is that of ctest.
set -euo pipefail
cd "$(dirname "$0")"

scripts/setup.sh --tests
cmake --preset release
cmake --build --preset release
cmake --preset fuzz
cmake --build --preset fuzz --target fuzzers
# Both builds' tests in one run with one summary.
echo 'subdirs(release fuzz/fuzz)' > build/CTestTestfile.cmake
exec ctest --test-dir build --output-on-failure -j2
