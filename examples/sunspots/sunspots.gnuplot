# examples/sunspots/sunspots.gnuplot - spectrum and smoothed record: gnuplot -e "data='plot.dat'; picture='x.svg'" ...
set terminal svg size 720,720 font "sans,13" background "white"
set output picture
set multiplot layout 2,1
set title "Spectrum of the yearly sunspot numbers, 1700 to 1979"
set xlabel "period in years"
set ylabel "power"
set logscale x
set xrange [4:150]
set xtics (5, 8, 11, 20, 50, 100)
set label 1 "eleven years" at 11.9, graph 0.93 left
set arrow 1 from 11, graph 0 to 11, graph 1 nohead dt 2 lc rgb "#c0392b"
plot data index 0 using 1:2 with lines lw 1.5 lc rgb "#2c5f94" notitle
unset logscale x
unset label 1
unset arrow 1
set title "Numbers, and their mean over one cycle (a convolution)"
set xlabel "year"
set ylabel "sunspots"
set xrange [1700:1980]
set xtics auto
plot data index 1 using 1:2 with lines lc rgb "#7da7d9" title "yearly", \
     data index 1 using 1:3 with lines lw 2 lc rgb "#c0392b" title "eleven years"
unset multiplot
