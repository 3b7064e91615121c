# examples/alpha/alpha.gnuplot - picture of the fit: gnuplot -e "data='plot.dat'; picture='alpha.svg'" alpha.gnuplot
load "examples/style.gnuplot"
set title "Alpha particles in 2608 intervals, and the Poisson law"
set xlabel "particles in an interval of 7.5 s"
set ylabel "intervals"
set style fill solid 0.45 noborder
set boxwidth 0.8
set xrange [-0.7:14.7]
set yrange [0:600]
set xtics 2
plot data using 1:2 with boxes lc rgb sky title "observed", \
     data using 1:3 with linespoints lw 1.5 pt 7 ps 0.6 lc rgb orange title "expected"
