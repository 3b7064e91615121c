# examples/pendulum/pendulum.gnuplot - integrand and pieces: gnuplot -e "data='plot.dat'; picture='pendulum.svg'" ...
set terminal svg size 720,480 font "sans,13" background "white"
set output picture
set title "Period of a pendulum at 90 degrees: integrand, and its pieces in the order of their errors"
set xlabel "angle, degrees"
set xrange [0:90]
set yrange [0:12]
set key top left
plot data index 1 using 1:2 with lines lw 2 lc rgb "#2c6fbb" title "integrand", \
     data index 0 using 1:3:($2 - $1):(0) with vectors heads size 0.4,90 lw 2 lc rgb "#c0392b" title "pieces"
