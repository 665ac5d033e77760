# Runs within the machine: the parts that are wanted, and what both need.
set -uo pipefail
cd /try
export LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive

# WHAT COMMAND...
check() {
  if "${@:2}" >/tmp/check 2>&1; then echo "ok $1"; else
    echo "failed $1"
    sed 's/^/    /' /tmp/check
  fi
}
# SECONDS COMMAND...
within() {
  local end=$((SECONDS + $1))
  until "${@:2}" >/tmp/within 2>&1; do
    if ((SECONDS >= end)); then
      cat /tmp/within
      return 1
    fi
    sleep 0.5
  done
}
# PACKAGE-FILE
install() { apt-get install -y -qq --no-install-recommends -o Dpkg::Options::=--force-confold "./packages/$1"; }
# UNIT PROPERTY
property() { systemctl show -P "$2" "$1"; }
is() { [[ $(property "$1" "$2") == $3 ]] || { property "$1" "$2"; return 1; }; }
tells() { journalctl -b -q -o cat -u "$1" "${@:3}" | grep -E -- "$2"; }
# COMMAND... that tells something
none() {
  local told
  told=$("$@" 2>&1)
  [[ -z $told ]] || { echo "$told"; return 1; }
}
# NAME: has the machine's display taken down.
look() {
  echo "look $1"
  until [[ -e $1.seen ]]; do sleep 0.5; done
}

journalctl -b -f -n all -q -o short-monotonic >journal &
systemctl is-system-running --wait >/dev/null
echo "$(systemctl --version | head -n 1); $(uname -r); $(systemctl is-system-running)"
for part in $(<parts); do . "scripts/$part.sh"; done
kill %1
echo "all is tried"
