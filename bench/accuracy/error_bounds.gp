# Bound, prediction and measurement by length, a panel for each family and sample type:
#   gnuplot -c error_bounds.gp DATA PICTURE.svg
panels = system("cut -d'\"' -f2 '" . ARG1 . "' | uniq | tr ' ' '_'")
rows = (words(panels) + 1) / 2
set terminal svg size 1200, 300 * rows + 40 font "sans-serif,13" background "white"
set output ARG2
set multiplot layout rows, 2
set xrange [1:65]
set xtics 8
set logscale y 2
set yrange [0.25:64]
set grid
set key outside top center horizontal samplen 2
do for [panel in panels] {
  name = system("echo '" . panel . "' | tr '_' ' '")
  set title name . ": units of u norm2(T) norm2(x)"
  plot ARG1 using 2:(strcol(1) eq name ? $3 : NaN) with lines lw 2 lc rgb "#b2182b" title "bound", \
       "" using 2:(strcol(1) eq name ? $6 : NaN) with points pt 7 ps 0.4 lc rgb "#ff7f00" title "worst found", \
       "" using 2:(strcol(1) eq name ? $4 : NaN) with lines lw 2 lc rgb "#a0a0a0" title "predicted rms", \
       "" using 2:(strcol(1) eq name ? $5 : NaN) with points pt 7 ps 0.4 lc rgb "#1f4e9c" title "measured rms"
}
unset multiplot
