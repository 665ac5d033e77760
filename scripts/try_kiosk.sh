#!/usr/bin/env bash
# Tries the package for screen machines in a bare Debian 12 of its own: installs it, has it show a show, upgrades it with
# changed settings, removes it, purges it. The compositor draws into memory, and there is no systemd.
#   try_kiosk.sh PACKAGE PROGRAM [FOLDER]    lumenfold-kiosk_VERSION_all.deb, a built lumenfold; FOLDER gets root/, 1.5 GB
# Needs root, debootstrap and the network.
set -euo pipefail
source=$(cd "$(dirname "$0")/.." && pwd)
package=$(realpath "$1")
program=$(realpath "$2")
folder=${3:-$source/build/kiosk}
mkdir -p "$folder"
folder=$(cd "$folder" && pwd)
root=$folder/root

fail() {
  echo "try_kiosk.sh: $*" >&2
  exit 1
}
. "$source/scripts/debian_root.sh"

started=()
leave() {
  local each
  for each in "${started[@]}"; do kill "$each" 2>/dev/null || true; done
  wait
  unmount
}
trap leave EXIT
until_seen() {  # WHAT FILE TEXT
  for _ in {1..600}; do
    if grep -qs -- "$3" "$2"; then return; fi
    sleep 0.1
  done
  cat "$2" >&2
  fail "waited a minute for $1"
}

if [[ ! -e $root/complete ]]; then
  make_root ca-certificates
  within apt-get update -q
  touch "$root/complete"
fi
for each in /proc /dev /dev/shm; do mount_into "$each" "$each"; done
cp "$package" "$root/kiosk.deb"

within apt-get purge -y -q lumenfold-kiosk >/dev/null 2>&1 || true  # of a try that was cut short
echo "== installing"
within apt-get install -y -q --no-install-recommends /kiosk.deb
within id lumenfold-kiosk
within lumenfold-kiosk --check && fail "settings without an address are not complained about"

echo "== showing"
mkdir -p "$folder/show" && cp -r "$source/samples/departures" "$folder/show"
"$program" show "$folder/show/departures/departures.pptx" --port 0 >"$folder/show/out" 2>&1 </dev/null &
started+=($!)
until_seen "the show" "$folder/show/out" '^Screen:'
url=$(sed -n 's/^Screen: *//p' "$folder/show/out")
# A chroot gives the browser no namespaces to lock pages in.
printf 'url = %s\nbrowser = --no-sandbox\n' "$url" >"$root/etc/lumenfold-kiosk.conf"
within lumenfold-kiosk --check
# What systemd does for the service.
within install -d -m 700 -o lumenfold-kiosk /var/cache/lumenfold-kiosk /run/kiosk
"${enter[@]}" setpriv --reuid=lumenfold-kiosk --regid=lumenfold-kiosk --init-groups env CACHE_DIRECTORY=/var/cache/lumenfold-kiosk \
  HOME=/var/cache/lumenfold-kiosk XDG_RUNTIME_DIR=/run/kiosk WLR_BACKENDS=headless WLR_RENDERER=pixman lumenfold-kiosk \
  >"$folder/log" 2>&1 </dev/null &
kiosk=$!
started+=("$kiosk")
until_seen "the show on the screen" "$folder/log" "^shows $url"
kill "$kiosk"
wait "$kiosk" || fail "the kiosk ended with $?"
cp "$root/var/cache/lumenfold-kiosk/picture.jpg" "$folder/picture.jpg"

echo "== upgrading"
before=$(sha256sum "$root/etc/lumenfold-kiosk.conf")
within apt-get install -y -q --no-install-recommends --reinstall /kiosk.deb
[[ $before == "$(sha256sum "$root/etc/lumenfold-kiosk.conf")" ]] || fail "an upgrade has changed the settings"

echo "== removing"
within apt-get remove -y -q lumenfold-kiosk
[[ -e $root/etc/lumenfold-kiosk.conf ]] || fail "removing has taken the settings away"
within apt-get purge -y -q lumenfold-kiosk
for each in etc/lumenfold-kiosk.conf etc/pam.d/lumenfold-kiosk var/cache/lumenfold-kiosk usr/share/lumenfold-kiosk; do
  [[ ! -e $root/$each ]] || fail "purging has left /$each"
done
echo "all is well; what the screen showed: $folder/picture.jpg"
