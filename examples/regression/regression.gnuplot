# examples/regression/regression.gnuplot - residuals and digits: gnuplot -e "data='plot.dat'; picture='x.svg'" ...
height = 640
load "examples/style.gnuplot"
set multiplot
set lmargin 14
set size 1,0.46
set origin 0,0.54
set title "What the regression leaves unexplained"
set xlabel "year"
set ylabel "thousand employed"
set xrange [1946.3:1962.7]
set xtics 1948,2
set yrange [-600:600]
set ytics 300
set style fill solid 0.6 noborder
set boxwidth 0.7
set xzeroaxis lt -1
plot data index 0 using 1:2 with boxes lc rgb blue
set size 1,0.52
set origin 0,0
unset xzeroaxis
set title "Right digits of the coefficients"
set xlabel "decimal digits"
unset ylabel
set xrange [9:15.5]
set xtics 1
set yrange [6.5:-0.5]
set key tmargin center horizontal
set grid y lc rgb "#cccccc"
plot data index 1 using 2:0:ytic(1) with points pt 6 ps 1 lw 2 lc rgb orange title "plain solution", \
     data index 1 using 3:0 with points pt 7 ps 1 lc rgb blue title "refined solution"
unset multiplot
