# examples/splines/splines.gnuplot - gnuplot -e "data='plot.dat'; points='pallas.txt'; picture='splines.svg'" ...
set terminal svg size 720,900 font "sans,12" background "white"
set output picture
set multiplot layout 3,1 title "Declination of Pallas by four splines"
set xrange [0:360]
set xtics 60
set key top left
names = "not-a-knot natural Akima periodic"
set ylabel "minutes"
plot for [k=0:3] data using 1:(column(2 + 3 * k)) with lines title word(names, k + 1), \
     points using 1:2 with points pt 7 ps 0.6 lc rgb "black" title "Gauss"
set ylabel "derivative, minutes per degree"
unset key
plot for [k=0:3] data using 1:(column(3 + 3 * k)) with lines
set ylabel "integral from 0"
set xlabel "right ascension, degrees"
plot for [k=0:3] data using 1:(column(4 + 3 * k)) with lines
unset multiplot
