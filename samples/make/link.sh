#!/usr/bin/env bash
# Links the shapes of the freshly drawn decks to their data with the built program.
#   node build.mjs && ./link.sh
set -euo pipefail
cd "$(dirname "$0")/.."
program=${LUMENFOLD:-$PWD/../build/release/lumenfold}
if [[ ! -x $program ]]; then
  echo "link.sh: $program is not built (cmake --preset release && cmake --build --preset release)" >&2
  exit 1
fi

# connect DECK DESCRIPTION FILE: sets $connection to the tag number.
connect() {
  connection=$("$program" connection "$1" add --type text --description "$2" --file "$3" --header)
}
# link DECK SLIDE SHAPE COLUMN ROW: to the connection made last.
link() {
  "$program" link "$1" --slide "$2" --shape "$3" --connection "$connection" --column "$4" --row "$5"
}
clock() { "$program" link "$1" --slide "$2" --shape "$3" --clock "$4"; }

link_departures() {
  local deck=departures/departures.pptx row column slide
  connect $deck "Departures" departures.txt
  for row in {1..9}; do
    for column in Time Flight Destination Gate Status Go Wait Stop; do
      link $deck 1 "r$row $column" $column "$row"
    done
  done
  connect $deck "Changes to flights" alerts.txt
  for row in {1..4}; do
    for column in Time Flight Destination Notice Detail; do
      link $deck 2 "a$row $column" $column "$row"
    done
  done
  "$program" slide $deck 2 --hide-when-no-data on
  connect $deck "Weather" weather.txt
  for column in City Temperature Sky Wind; do link $deck 3 "w1 $column" $column 1; done
  for row in {2..5}; do
    for column in City Temperature Sky; do link $deck 3 "w$row $column" $column "$row"; done
  done
  for slide in 1 2; do clock $deck $slide Clock "hh:nn:ss"; done
  clock $deck 3 Clock "hh:nn"
  for slide in 1 2 3; do clock $deck $slide Date "dddd d mmmm"; done
  "$program" display $deck 1
}

link_shop() {
  local deck=shop/shop.pptx row column slide
  connect $deck "Prices" prices.txt
  for row in {1..14}; do
    slide=$((row <= 7 ? 1 : 2))
    for column in Item Note Price; do link $deck $slide "p$row $column" $column "$row"; done
  done
  connect $deck "Offer of the day" offer.txt
  for column in Item Note Price Before Saving Until; do link $deck 3 "Offer $column" $column 1; done
  "$program" slide $deck 3 --hide-when-no-data on
  for slide in 1 2; do
    clock $deck $slide Clock "hh:nn"
    clock $deck $slide Date "dddd d mmmm"
  done
  "$program" display $deck 1
}

link_plant() {
  local deck=plant/plant.pptx row column slide
  connect $deck "Key figures" kpi.txt
  for row in {1..4}; do
    for column in Name Value Unit Better Worse Note; do link $deck 1 "k$row $column" $column "$row"; done
  done
  connect $deck "Lines" plant.txt
  for row in {1..6}; do
    for column in Line Product Rate Target OEE State Run Slow Halt; do link $deck 1 "l$row $column" $column "$row"; done
    for column in Line Run Slow Halt; do link $deck 2 "s$row $column" $column "$row"; done
  done
  connect $deck "Shift" shift.txt
  for slide in 1 2; do
    link $deck $slide Shift Shift 1
    link $deck $slide Lead Lead 1
    clock $deck $slide Clock "hh:nn:ss"
  done
  link $deck 2 "Days safe" DaysSafe 1
  "$program" display $deck 1
}

link_departures
link_shop
link_plant
