# examples/network/network.gnuplot - the network as an image: gnuplot -e "data='plot.dat'; picture='x.svg'" ...
set terminal svg size 520,520 font "sans,13" background "white"
set output picture
set title "Friendships, members in the order of the eigenvector"
set xrange [-1:34]
set yrange [34:-1]
set size square
set tics out nomirror
set xlabel "member"
set ylabel "member"
unset key
plot data with points pt 5 ps 0.8 lc rgb "#205080"
