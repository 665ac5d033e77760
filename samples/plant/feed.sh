#!/usr/bin/env bash
# Keeps the plant's database moving, as its machines would.
#
#   feed.sh DIRECTORY   changes DIRECTORY/plant.db once a second until it is stopped
set -euo pipefail

if [[ $# -ne 1 || ! -f $1/plant.db ]]; then
  echo "usage: feed.sh DIRECTORY   (a folder that holds plant.db)" >&2
  exit 2
fi
if ! command -v sqlite3 >/dev/null; then
  echo "feed.sh: sqlite3 is missing: apt-get install sqlite3" >&2
  exit 1
fi
trap 'exit 0' INT TERM

# Line 3 recovers and slows down again, a minute each. An hour of the output takes
# a minute, too: its column grows, then the columns move on.
step() {
  sqlite3 -cmd '.timeout 1000' "$1/plant.db" "
    BEGIN IMMEDIATE;
    UPDATE plant SET Light = CASE WHEN strftime('%M', 'now') % 2 THEN 'Run' ELSE 'Slow' END WHERE Line = 'Line 3';
    UPDATE plant SET State = CASE Light WHEN 'Run' THEN 'Running' ELSE 'Reduced speed' END WHERE Line = 'Line 3';
    UPDATE plant SET Rate = CASE Light WHEN 'Run' THEN Target - 8 + abs(random() % 13)
                                       ELSE Target * 7 / 10 - 4 + abs(random() % 9) END WHERE Light <> 'Halt';
    UPDATE plant SET OEE = min(99.5, max(60, OEE + (random() % 3) / 10.0)) WHERE Light <> 'Halt';
    UPDATE kpi SET Value = (SELECT printf('%d %03d', made / 1000, made % 1000) FROM
        (SELECT 14206 + strftime('%s', 'now') % 28800 * 9 / 10 AS made)) WHERE Name = 'Good units';
    UPDATE kpi SET Value = (SELECT printf('%.1f', avg(OEE)) FROM plant) WHERE Name = 'Overall effectiveness';
    UPDATE kpi SET Value = 310 + abs(random() % 17) WHERE Name = 'Energy';
    WITH clock AS (SELECT strftime('%s', 'now') / 60 AS minute, strftime('%S', 'now') + 1 AS second)
      UPDATE output SET Hour = (SELECT printf('%02d:00', (minute + Id) % 24) FROM clock),
        Pallets = (SELECT (64 + (minute + Id) * 37 % 23) * CASE Id WHEN 8 THEN second ELSE 60 END / 60 FROM clock);
    WITH clock AS (SELECT strftime('%s', 'now') / 20 AS step)
      UPDATE stops SET Minutes = (SELECT 5 + (11 - Id) * (2 + (step + 5 * Id) % 9) / 4 FROM clock);
    COMMIT;"
}

while true; do
  step "$1"
  # Waited for, so that a signal need not sit out the second.
  sleep 1 &
  wait $!
done
