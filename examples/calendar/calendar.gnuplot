# examples/calendar/calendar.gnuplot - the events on a line: gnuplot -e "data='plot.dat'; picture='calendar.svg'" ...
set terminal svg size 720,480 font "sans,11" background "white"
set output picture
set title "Events by day number"
set xlabel "thousands of days from 1 January 1900"
set xrange [-320:110]
set yrange [-1:20]
unset ytics
unset key
set arrow from -115.86,-1 to -115.86,20 nohead dt 2 lc rgb "#c0392b"
set label "15 October 1582" at -115.3,-0.3 tc rgb "#c0392b"
plot data using ($1/1000.0):0 with points pt 7 ps 0.6 lc rgb "#2c6fbb", \
     data using ($1/1000.0):0:3 with labels left offset 1,0
