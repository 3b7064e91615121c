# examples/montecarlo/montecarlo.gnuplot - errors of the estimates: gnuplot -e "data='plot.dat'; picture='x.svg'" ...
height = 460
load "examples/style.gnuplot"
set title "Error of a Monte Carlo volume (ball in five dimensions)"
set xlabel "points"
set ylabel "error"
set logscale xy
set format "10^{%T}"
set xrange [800:1.3e6]
set yrange [1e-6:0.1]
set mxtics 10
set mytics 10
set key tmargin center horizontal maxrows 3
names = "1 2 5 7 8 9"
array colours[6] = [blue, orange, green, yellow, sky, purple]
array marks[6] = [4, 6, 8, 10, 12, 2]
plot for [k=0:5] data index k using 1:2 with linespoints lw 1.2 pt marks[k+1] ps 0.6 lc rgb colours[k+1] \
         title "option ".word(names, k + 1), \
     data index 0 using 1:3 with lines lw 3 dt 2 lc rgb "black" title "standard error"
