# examples/montecarlo/montecarlo.gnuplot - errors of the estimates: gnuplot -e "data='plot.dat'; picture='x.svg'" ...
set terminal svg size 720,480 font "sans,13" background "white"
set output picture
set title "Error of a Monte Carlo volume (ball in five dimensions)"
set xlabel "points"
set ylabel "error"
set logscale xy
set yrange [1e-6:0.1]
set key bottom left
names = "1 2 5 7 8 9"
plot for [k=0:5] data index k using 1:2 with linespoints title "option ".word(names, k + 1), \
     data index 0 using 1:3 with lines lw 2 dt 2 lc rgb "black" title "standard error"
