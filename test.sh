#!/usr/bin/env bash
# Builds everything and runs every test, each fuzzer for some seconds and the add-in for Windows under Wine among
# them; the exit code is that of ctest. Unit tests run under sanitizers, the others with the program as it is released.
#   test.sh [--without-windows]   leaves the add-in for Windows out; the summary tells so
set -euo pipefail
cd "$(dirname "$0")"

windows=(--windows)
case $* in
  '') ;;
  --without-windows) windows=() ;;
  *) echo "usage: test.sh [--without-windows]" >&2; exit 2 ;;
esac

scripts/setup.sh --tests "${windows[@]}"
cmake --preset release
cmake --build --preset release --target lumenfold manual
cmake --preset fuzz
cmake --build --preset fuzz --target unit_tests fuzzers
# The tests of all builds in one run with one summary.
if ((${#windows[@]} > 0)); then
  cmake --preset windows
  cmake --build --preset windows --target unit_tests installer
  echo 'subdirs(release/released fuzz windows)' > build/CTestTestfile.cmake
else
  # It ends with the tests that did not run.
  cat > build/CTestTestfile.cmake <<'END'
subdirs(release/released fuzz)
add_test(windows.left_out_as_asked_for true)
set_tests_properties(windows.left_out_as_asked_for PROPERTIES DISABLED TRUE)
END
fi
exec ctest --test-dir build --output-on-failure -j2
