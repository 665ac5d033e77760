#!/usr/bin/env bash
# Builds the packages for arm64, the processors of small computers behind screens, on another machine, and tries them
# in emulation. All of it happens in a root of its own, as Debian's libraries for two architectures stand beside each other.
#   cross_arm64.sh [FOLDER [CMAKE-OPTION...]]   FOLDER (build/arm64) gets root/ and packages/, some 3 GB
# Needs root, debootstrap and the network. A second run goes on where the first has ended.
set -euo pipefail
source=$(cd "$(dirname "$0")/.." && pwd)
folder=${1:-$source/build/arm64}
shift $(($# > 0))
mkdir -p "$folder/packages"
folder=$(cd "$folder" && pwd)
root=$folder/root

. "$source/scripts/debian_root.sh"

show=
leave() {
  [[ -z $show ]] || kill "$show" 2>/dev/null || true
  unmount
}
trap leave EXIT

if [[ ! -e $root/complete ]]; then
  make_root ca-certificates
  mount_into /proc /proc
  within dpkg --add-architecture arm64
  within apt-get update -q
  within apt-get install -y -q --no-install-recommends crossbuild-essential-arm64 qemu-user-static ccache curl
  # What the packages are built with, but for Debian's tests of them.
  mount_into "$source" /source
  within sh -c 'cd /source && apt-get build-dep -y -q --no-install-recommends -aarm64 -Pcross,nocheck .'
  within apt-get install -y -q --no-install-recommends libgtest-dev:arm64 libgmock-dev:arm64
  touch "$root/complete"
else
  mount_into /proc /proc
  mount_into "$source" /source
fi
mount_into "$folder/packages" /packages

within cmake -G Ninja -S /source -B /build -DCMAKE_TOOLCHAIN_FILE=/source/cmake/arm64.cmake -DCMAKE_BUILD_TYPE=Release \
  -DLUMENFOLD_UNITY=ON -DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache "$@"
within cmake --build /build --target lumenfold manual
within env CC=aarch64-linux-gnu-gcc dpkg-architecture -aarm64 -c /source/scripts/package.sh /build /packages

# The package as it is installed; its program is emulated.
within sh -c 'apt-get install -y -q --no-install-recommends --reinstall /packages/lumenfold_*_arm64.deb'
program=(qemu-aarch64-static /usr/bin/lumenfold)
deck=/usr/share/lumenfold/samples/departures/departures.pptx
within "${program[@]}" --version
within "${program[@]}" check "$deck"
: >"$folder/show"
"${enter[@]}" "${program[@]}" show "$deck" --port 0 >"$folder/show" 2>&1 </dev/null &
show=$!
for _ in {1..300}; do
  url=$(sed -n 's/^Screen: *//p' "$folder/show")
  [[ -z $url ]] || break
  sleep 0.2
done
[[ -n $url ]] || { cat "$folder/show" >&2; exit 1; }
within curl -fsS "${url}readyz"
within curl -fsS "${url}slides/1" | grep -q '<section' || { echo "cross_arm64.sh: the show answers with no slide" >&2; exit 1; }
echo
echo "a show answers with its slide; the packages:"
ls -l "$folder/packages"
