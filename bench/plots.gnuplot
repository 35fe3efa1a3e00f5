# Draws docs/peers.svg and docs/scaling.svg from the data that bench/plot.py prints.

set terminal svg size 760,320 font "sans-serif,13" background "white" noenhanced
set output "docs/peers.svg"
set title "One parse of 25 arguments, and the same environment calls: microseconds of processor time"
set border 0
set lmargin 24
set rmargin 6
unset xtics
set ytics scale 0
set xrange [0:*] noextend
set style fill solid
plot $peers using ($2 / 2):0:($2 / 2):(0.36):($3 == 1 ? 0x1b6ca8 : 0xb5b5b5):ytic(1) with boxxyerror lc rgb variable notitle, \
    $peers using 2:0:2 with labels left offset 0.5 notitle

reset
set terminal svg size 760,440 font "sans-serif,13" background "white" noenhanced
set output "docs/scaling.svg"
set title "Processor time of a parse or an expansion against the number of elements"
set logscale xy
set grid
set xtics ("1" 1, "10" 10, "100" 100, "1,000" 1e3, "10,000" 1e4, "100,000" 1e5, "1,000,000" 1e6)
set ytics ("1 ns" 1, "1 µs" 1e3, "1 ms" 1e6, "1 s" 1e9)
set key outside reverse Left autotitle columnheader
plot for [i = 0:5] $scaling index i using 1:2 with lines linewidth 2
