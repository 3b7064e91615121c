# examples/stars/stars.gnuplot - the sorted table: gnuplot -e "data='plot.dat'; picture='stars.svg'" stars.gnuplot
height = 640
load "examples/style.gnuplot"
set title "Bright stars, the brightest on top"
set xlabel "declination, degrees (0: over the equator)"
set xrange [-90:90]
set xtics 30
set yrange [21.8:0.2]
set border 1
unset ytics
set arrow from 0,0.2 to 0,21.8 nohead dt 2 lc rgb grey
# The size tells the brightness; names stand on the side that has room.
plot data using 3:1:(1.3 - 0.45*$2) with points pt 7 ps variable lc rgb blue, \
     data using ($3 < 0 ? $3 : NaN):1:5 with labels left offset 1.8,0, \
     data using ($3 >= 0 ? $3 : NaN):1:5 with labels right offset -1.8,0
