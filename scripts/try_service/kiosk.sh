# The package lumenfold-kiosk: a screen of this machine, first without its show.
unit=lumenfold-kiosk
rm -f /etc/lumenfold/boards.conf

browsers() { pgrep -a -u lumenfold-kiosk -f /chromium/; }
locked_in() {
  local process
  for process in $(pgrep -u lumenfold-kiosk -f -- --type=renderer); do
    grep '^Seccomp:.*2' "/proc/$process/status" && [[ $(readlink "/proc/$process/ns/user") != $(readlink /proc/1/ns/user) ]] && return
  done
  return 1
}
has_session() {
  local session
  session=$(loginctl list-sessions --no-legend | awk '/lumenfold-kiosk/ { print $1 }')
  loginctl show-session "$session" | grep -E '^(Class|Type|Seat|VTNr|Active|State)=' | sort | tr '\n' ' ' | tee /dev/stderr |
    grep 'Active=yes Class=user Seat=seat0 State=active Type=wayland VTNr=1'
}
# Its lines are the session's, not the unit's. TEXT [HOW-OFTEN]
says() { (($(journalctl -b -q -o cat -t lumenfold-kiosk | grep -cE -- "$1") >= ${2:-1})); }

# This machine's display draws nothing by itself.
mkdir -p /etc/systemd/system/$unit.service.d
printf '%s\n' "[Service]" "Environment=WLR_RENDERER=pixman" >/etc/systemd/system/$unit.service.d/renderer.conf

echo "== a screen without its show"
install lumenfold.deb >/dev/null
check "the package installs" install lumenfold-kiosk.deb
check "an account stands" id lumenfold-kiosk
check "a screen without settings runs, to say so" within 60 is $unit ActiveState active
printf '%s\n' "url = http://127.0.0.1:2000/" "browser = --disable-gpu" >/etc/lumenfold-kiosk.conf
systemctl restart $unit
check "it has a session on the first console" within 60 has_session
check "it waits for the show" within 1200 says '^waits for http://127.0.0.1:2000/'
check "its pages are locked in" within 60 locked_in
sleep 20
look waiting

echo "== with its show"
printf '%s\n' "deck = /usr/share/lumenfold/samples/departures/departures.pptx" "kiosk = yes" >/etc/lumenfold/boards.conf
systemctl start lumenfold@boards
check "it comes when the server does" within 600 says '^shows http://127.0.0.1:2000/'
sleep 20
look show
check "its picture is kept" within 300 test -s /var/cache/lumenfold-kiosk/picture.jpg

echo "== a browser that hangs"
# Not what reports its crashes, which hangs with no browser and would stay so.
pkill -STOP -u lumenfold-kiosk -f "/chromium/chromium "
began=$SECONDS
check "is given up" within 300 says 'it has painted nothing'
check "for another (after $((SECONDS - began)) s)" within 1200 says '^shows ' 2
sleep 20
look again

echo "== a program that hangs"
kill -STOP "$(property $unit MainPID)"
began=$SECONDS
restarted() { is $unit NRestarts 1 && is $unit ActiveState active; }
check "is started anew by the watchdog" within 240 restarted
check "and shows (after $((SECONDS - began)) s)" within 1200 says '^shows ' 3

echo "== stopping"
began=$SECONDS
systemctl stop $unit
check "it ends (in $((SECONDS - began)) s)" is $unit Result success
check "with its browser" none browsers
check "nothing was killed by filters" none sh -c "journalctl -b -q | grep -E 'type=1326|SIGSYS|status=31'"
rm -r /etc/systemd/system/$unit.service.d
check "purge" apt-get purge -y -q lumenfold-kiosk
check "leaves nothing but the account" none sh -c "find / -xdev -iname '*lumenfold-kiosk*'"
