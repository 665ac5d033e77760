#!/usr/bin/env bash
# Installs what building and showing need and what is missing of it (Debian 12).
#   setup.sh           to build and run
#   setup.sh --tests   to run the tests as well
#   setup.sh --tests --windows   those of the add-in for Windows, too
# Works as root or through sudo; with nothing missing it needs neither.
set -euo pipefail

# PACKAGE, or PACKAGE:COMMAND where the command may come from elsewhere.
build=(
  g++:g++ cmake:cmake ninja-build:ninja pkg-config:pkg-config
  libpugixml-dev libzip-dev zlib1g-dev libboost-dev libfreetype-dev libfontconfig-dev unixodbc-dev
  libsqlite3-dev libicu-dev libssl-dev libcurl4-openssl-dev
  nlohmann-json3-dev libcli11-dev libgtest-dev libgmock-dev
)
fonts=(fonts-crosextra-carlito fonts-crosextra-caladea fonts-liberation)
# What decks connect to: SQLite needs no more than its driver; the others are installed as
# they are needed (odbc-postgresql, odbc-mariadb, odbc-mdbtools, tdsodbc, libreoffice-calc,
# libreoffice-draw, libreoffice-impress and poppler-utils).
sources=(libsqliteodbc)
# Of LLVM by its number, as the opinions of clang-format and clang-tidy differ from one to the next.
tests=(
  clang:clang++ libclang-rt-14-dev llvm-14 clang-format-14 clang-tidy-14
  nodejs:node npm:npm libbenchmark-dev chromium:chromium zip:zip unzip:unzip sqlite3:sqlite3
  libreoffice-calc libreoffice-draw libreoffice-impress poppler-utils:pdftocairo postgresql odbc-postgresql mariadb-server-core odbc-mariadb tdsodbc odbc-mdbtools
  prometheus:promtool cage:cage xwayland:Xwayland python3:/usr/bin/python3
  debhelper:dh lintian:lintian systemd:systemd-analyze
  nginx-light:nginx libnginx-mod-nchan redis-server:redis-server iproute2:ss
)
# The add-in for Windows is built by a compiler for it, and tried under Wine.
windows=(
  g++-mingw-w64-x86-64-posix g++-mingw-w64-i686-posix googletest wine:wine wine64 nsis:makensis fp-utils:chmcmd
  xvfb:Xvfb xauth imagemagick:import
)

root=$(cd "$(dirname "$0")/.." && pwd)
wanted=("${build[@]}" "${fonts[@]}" "${sources[@]}")
with_tests=false
for option in "$@"; do
  case $option in
    --tests) with_tests=true; wanted+=("${tests[@]}") ;;
    --windows) wanted+=("${windows[@]}") ;;
    *) echo "usage: setup.sh [--tests] [--windows]" >&2; exit 2 ;;
  esac
done

fail() {
  echo "setup: $*" >&2
  exit 1
}

missing_packages() {
  local each packages=() installed
  for each in "${wanted[@]}"; do
    if [[ $each != *:* ]] || ! command -v "${each#*:}" >/dev/null; then
      packages+=("${each%%:*}")
    fi
  done
  [[ ${#packages[@]} -gt 0 ]] || return 0
  # Unknown packages make dpkg-query fail; they are missing like the rest.
  installed=$(dpkg-query -W -f='${db:Status-Status} ${Package}\n' "${packages[@]}" 2>/dev/null | sed -n 's/^installed //p') || true
  printf '%s\n' "${packages[@]}" | grep -vxF -e "$installed" || true
}

install_packages() {
  local as_root=()
  if [[ $EUID -ne 0 ]]; then
    command -v sudo >/dev/null || fail "these packages are missing and neither root nor sudo is at hand: $*"
    as_root=(sudo)
  fi
  command -v apt-get >/dev/null || fail "these packages are missing and there is no apt-get to install them: $*"
  echo "setup: installing $*"
  "${as_root[@]}" apt-get update -q || fail "apt-get update failed (see above); is the package mirror within reach?"
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends "$@" ||
    fail "apt-get install failed (see above); wanted: $*"
}

# The browser tests' own modules, when the lock file is newer than what is installed.
install_modules() {
  local folder=$root/tests/end_to_end
  [[ -f $folder/package-lock.json ]] || return 0
  if [[ ! $folder/node_modules/.package-lock.json -nt $folder/package-lock.json ]]; then
    (cd "$folder" && npm ci --no-audit --no-fund) || fail "npm ci failed in tests/end_to_end (see above)"
  fi
}

mapfile -t missing < <(missing_packages)
if [[ ${#missing[@]} -gt 0 ]]; then
  install_packages "${missing[@]}"
fi
if $with_tests; then
  install_modules
fi
