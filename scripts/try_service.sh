#!/usr/bin/env bash
# Takes the packages round under systemd, on a machine of their own: Debian 12 in QEMU, with a display. What is tried stands in
# try_service/; each thing is a line "ok ..." or "failed ...".
#   try_service.sh PACKAGES [FOLDER [PART...]]   PACKAGES has both .deb files; FOLDER (build/machine) gets the machine, 4 GB, what it
#                                                tells and pictures of its display; PART is server or kiosk, both without one
# As root, with debootstrap, qemu-system-x86, and Debian's mirror within reach. The processor is emulated, which is slow: half an
# hour; ACCELERATOR=kvm uses this machine's. ./test.sh does not run it.
set -euo pipefail
[[ $# -ge 1 ]] || { echo "usage: try_service.sh PACKAGES [FOLDER [PART...]]" >&2; exit 2; }
source=$(cd "$(dirname "$0")/.." && pwd)
server=$(realpath "$1"/lumenfold_*_amd64.deb)
kiosk=$(realpath "$1"/lumenfold-kiosk_*_all.deb)
folder=${2:-$source/build/machine}
mkdir -p "$folder"
folder=$(cd "$folder" && pwd)
parts=("${@:3}")
root=$folder/root
disk=$folder/disk
shared=$folder/shared

. "$source/scripts/debian_root.sh"
for each in qemu-system-x86_64 mkfs.ext4; do
  command -v "$each" >/dev/null || { echo "try_service.sh: $each is missing" >&2; exit 1; }
done

make_machine() {
  rm -rf "$root"
  make_root ca-certificates,curl,dbus,kmod,libpam-systemd,systemd-sysv,udev
  echo screen >"$root/etc/hostname"
  mount_into /proc /proc
  trap unmount EXIT
  within apt-get update -q
  within apt-get install -y -q --no-install-recommends linux-image-amd64 initramfs-tools fonts-liberation procps
  # What the packages need is there; the machine has no network.
  local package
  for package in "$server" "$kiosk"; do
    within apt-get satisfy -y -q --no-install-recommends "$(dpkg-deb -f "$package" Depends)"
  done
  within apt-get clean
  cat >"$root/etc/systemd/system/try.service" <<'END'
[Unit]
Description=What is to be tried
SuccessAction=poweroff-force
FailureAction=poweroff-force
[Service]
Type=exec
ExecStartPre=/bin/mkdir -p /try
ExecStartPre=/bin/mount -t 9p -o trans=virtio,version=9p2000.L try /try
ExecStart=/bin/bash -c 'exec bash /try/scripts/main.sh >/try/results 2>&1'
[Install]
WantedBy=multi-user.target
END
  within systemctl enable try.service
  unmount
  mkfs.ext4 -q -d "$root" "$disk.new" 6G
  mv "$disk.new" "$disk"
}
[[ -e $disk ]] || make_machine

rm -rf "$shared"
mkdir -p "$shared/packages"
cp -r "$source/scripts/try_service" "$shared/scripts"
cp "$server" "$shared/packages/lumenfold.deb"
cp "$kiosk" "$shared/packages/lumenfold-kiosk.deb"
dpkg-deb -R "$server" "$shared/next"
sed -i 's/^\(Version: .*\)/\1+next/' "$shared/next/DEBIAN/control"
dpkg-deb --root-owner-group -Znone -b "$shared/next" "$shared/packages/next.deb" >/dev/null
rm -r "$shared/next"
: >"$shared/results"
printf '%s\n' "${parts[@]:-server kiosk}" >"$shared/parts"

# What is written to the disk is forgotten when the machine ends; its monitor takes commands on standard input.
coproc machine {
  exec qemu-system-x86_64 -accel "${ACCELERATOR:-tcg}" -cpu max -smp 2 -m 3072 -no-reboot -nic none -display none -vga virtio \
    -kernel "$(ls "$root"/boot/vmlinuz-*)" -initrd "$(ls "$root"/boot/initrd.img-*)" -append "root=/dev/vda rw console=ttyS0" \
    -drive "file=$disk,if=virtio,format=raw,snapshot=on" -virtfs "local,path=$shared,mount_tag=try,security_model=none" \
    -serial "file:$folder/console" -monitor stdio 2>"$folder/qemu" >/dev/null
}
# The shell forgets these when the machine ends.
process=$machine_PID
exec {monitor}>&"${machine[1]}"
trap 'kill "$process" 2>/dev/null || true' EXIT

tail -n +1 -f --pid="$process" "$shared/results" | while read -r line; do
  if [[ $line == look\ * ]]; then
    name=${line#look }
    rm -f "$folder/$name.png"
    echo "screendump $folder/$name.png -f png" >&"$monitor"
    until [[ -s $folder/$name.png ]]; do sleep 0.2; done
    echo "the display: $folder/$name.png"
    touch "$shared/$name.seen"
  else
    echo "$line"
  fi
done
grep -q '^all is tried$' "$shared/results" || { echo "try_service.sh: the machine has ended early; $folder/console tells more" >&2; exit 1; }
! grep -q '^failed' "$shared/results"
