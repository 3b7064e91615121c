#!/usr/bin/env bash
# examples/demo.sh PROGRAMS OUT - run every chapter on its data: PROGRAMS holds the built examples, OUT receives pictures
set -euo pipefail
cd "$(dirname "$0")/.."
programs=$1
out=$2
data=examples/data
mkdir -p "$out"

echo "== Counts of alpha particles and the Poisson law =="
"$programs"/alpha_c "$data"/alpha_counts.txt "$out"/alpha.dat | tee "$out"/alpha.txt
gnuplot -e "data='$out/alpha.dat'; picture='$out/alpha.svg'" examples/alpha/alpha.gnuplot
for language in cpp f90; do
    "$programs"/alpha_$language "$data"/alpha_counts.txt | diff "$out"/alpha.txt -
    echo " the $language program prints the same"
done
echo "== Weekdays and intervals of dated events =="
"$programs"/calendar_c "$data"/events.txt "$out"/calendar.dat
"$programs"/calendar_f90 "$data"/events.txt
gnuplot -e "data='$out/calendar.dat'; picture='$out/calendar.svg'" examples/calendar/calendar.gnuplot
echo "== A volume by Monte Carlo =="
"$programs"/montecarlo_cpp "$out"/montecarlo.dat
gnuplot -e "data='$out/montecarlo.dat'; picture='$out/montecarlo.svg'" examples/montecarlo/montecarlo.gnuplot
echo "== A network of friends =="
"$programs"/network_cpp "$data"/club.mtx "$out"/network.dat
gnuplot -e "data='$out/network.dat'; picture='$out/network.svg'" examples/network/network.gnuplot
echo "== A regression, and Hilbert matrices =="
"$programs"/regression_f90 "$data"/longley.txt
echo "== Bright stars by magnitude and by nearness to the equator =="
"$programs"/stars_c "$data"/stars.txt
echo "== Splines through the places of Pallas and the table of a thermocouple =="
"$programs"/splines_cpp "$data"/pallas.txt "$data"/thermocouple_k.txt "$out"/splines.dat
"$programs"/thermocouple_f90 "$data"/thermocouple_k.txt
gnuplot -e "data='$out/splines.dat'; points='$data/pallas.txt'; picture='$out/splines.svg'" \
    examples/splines/splines.gnuplot
echo "== The period of a pendulum: an integral with a singular end =="
"$programs"/pendulum_c "$out"/pendulum.dat
gnuplot -e "data='$out/pendulum.dat'; picture='$out/pendulum.svg'" examples/pendulum/pendulum.gnuplot
echo "== Volumes of a gas: zeros that become one =="
"$programs"/isotherm_f90 "$data"/van_der_waals.txt
echo "== Accidents at work: a fit by maximum likelihood =="
"$programs"/accidents_cpp "$data"/accidents.txt "$out"/accidents.dat
gnuplot -e "data='$out/accidents.dat'; picture='$out/accidents.svg'" examples/accidents/accidents.gnuplot
echo "== The cycle of the sunspots =="
"$programs"/sunspots_c "$data"/sunspots.txt "$out"/sunspots.dat
"$programs"/sunspots_f90 "$data"/sunspots.txt
gnuplot -e "data='$out/sunspots.dat'; picture='$out/sunspots.svg'" examples/sunspots/sunspots.gnuplot
echo "pictures: $out/*.svg"
