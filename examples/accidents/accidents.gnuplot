# examples/accidents/accidents.gnuplot - counts and laws: gnuplot -e "data='plot.dat'; picture='accidents.svg'" ...
set terminal svg size 720,480 font "sans,13" background "white"
set output picture
set title "Accidents of 647 munition workers in five weeks"
set xlabel "accidents"
set ylabel "workers"
set logscale y
set yrange [0.5:1000]
set style fill solid 0.5
set boxwidth 0.7
plot data using 1:2 with boxes lc rgb "#2c6fbb" title "observed", \
     data using 1:3 with linespoints lw 2 pt 7 lc rgb "#c0392b" title "negative binomial law", \
     data using 1:4 with linespoints lw 2 pt 5 lc rgb "black" title "Poisson law"
