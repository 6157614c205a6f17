"""report.py TABLE.csv...: summary of tables of bench_batch. Of several runs of a case the least times count.

Geometric means over lengths by family, layout and count: how many times faster than single calls each width is, and its
time against FFTW's faster plan and against the mark, with the worst length. Lengths below 8 are kept apart in the
comparison with others."""

import csv
import math
import sys
from collections import defaultdict

WIDTHS = "batch-128", "batch-256", "batch-512"


def mean(values):
    return math.exp(sum(map(math.log, values)) / len(values)) if values else float("nan")


def worst(ratios):
    length, ratio = max(ratios, key=lambda r: r[1])
    return f"{ratio:.2f} ({length})"


def main():
    cases = {}
    for path in sys.argv[1:]:
        with open(path) as table:
            for row in csv.DictReader(table):
                key = row["family"], row["layout"], int(row["count"]), int(row["n"])
                times = {name: float(value) for name, value in row.items() if value and name not in ("family", "layout")}
                cases[key] = {name: min(value, cases.get(key, times)[name]) for name, value in times.items()}
    groups = defaultdict(list)
    for (family, layout, count, _), case in cases.items():
        groups[family, layout, count].append(case)

    print("family layout      count width      x single (least)   to FFTW (worst)      to mark (worst)      "
          "2..7: to FFTW (worst), to mark (worst)")
    for (family, layout, count), cases in sorted(groups.items()):
        for width in (w for w in WIDTHS if w in cases[0]):
            gains = [(c["n"], c["single"] / c[width]) for c in cases]
            least = min(gains, key=lambda g: g[1])
            text = f"{family}   {layout:12}{count:5} {width}  {mean([g for _, g in gains]):5.2f} {least[1]:5.2f} ({least[0]:.0f})"
            for lengths in range(8, 65), range(2, 8):
                for other in "fftw", "mark":
                    ratios = [(int(c["n"]), c[width] / (c[other] if other == "mark" else
                                                       min(v for k, v in c.items() if k.startswith("fftw"))))
                              for c in cases if c["n"] in lengths and (other == "fftw" or "mark" in c)]
                    text += f"   {mean([r for _, r in ratios]):5.2f} {worst(ratios):12}" if ratios else " " * 21
            print(text)


if __name__ == "__main__":
    main()
