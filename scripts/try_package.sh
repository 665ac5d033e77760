#!/usr/bin/env bash
# Takes the package round in a Debian 12 of its own: installed, upgraded with changed settings, removed, purged.
#   try_package.sh PACKAGES [ROOT]   PACKAGES is a folder with the .deb files, such as build/release/packages
#                                    ROOT is a bare Debian 12 that is made when it is missing, and stays as it is
# As root, with debootstrap, curl, and Debian's mirror within reach. ./test.sh does not run it.
set -euo pipefail
[[ $# -ge 1 ]] || { echo "usage: try_package.sh PACKAGES [ROOT]" >&2; exit 2; }
package=$(realpath "$1"/lumenfold_*.deb)
bare=${2:-}
work=$(mktemp -d /tmp/lumenfold-root.XXXXXX)
root=$work/root
. "$(dirname "$0")/debian_root.sh"
show=
cleanup() {
  [[ -z $show ]] || kill "$show" 2>/dev/null || true
  unmount
  rm -rf --one-file-system "$work"
}
trap cleanup EXIT

step() { echo "== $*"; }
fail() {
  echo "try_package: $*" >&2
  exit 1
}
# What apt says is of interest when it fails.
apt() { within apt-get -qq -y -o Dpkg::Options::=--force-confold "$@" >"$work/apt" 2>&1 || { cat "$work/apt" >&2; fail "apt-get $*"; }; }
is_there() { [[ -e $root$1 ]] || fail "$1 is not there $2"; }
is_gone() { [[ ! -e $root$1 ]] || fail "$1 is still there $2"; }

step "A bare Debian 12"
if [[ -n $bare ]]; then
  [[ -d $bare/usr ]] || root=$bare make_root ca-certificates >"$work/log" || fail "$(tail -n 3 "$work/log")"
  cp -a --reflink=auto "$bare" "$root"
else
  make_root ca-certificates >"$work/log" || fail "$(tail -n 3 "$work/log")"
fi
mount_into /proc /proc
apt update
# Documentation is left out of small systems; here it is wanted.
rm -f "$root"/etc/dpkg/dpkg.cfg.d/*

step "Installing"
cp "$package" "$root/tmp/first.deb"
apt install --no-install-recommends /tmp/first.deb
within lumenfold --version
for file in /usr/share/man/man1/lumenfold-show.1.gz /usr/share/bash-completion/completions/lumenfold /etc/lumenfold/example.conf \
  /lib/systemd/system/lumenfold@.service /usr/share/doc/lumenfold/copyright /usr/share/doc/lumenfold/examples/shop/shop.pptx; do
  is_there "$file" "after installing"
done
missing=$(within ldd /usr/bin/lumenfold | grep 'not found' || true)
[[ -z $missing ]] || fail "libraries are missing: $missing"

step "A show by the service's settings, as nobody"
mkdir -p "$root"/var/{lib,log,cache}/lumenfold/example
chown 65534 "$root"/var/{lib,log,cache}/lumenfold/example
folders=(CONFIGURATION_DIRECTORY=/etc/lumenfold STATE_DIRECTORY=/var/lib/lumenfold/example
  LOGS_DIRECTORY=/var/log/lumenfold/example CACHE_DIRECTORY=/var/cache/lumenfold/example)
# The whole command of the unit, but for a free port.
read -ra command < <(sed -n 's/^ExecStart=//p' "$root/lib/systemd/system/lumenfold@.service" | sed 's/%i/example/')
: >"$work/out"
chroot --userspec=65534:65534 "$root" env -i PATH=/usr/bin "${folders[@]}" "${command[@]}" --port 0 >"$work/out" 2>"$work/error" &
show=$!
for ((i = 0; i < 600; ++i)); do
  url=$(sed -n 's/^Screen: *//p' "$work/out")
  [[ -z $url ]] || break
  kill -0 "$show" 2>/dev/null || fail "the show ended: $(cat "$work/error")"
  sleep 0.1
done
curl -fsS --max-time 30 "${url}readyz" | grep -q '"ready"' || fail "the show is not ready"
curl -fsS --max-time 30 "${url}slides/1" >"$work/slide"
grep -qi 'departures' "$work/slide" || fail "slide 1 is not the departures board"
kill "$show"
wait "$show" || fail "the show ended with exit code $?: $(cat "$work/error")"
show=
is_there /var/lib/lumenfold/example/token "after the show"

step "Upgrading with changed settings"
within sh -c 'echo "stale = mark" >> /etc/lumenfold/example.conf; cp /etc/lumenfold/example.conf /etc/lumenfold/own.conf'
mkdir "$work/next"
dpkg-deb -R "$package" "$work/next"
sed -i 's/^\(Version: .*\)/\1+next/' "$work/next/DEBIAN/control"
for name in example.conf settings.ini; do echo "# of the next version" >>"$work/next/etc/lumenfold/$name"; done
dpkg-deb --root-owner-group -b "$work/next" "$root/tmp/next.deb" >/dev/null
apt install --no-install-recommends /tmp/next.deb
within dpkg-query -W lumenfold | grep -q next || fail "the next version is not installed"
within grep -q '^stale = mark$' /etc/lumenfold/example.conf || fail "a change of example.conf is lost"
within grep -q 'next version' /etc/lumenfold/settings.ini || fail "settings.ini, which nobody has changed, is the old one"
within grep -q 'next version' /etc/lumenfold/example.conf.dpkg-dist || fail "the new example.conf is nowhere to be found"

step "Removing"
apt remove lumenfold
is_gone /usr/bin/lumenfold "after removing"
is_gone /usr/share/lumenfold "after removing"
for file in /etc/lumenfold/example.conf /etc/lumenfold/own.conf /var/lib/lumenfold/example/token; do
  is_there "$file" "after removing"
done

step "Purging"
apt purge lumenfold
left=$(cd "$root" && find . -xdev -path ./proc -prune -o -path ./tmp -prune -o -iname '*lumenfold*' -print | sort)
[[ $left == ./etc/lumenfold ]] || fail "purging leaves: $left"
left=$(ls "$root/etc/lumenfold")
[[ $left == own.conf ]] || fail "purging leaves in /etc/lumenfold: $left"
echo "All of it went well; only own.conf, which is the administrator's, has stayed."
