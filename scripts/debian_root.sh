# For scripts that work in a bare Debian 12 of its own, below the folder $root; they source this. Needs root, debootstrap and
# Debian's mirror.

[[ $EUID -eq 0 ]] || { echo "$0: run it as root, for chroot" >&2; exit 1; }
command -v debootstrap >/dev/null || { echo "$0: debootstrap is missing: apt install debootstrap" >&2; exit 1; }

enter=(nice chroot "$root" env -i HOME=/root LANG=C.UTF-8 PATH=/usr/sbin:/usr/bin:/sbin:/bin DEBIAN_FRONTEND=noninteractive)
within() {
  "${enter[@]}" "$@"
}

mounted=()
mount_into() {  # FOLDER OF-THE-ROOT
  mkdir -p "$root$2"
  mount --bind "$1" "$root$2"
  mounted=("$root$2" "${mounted[@]}")
}
unmount() {
  local each
  for each in "${mounted[@]}"; do umount --lazy "$each"; done  # what was interrupted may still end
  mounted=()
}

make_root() {  # PACKAGE,PACKAGE
  debootstrap --variant=minbase --include="$1" bookworm "$root"
  # How this machine reaches the mirror.
  cp -r /etc/apt/apt.conf.d/. "$root/etc/apt/apt.conf.d/"
  cp -L /etc/resolv.conf "$root/etc/"
  echo force-unsafe-io >"$root/etc/dpkg/dpkg.cfg.d/quick"  # nobody will miss it after a loss of power
}
