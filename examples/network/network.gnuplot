# examples/network/network.gnuplot - the network as an image: gnuplot -e "data='plot.dat'; picture='x.svg'" ...
height = 640
load "examples/style.gnuplot"
set title "Friendships in the club, members in the order of the eigenvector"
set xrange [0.3:34.7]
set yrange [34.7:0.3]
set size square
set border 15
set xtics rotate by 90 right font ",10" scale 0.4
set ytics font ",10" scale 0.4
set xlabel "member"
set ylabel "member"
set key tmargin center horizontal samplen 0.5
# The first block names the places; its own points lie outside.
plot data index 0 using 1:(-9):xtic(2) with points, data index 0 using (-9):1:ytic(2) with points, \
     data index 1 using 1:($3 == 1 ? $2 : NaN) with points pt 5 ps 0.85 lc rgb blue title "group of member 1", \
     data index 1 using 1:($3 == 2 ? $2 : NaN) with points pt 7 ps 0.85 lc rgb orange title "group of member 34", \
     data index 1 using 1:($3 == 0 ? $2 : NaN) with points pt 9 ps 0.95 lc rgb "black" title "between them"
