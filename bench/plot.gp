# SPDX-License-Identifier: Apache-2.0
# Draws the ratios of loading, a group of bars for each file: gnuplot -e "folder='build/bench'" bench/plot.gp
set terminal svg size 960,420 font "sans-serif,11" background "white" noenhanced
set output folder . "/performance.svg"
set datafile separator "\t"
set title "Time of loading and releasing a file, as a ratio to a peer's (below 1: the library is faster)"
set style data histograms
set style histogram clustered gap 1
set style fill solid 0.8 noborder
set xtics rotate by -35 scale 0
set yrange [0:*]
set grid ytics
set key outside below horizontal
set rmargin 8
plot for [column=2:5] folder . "/load.dat" using column:xtic(1) title columnheader, \
    1.05 with lines linecolor "black" dashtype 2 title "wanted against the event loop, mean"
