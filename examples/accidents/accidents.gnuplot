# examples/accidents/accidents.gnuplot - counts and laws: gnuplot -e "data='plot.dat'; picture='accidents.svg'" ...
load "examples/style.gnuplot"
set title "Accidents of 647 munition workers in five weeks"
set xlabel "accidents of a worker"
set ylabel "workers"
set logscale y
set xrange [-0.6:5.6]
set yrange [0.05:1000]
set xtics ("0" 0, "1" 1, "2" 2, "3" 3, "4" 4, "5 or more" 5)
set style fill solid 0.45 noborder
set boxwidth 0.7
plot data using 1:2 with boxes lc rgb sky title "observed", \
     data using 1:3 with linespoints lw 2 pt 7 ps 0.7 lc rgb blue title "negative binomial law", \
     data using 1:4 with linespoints lw 2 pt 5 ps 0.7 dt 2 lc rgb orange title "Poisson law"
