# examples/forecast/forecast.gnuplot - numbers and forecasts: gnuplot -e "data='plot.dat'; picture='forecast.svg'" ...
load "examples/style.gnuplot"
set title "Sunspot numbers, and what the years before said"
set xlabel "year"
set ylabel "yearly mean number"
set xrange [1924:1980]
set yrange [0:250]
set key top left horizontal
plot data using 1:2 with linespoints lw 1.5 pt 7 ps 0.5 lc rgb "black" title "observed", \
     data using 1:3 with lines lw 2 lc rgb blue title "from two years", \
     data using 1:4 with lines lw 2 dt 2 lc rgb orange title "from nine years"
