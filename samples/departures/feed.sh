#!/usr/bin/env bash
# Keeps the departures board's data files moving, as an airport's own system would.
#
#   feed.sh DIRECTORY           writes the files once a second until it is stopped
#   feed.sh DIRECTORY MOMENT    writes them once, as they are at MOMENT (seconds since 1970)
#
# The board is a function of the time alone: a flight leaves every 75 seconds,
# and what becomes of it follows from its number. So the feed can be stopped and
# started at will. Each file is written beside the old one and renamed over it,
# and only when it differs: a reader never meets half a file.
set -euo pipefail

if [[ $# -lt 1 || $# -gt 2 || ! -d $1 ]]; then
  echo "usage: feed.sh DIRECTORY [MOMENT]" >&2
  exit 2
fi
directory=$1
moment=${2:-}
work=$(mktemp -d "$directory/.feed.XXXXXX")
trap 'rm -rf "$work"' EXIT
trap 'exit 0' INT TERM

# write_board EPOCH SECOND_OF_DAY
write_board() {
  awk -v now="$1" -v second_of_day="$2" -v out="$work" '
  function clock(epoch,    s) {
    s = (second_of_day + epoch - now) % 86400
    if (s < 0) s += 86400
    return sprintf("%02d:%02d", int(s / 3600), int(s % 3600 / 60))
  }
  # A number below limit that is always the same for a flight and a purpose.
  function pick(flight, purpose, limit) {
    return ((flight % 100003) * (40503 + 2654 * purpose) + 977 * purpose) % 65521 % limit
  }
  function gate(flight, purpose,    pier) {
    pier = pick(flight, purpose, 3)
    return substr("ABC", pier + 1, 1) (1 + pick(flight, purpose + 1, pier == 1 ? 24 : 12))
  }
  function initial(name) { return name ~ /^İ/ ? "I" : substr(name, 1, 1) }
  function cut(text, list) { return split(text, list, "|") }
  function row(a, b, c, d, e, light) {
    print a, b, c, d, e, (light == "go" ? lamp : ""), (light == "wait" ? lamp : ""), (light == "stop" ? lamp : "") > board
  }
  function alert(a, b, c, d, e) { if (++alerts <= 4) print a, b, c, d, e > notices }

  BEGIN {
    OFS = "\t"
    SLOT = 75; SHOWN = 9; PAGE = 14; LINGER = 40; NEWS = 110; lamp = "●"
    TO_GATE = 420; BOARDING = 330; FINAL = 150; CLOSED = 50; KNOWN = 480
    board = out "/departures.txt"; list = out "/destinations.txt"; notices = out "/alerts.txt"; weather = out "/weather.txt"
    cities = cut("Zürich|Málaga|København|Edinburgh|Kraków|Reykjavík|Lisbon|Wien|Tromsø|Genève|Porto|Göteborg|Dubrovnik|İzmir|Bilbao|Gdańsk|Nice|Tallinn|Palermo|Cork|Luleå|Thessaloniki|Düsseldorf|Marseille|Bergen|Valencia|Ljubljana|Faro|Riga|Toulouse|Malmö|Cagliari|Hamburg|Split|Oulu|Bristol|Brno|Sevilla|Aarhus|Catania", city)
    airlines = cut("NL|VD|OQ|KX|ZU", airline)

    print "Time", "Flight", "Destination", "Gate", "Status", "Go", "Wait", "Stop" > board
    print "Time", "Flight", "Destination", "Notice", "Detail" > notices

    for (k = int((now - 1200) / SLOT); rows < SHOWN || found < cities; k++) {
      due = k * SLOT; due -= due % 60
      leaves = due; first = gate(k, 3); at = first; news = ""
      turn = k % 8
      if (turn == 2) { leaves = due + 60 * (5 + pick(k, 7, 4)); news = "Delayed" }
      else if (turn == 1 || turn == 3) { at = gate(k, 11); news = (at == first ? "" : "New gate") }
      else if (k % 24 == 6) { news = "Cancelled" }
      known = due - KNOWN
      if (now < known) news = ""
      fresh = (news != "" && now - known < NEWS)

      code = airline[1 + pick(k % cities, 5, airlines)] " " (112 + 17 * (k % cities) + 2 * (int(k / cities) % 4))
      where = city[1 + k % cities]
      left = leaves - now
      if (left < -LINGER) continue
      shown_gate = (news == "New gate" ? at : first)

      place_of = 1 + k % cities
      if (left > 0 && news != "Cancelled" && !(place_of in next_to)) {
        next_to[place_of] = clock(leaves) OFS code OFS where OFS shown_gate
        found++
      }
      if (rows >= SHOWN) continue
      rows++

      if (news == "Cancelled") { status = "Cancelled"; light = "stop"; shown_gate = "–" }
      else if (left <= 0) { status = "Departed"; light = "" }
      else if (left <= CLOSED) { status = "Gate closed"; light = "stop" }
      else if (left <= FINAL) { status = sprintf("Final call %d:%02d", int((left - CLOSED) / 60), (left - CLOSED) % 60); light = "wait" }
      else if (news == "New gate" && fresh) { status = "New gate"; light = "wait" }
      else if (left <= BOARDING) { status = "Boarding"; light = "go" }
      else if (news == "Delayed") { status = "Delayed " clock(leaves); light = "wait" }
      else if (left <= TO_GATE) { status = "Go to gate"; light = "go" }
      else { status = "Scheduled"; light = "" }
      row(clock(due), code, where, shown_gate, status, light)

      if (fresh && news == "New gate") alert(clock(due), code, where, "Gate " at, "instead of gate " first)
      if (fresh && news == "Delayed") alert(clock(due), code, where, "Delayed", "now leaves at " clock(leaves))
      if (fresh && news == "Cancelled") alert(clock(due), code, where, "Cancelled", "please go to the ticket desk")
    }

    # By the alphabet, with the letters of the page that begins with the row.
    print "Time", "Flight", "Destination", "Gate", "Letters" > list
    cut("39|25|15|36|37|32|40|20|13|23|4|28|16|10|12|33|14|3|5|7|27|21|2|31|24|17|35|19|11|6|29|38|34|18|22|30|9|26|8|1", order)
    for (i = 1; i <= cities; i++) {
      last = i + PAGE - 1
      if (last > cities) last = cities
      print next_to[order[i]], initial(city[order[i]]) " – " initial(city[order[last]]) > list
    }

    print "City", "Temperature", "Sky", "Wind" > weather
    places = cut("Port Calder|Málaga|Reykjavík|Wien|Tromsø", place)
    cut("14|24|6|17|-2", base); cut("Sunny spells|Clear sky|Rain showers|Light cloud|Snow", sky); cut("SW 4 m/s|E 2 m/s|NW 9 m/s|W 3 m/s|N 6 m/s", wind)
    for (i = 1; i <= places; i++) {
      degrees = base[i] + pick(int(now / 60) + i, 17, 3) - 1
      print place[i], (degrees < 0 ? "−" (-degrees) : degrees) "°", sky[i], wind[i] > weather
    }
  }'
}

publish() {
  local file
  for file in departures.txt alerts.txt destinations.txt weather.txt; do
    if ! cmp -s "$work/$file" "$directory/$file"; then
      mv -f "$work/$file" "$directory/$file"
    fi
  done
}

pass() {
  local hour minute second
  read -r hour minute second < <(date -d "@$1" '+%H %M %S')
  write_board "$1" $((10#$hour * 3600 + 10#$minute * 60 + 10#$second))
  publish
}

if [[ -n $moment ]]; then
  pass "$moment"
  exit
fi
while true; do
  pass "$(date +%s)"
  # Waited for, so that a signal need not sit out the second.
  sleep 1 &
  wait $!
done
