# examples/isotherm/isotherm.gnuplot - one gas: gnuplot -e "data='plot.dat'; picture='isotherm.svg'" ...
load "examples/style.gnuplot"
set title "Carbon dioxide at 273.6 K by van der Waals"
set xlabel "volume, L/mol"
set ylabel "pressure, bar"
set logscale x
set xrange [0.06:0.8]
set yrange [20:80]
set xtics (0.06, 0.1, 0.2, 0.4, 0.8)
stats data index 1 using 2 nooutput
pressure = STATS_mean
set arrow from 0.06,pressure to 0.8,pressure nohead dt 3 lc rgb grey
plot data index 0 using 1:2 with lines lw 2 lc rgb blue title "isotherm", \
     data index 1 using 1:2 with points pt 7 ps 0.9 lc rgb orange \
         title sprintf("three volumes at %.2f bar", pressure), \
     data index 2 using 1:2 with points pt 9 ps 1.1 lc rgb "black" title "two volumes become one"
