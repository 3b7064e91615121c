# examples/calendar/calendar.gnuplot - the events by year: gnuplot -e "data='plot.dat'; picture='calendar.svg'" ...
height = 560
load "examples/style.gnuplot"
set title "Dated events"
set xlabel "year"
set xrange [1040:2030]
set yrange [19.2:-1.4]
set border 1
set xtics 100
set xtics ("1100" 1100, "1300" 1300, "1500" 1500, "1700" 1700, "1900" 1900)
unset ytics
set arrow 1 from 1582.79,-0.6 to 1582.79,5.4 nohead dt 2 lc rgb orange
set label 1 "Julian calendar" at 1572,-0.9 right tc rgb orange
set label 2 "Gregorian" at 1594,-0.9 left tc rgb orange
# Words stand where there is room: on the right of early events, on the left of late ones.
plot data using 1:0 with points pt 7 ps 0.7 lc rgb blue, \
     data using ($1 < 1400 ? $1 : NaN):0:3 with labels left offset 1,0, \
     data using ($1 >= 1400 ? $1 : NaN):0:3 with labels right offset -1,0
