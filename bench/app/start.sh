#!/usr/bin/env bash
# Milliseconds from the start of "lumenfold show DECK" until the first screen's
# page, with the slide in it, has been answered. start.sh PROGRAM DECK [RUNS]
set -euo pipefail
program=${1:?program} deck=${2:?deck} runs=${3:-5} port=2999
for ((run = 1; run <= runs; run++)); do
  begin=$(date +%s%N)
  "$program" show "$deck" --port $port >/dev/null 2>&1 &
  until curl -sf "http://127.0.0.1:$port/" 2>/dev/null | grep -q 'class="slide"'; do sleep 0.002; done
  echo "$((($(date +%s%N) - begin) / 1000000)) ms"
  kill $!
  wait $! || true
done
