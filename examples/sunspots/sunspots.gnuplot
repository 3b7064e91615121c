# examples/sunspots/sunspots.gnuplot - spectrum and smoothed record: gnuplot -e "data='plot.dat'; picture='x.svg'" ...
height = 660
load "examples/style.gnuplot"
stats data index 0 using 1:2 nooutput
whole = sprintf("whole record: %.2f years", STATS_pos_max_y)
stats data index 0 using 1:3 nooutput
middle = sprintf("middle of the record: %.2f years", STATS_pos_max_y)
set multiplot
set lmargin 9
set rmargin 3
set size 1,0.5
set origin 0,0.5
set title "Spectrum of the yearly sunspot numbers, 1700 to 1979"
set xlabel "period, years"
set ylabel "power, thousands"
set logscale x
set xrange [4:150]
set xtics (5, 8, 11, 20, 50, 100)
set yrange [0:*]
set key top right
plot data index 0 using 1:($2/1000) with lines lw 1.5 lc rgb blue title whole, \
     data index 0 using 1:($3/1000) with lines lw 2 dt 2 lc rgb orange title middle
unset logscale x
set origin 0,0
set title "Numbers, and their mean over one cycle"
set xlabel "year"
set ylabel "sunspots"
set xrange [1700:1980]
set xtics auto
set yrange [0:240]
set key top left horizontal
plot data index 1 using 1:2 with lines lc rgb blue title "yearly", \
     data index 1 using 1:3 with lines lw 3 lc rgb orange title "mean over eleven years"
unset multiplot
