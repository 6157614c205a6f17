# gnuplot -e "table='batch.csv'; picture='docs/batches.svg'" batches.gp: time of a frame by length at 64 frames.
set terminal svg size 1000,760 font "sans-serif,11" background "white"
set output picture
set datafile separator ","
set logscale xy 2
set xrange [1.8:70]
set xtics (2, 4, 8, 16, 32, 64)
set xlabel "length"
set ylabel "ns a frame"
set key top left
set grid
set multiplot layout 2,2

rows(family, layout) = sprintf("< grep '^%s,%s,64,' %s", family, layout, table)
do for [family in "cf32 rf32"] {
  do for [layout in "contiguous interleaved"] {
    set title sprintf("%s, %s frames, 64 in a batch", family eq "cf32" ? "complex 32-bit" : "real 32-bit to CCS", layout)
    plot rows(family, layout) using 4:5 with lines lc "black" title "single calls", \
         "" using 4:(column(9) < column(10) ? column(9) : column(10)) with lines lc "grey" title "FFTW, many", \
         "" using 4:8 with lines lc "#cc3311" title "batch, 128 bits", \
         "" using 4:7 with lines lc "#ee9900" title "256 bits", \
         "" using 4:6 with lines lc "#0077bb" title "512 bits"
  }
}
