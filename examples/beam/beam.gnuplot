# examples/beam/beam.gnuplot - deflection: gnuplot -e "data='plot.dat'; picture='beam.svg'" ...
load "examples/style.gnuplot"
set title "A steel beam of six metres under 5 kN per metre"
set xlabel "place, m"
set ylabel "deflection, mm"
set yrange [24:-1]
set xrange [0:6]
set key at 3,6 center
plot data using 1:3 with lines lw 2 lc rgb orange title "theory", \
     data every 10::9 using 1:2 with points pt 7 ps 0.6 lc rgb blue title "band system (each tenth point)"
