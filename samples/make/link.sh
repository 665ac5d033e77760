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

# connect DECK TYPE DESCRIPTION SOURCE...: sets $connection to the tag number.
connect() {
  local deck=$1 type=$2 description=$3
  connection=$("$program" connection "$deck" add --type "$type" --description "$description" "${@:4}")
}
# link DECK SLIDE SHAPE COLUMN ROW: to the connection made last.
link() {
  "$program" link "$1" --slide "$2" --shape "$3" --connection "$connection" --column "$4" --row "$5"
}
clock() { "$program" link "$1" --slide "$2" --shape "$3" --clock "$4"; }

link_departures() {
  local deck=departures/departures.pptx row column slide
  connect $deck text "Departures" --file departures.txt --header
  for row in {1..9}; do
    for column in Time Flight Destination Gate Status Go Wait Stop; do
      link $deck 1 "r$row $column" $column "$row"
    done
  done
  connect $deck text "Changes to flights" --file alerts.txt --header
  for row in {1..4}; do
    for column in Time Flight Destination Notice Detail; do
      link $deck 2 "a$row $column" $column "$row"
    done
  done
  "$program" slide $deck 2 --hide-when-no-data on
  connect $deck text "Weather" --file weather.txt --header
  for column in City Temperature Sky Wind; do link $deck 3 "w1 $column" $column 1; done
  for row in {2..5}; do
    for column in City Temperature Sky; do link $deck 3 "w$row $column" $column "$row"; done
  done
  connect $deck text "Destinations" --file destinations.txt --header
  link $deck 4 Letters Letters 1
  for row in {1..14}; do
    for column in Time Flight Destination Gate; do link $deck 4 "d$row $column" $column "$row"; done
  done
  "$program" slide $deck 4 --scroll "$connection" --step 14 --time 5000
  for slide in 1 2 4; do clock $deck $slide Clock "hh:nn:ss"; done
  clock $deck 3 Clock "hh:nn"
  for slide in 1 2 3 4; do clock $deck $slide Date "dddd d mmmm"; done
  "$program" display $deck 1
}

link_shop() {
  local deck=shop/shop.pptx row column slide
  connect $deck excel "Prices" --file prices.xlsx --sheet Prices --range A:D --header
  for row in {1..14}; do
    slide=$((row <= 7 ? 1 : 2))
    for column in Item Note Price; do link $deck $slide "p$row $column" $column "$row"; done
  done
  connect $deck excel "Offer of the day" --file prices.xlsx --sheet Offer --range A:G --header
  for column in Item Note Price Before Saving Until; do link $deck 3 "Offer $column" $column 1; done
  "$program" link $deck --slide 3 --shape "Offer Picture" --connection "$connection" --column Picture --row 1 \
    --folder pictures --extension png
  "$program" slide $deck 3 --hide-when-no-data on
  for slide in 1 2; do
    clock $deck $slide Clock "hh:nn"
    clock $deck $slide Date "dddd d mmmm"
  done
  "$program" display $deck 1
}

link_plant() {
  local deck=plant/plant.pptx row column slide
  local database="Provider=SQLite;Data Source=plant.db"
  # Of the three lamps of a line, one is lit.
  local lines="SELECT Line, Product, Rate, Target, printf('%.1f', OEE) AS OEE, State,\
 CASE Light WHEN 'Run' THEN '●' END AS Run, CASE Light WHEN 'Slow' THEN '●' END AS Slow,\
 CASE Light WHEN 'Halt' THEN '●' END AS Halt FROM plant ORDER BY Line"
  connect $deck database "Key figures" --connection-string "$database" --sql kpi
  for row in {1..4}; do
    for column in Name Value Unit Better Worse Note; do link $deck 1 "k$row $column" $column "$row"; done
  done
  connect $deck database "Lines" --connection-string "$database" --sql "$lines"
  for row in {1..6}; do
    for column in Line Product Rate Target OEE State Run Slow Halt; do link $deck 1 "l$row $column" $column "$row"; done
    for column in Line Run Slow Halt; do link $deck 2 "s$row $column" $column "$row"; done
  done
  connect $deck database "Output" --connection-string "$database" --sql "SELECT Hour, Pallets, Target FROM output ORDER BY Id"
  "$program" link $deck --slide 3 --shape "Output chart" --connection "$connection" --chart
  connect $deck database "Stops" --connection-string "$database" --sql "SELECT Cause, Minutes FROM stops ORDER BY Id"
  "$program" link $deck --slide 3 --shape "Stops chart" --connection "$connection" --chart
  connect $deck database "Totals" --connection-string "$database" --sql totals
  for column in Pallets Minutes; do link $deck 3 "Total $column" $column 1; done
  connect $deck database "Shift" --connection-string "$database" --sql shift
  for slide in 1 2 3; do
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
