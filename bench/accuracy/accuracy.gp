# Error by length, a panel for each family and sample type:  gnuplot -c accuracy.gp DATA PICTURE.svg
panels = system("cut -d' ' -f1 '" . ARG1 . "' | uniq")
rows = (words(panels) + 1) / 2
set terminal svg size 1200, 300 * rows + 40 font "sans-serif,13" background "white"
set output ARG2
set datafile missing "-"
set multiplot layout rows, 2
set xrange [1:65]
set xtics 8
set yrange [0:4] # only direct sums of a peer lie beyond
set ytics 1
set grid
set key outside top center horizontal samplen 2
do for [panel in panels] {
  unit = panel[strlen(panel) - 1:] eq "32" ? "2^{-24}" : "2^{-53}"
  set title panel . ": relative L2 error (rms), units of " . unit
  plot ARG1 using 2:(strcol(1) eq panel ? $6 : NaN) with points pt 7 ps 0.4 lc rgb "#ff7f00" title "av\\_tx", \
       "" using 2:(strcol(1) eq panel ? $5 : NaN) with points pt 7 ps 0.4 lc rgb "#4daf4a" title "kissfft", \
       "" using 2:(strcol(1) eq panel ? $4 : NaN) with lines lw 2 lc rgb "#a0a0a0" title "fftw", \
       "" using 2:(strcol(1) eq panel ? $3 : NaN) with lines lw 2 lc rgb "#1f4e9c" title "tfmgen"
}
unset multiplot
