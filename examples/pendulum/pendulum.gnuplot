# examples/pendulum/pendulum.gnuplot - integrand and pieces: gnuplot -e "data='plot.dat'; picture='pendulum.svg'" ...
height = 520
load "examples/style.gnuplot"
set multiplot
set lmargin 9
set rmargin 3
set xrange [0:90]
set xtics 15
set title "Pendulum released at 90 degrees"
set size 1,0.58
set origin 0,0.42
set format x ""
set ylabel "integrand"
set yrange [0:12]
plot data index 1 using 1:2 with lines lw 2 lc rgb blue
unset title
set size 1,0.46
set origin 0,0
set format x "%g"
set xlabel "angle, degrees"
set ylabel "piece, by error" offset 0.5,0
set yrange [8.7:0.3]
set ytics 1
plot data index 0 using 1:3:($2 - $1):(0) with vectors heads size 0.6,90 lw 2.5 lc rgb orange
unset multiplot
