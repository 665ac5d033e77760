#!/usr/bin/env bash
# Runs a command in a Debian of 32 bits: 32-bit programs for Windows need a Wine that cannot be installed beside
# the 64-bit one without another architecture. The first call makes it (debootstrap, some 2 GB); the project and /tmp
# lie there where they lie here. Needs root: a user may not change roots.
#   in_i386_root.sh FOLDER COMMAND [ARGUMENT...]
set -euo pipefail

[[ $# -ge 2 ]] || { echo "usage: in_i386_root.sh FOLDER COMMAND [ARGUMENT...]" >&2; exit 2; }
fail() { echo "in_i386_root: $*" >&2; exit 1; }
((EUID == 0)) || fail "this takes root"
mkdir -p "$1"
root=$(cd "$1" && pwd)
shift
project=$(cd "$(dirname "$(readlink -f "$0")")/.." && pwd)
here=$PWD

# Who comes second waits; a root that is not marked as ready was left half made.
exec {lock}>"$root.lock"
flock "$lock"
if [[ ! -f $root/ready ]]; then
  command -v debootstrap >/dev/null || fail "debootstrap is not installed"
  rm -rf "$root"
  debootstrap --arch=i386 --variant=minbase --include=wine,wine32,xvfb,xauth,fonts-liberation bookworm "$root" \
    >"$root.log" 2>&1 || fail "no root was made, see $root.log"
  touch "$root/ready"
fi
exec {lock}>&-

enter='set -e
root=$1 project=$2 here=$3
shift 3
for folder in /proc /dev /tmp "$project"; do
  mkdir -p "$root$folder"
  mount --rbind "$folder" "$root$folder"
done
exec chroot "$root" sh -c '\''cd "$0" && exec "$@"'\'' "$here" "$@"'
export WINEARCH=win32
exec unshare --mount --propagation private sh -c "$enter" sh "$root" "$project" "$here" "$@"
