# examples/alpha/alpha.gnuplot - picture of the fit: gnuplot -e "data='plot.dat'; picture='alpha.svg'" alpha.gnuplot
set terminal svg size 720,480 font "sans,13" background "white"
set output picture
set title "Alpha particles in 2608 intervals of 7.5 s, and the fitted Poisson law"
set xlabel "particles in an interval"
set ylabel "intervals"
set style fill solid 0.5 border -1
set boxwidth 0.8
set xrange [-0.7:14.7]
set yrange [0:]
set xtics 1
plot data using 1:2 with boxes lc rgb "#7da7d9" title "observed", \
     data using 1:3 with linespoints pt 7 lc rgb "#c0392b" title "expected"
