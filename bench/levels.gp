# gnuplot -e "table='bench.csv'; picture='docs/levels-cfwd.svg'; family='cfwd'; routine='tfmgDFTFwd_CToC'" levels.gp:
# time of a call by length at each level, and that of the fastest peer.
set terminal svg size 1000,400 font "sans-serif,11" background "white"
set output picture
set datafile separator ","
set logscale y
set xlabel family eq "wht" ? "order" : "length"
if (family eq "dct4") { set logscale x 2 }
set ylabel "ns a call"
set key top left
set grid
set multiplot layout 1,2

rows(type, level) = sprintf("< grep '^%s,%s,.*,%s,%s,' %s", family, type, routine, level, table)
do for [type in "f32 f64"] {
  set title sprintf("%s, %s-bit", routine, type[2:3]) noenhanced
  plot rows(type, "default") using 3:9 with lines lc "grey" title "fastest peer", \
       "" using 3:6 with lines lc "#cc3311" title "default", \
       rows(type, "x86-64-v3") using 3:6 with lines lc "#ee9900" title "x86-64-v3", \
       rows(type, "x86-64-v4") using 3:6 with lines lc "#0077bb" title "x86-64-v4"
}
