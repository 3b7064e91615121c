# examples/style.gnuplot - what all pictures of the demo have in common: colours that differ for the colour-blind, too
# (M. Okabe, K. Ito, Color universal design, 2008), and big letters, because a page shows them small
blue = "#0072b2"; orange = "#d55e00"; green = "#009e73"; yellow = "#c98a00"; sky = "#56b4e9"; purple = "#b0558f"
grey = "#888888"
if (!exists("height")) height = 400
set terminal svg size 640,height font "sans-serif,15" background "white"
set output picture
set border 3 lc rgb "black"
set tics nomirror out
set key noautotitle samplen 2
