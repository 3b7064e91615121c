# examples/splines/splines.gnuplot - gnuplot -e "data='plot.dat'; picture='splines.svg'" ...
height = 640
load "examples/style.gnuplot"
set multiplot
set lmargin 10
set xrange [0:360]
set xtics 60
set size 1,0.42
set origin 0,0.58
set title "Declination of Pallas"
set ylabel "minutes of arc" offset 1,0
set yrange [-300:1800]
set ytics 600
set key bottom right
set format x ""
plot data using 1:2 with lines lw 2 lc rgb grey title "Gauss's trigonometric series", \
     "examples/data/pallas.txt" using 1:2 with points pt 7 ps 0.6 lc rgb "black" title "places"
set size 1,0.58
set origin 0,0
set title "Four splines less that series"
set format x "%g"
set xlabel "right ascension, degrees"
set yrange [*:*]
set ytics auto
set key tmargin center horizontal
set xzeroaxis lt -1
names = "'not-a-knot' natural Akima periodic"
array colours[4] = [blue, orange, green, purple]
array dashes[4] = [1, 2, 4, 1]
array widths[4] = [1.5, 2, 1.5, 3]
plot for [k=1:4] data using 1:(column(2 + k)) with lines lw widths[k] dt dashes[k] lc rgb colours[k] \
         title word(names, k)
unset multiplot
