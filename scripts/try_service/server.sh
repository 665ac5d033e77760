# The package lumenfold and its service.
unit=lumenfold@boards
url=http://127.0.0.1:2000/

ready() { curl -fsS --max-time 30 "${url}readyz" | grep '"ready"'; }
settings() {  # DECK
  printf '%s\n' "deck = $1" "bind = 127.0.0.1" "port = 2000" "kiosk = yes" "seconds = 600" >/etc/lumenfold/boards.conf
}

echo "== installing"
check "the package installs" install lumenfold.deb
mkdir -p /srv/boards
cp -r /usr/share/lumenfold/samples/{departures,shop} /srv/boards
settings /srv/boards/departures/departures.pptx

echo "== starting"
systemctl start --no-block $unit
seen=
until [[ ${seen##* } == @(active|failed) ]]; do
  state=$(property $unit ActiveState)
  [[ $state == "${seen##* }" ]] || seen+=" $state"
done
check "the service comes by activating to active ($seen)" test "${seen% active}" != "$seen" -a "${seen/activating/}" != "$seen"
check "whose first slide is drawn when it is" ready
check "its status says what is on: $(property $unit StatusText)" is $unit StatusText 'departures.pptx: slide 1 of *'
check "the slide comes" sh -c "curl -fsS ${url}slides/1 | grep -i departures"

echo "== its rights"
pid=$(property $unit MainPID)
account=$(stat -c %u "/proc/$pid")
check "its account ($account) is one of those that systemd makes" test "$account" -ge 61184 -a "$account" -le 65519
check "calls are filtered, and no rights are left" sh -c "grep '^Seccomp:.*2' /proc/$pid/status && grep '^CapBnd:.*0000000000000000' /proc/$pid/status &&
  grep '^NoNewPrivs:.*1' /proc/$pid/status"
exposure=$(systemd-analyze security --no-pager $unit | sed -n 's/.*exposure level for .*: \([0-9.]*\) .*/\1/p')
check "its exposure ($exposure) is at most 2.0" awk "BEGIN { exit !(\"$exposure\" != \"\" && $exposure <= 2.0) }"
inside=(nsenter -t "$pid" -m)
check "it cannot write where it does not belong" "${inside[@]}" sh -c '! touch /etc/x && ! touch /srv/boards/x && ! touch /usr/x'
check "it sees nobody's home" "${inside[@]}" sh -c '! ls /root/.bashrc'
check "its token is its own" test "$(stat -c '%a %u' /var/lib/lumenfold/boards/token)" = "600 $account"

echo "== reloading"
settings /srv/boards/shop/shop.pptx
check "reload" systemctl reload $unit
check "takes up another deck" within 60 is $unit StatusText 'shop.pptx: slide *'
echo nonsense >/srv/boards/shop/shop.pptx.new
settings /srv/boards/shop/shop.pptx.new
check "reload with what is no deck" systemctl reload $unit
warned() { journalctl -b -q -p warning -o json -u $unit | grep -E '"PRIORITY":"[34]"' | grep shop.pptx.new; }
check "is a warning in the journal" within 60 warned
check "and stands in the log of the service" grep shop.pptx.new /var/log/lumenfold/boards/errors.txt
check "and leaves the show as it was" is $unit StatusText 'shop.pptx: slide *'
check "it is the same process still" is $unit MainPID "$pid"
settings /srv/boards/departures/departures.pptx
systemctl reload $unit

echo "== hanging"
kill -STOP "$pid"
began=$SECONDS
restarted() { is $unit NRestarts 1 && is $unit ActiveState active && ready; }
check "a program that stands still is started anew" within 240 restarted
check "by the watchdog (after $((SECONDS - began)) s, the new start included)" tells $unit 'Watchdog timeout' _PID=1

echo "== upgrading"
before=$(property $unit MainPID)
check "the next version installs" install next.deb
check "and runs" test "$(property $unit MainPID)" != "$before"
check "and shows" within 60 ready

echo "== stopping"
began=$SECONDS
systemctl stop $unit
check "SIGTERM ends it (in $((SECONDS - began)) s)" is $unit Result success
check "cleanly" is $unit ExecMainStatus 0
check "nothing was killed by the filters" none sh -c "journalctl -b -q | grep -E 'type=1326|SIGSYS|status=31'"

echo "== purging"
systemctl enable --now $unit
link=/etc/systemd/system/multi-user.target.wants/$unit.service
check "an enabled service is linked" test -L $link
check "purge" apt-get purge -y -q lumenfold
check "ends the service" is $unit ActiveState inactive
check "leaves the administrator's settings alone" none sh -c "find / -xdev -iname '*lumenfold*' -not -path '/try/*' | grep -vx /etc/lumenfold;
  ls /etc/lumenfold | grep -vx boards.conf"
check "no account and no unit" none sh -c "grep lumenfold /etc/passwd /etc/group; systemctl list-units --all --no-legend 'lumenfold*' | grep -v boards"
