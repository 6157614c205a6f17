"""error_bounds.py MEASURED.csv VECTORS REPORT.md DATA: adds the proven bounds and the predictions to the report on
accuracy, beside what was measured, and writes the data of their plot."""

import csv
import re
import sys

FAMILIES = {
    "DFTFwd_CToC": "Complex DFT, forward",
    "DFTInv_CToC": "Complex DFT, inverse",
    "DFTFwd_RTo": "Real DFT, forward",
    "DFTInv_": "Real DFT, inverse",
    "Hartley": "Hartley transform",
}
FIGURES = ("bound", "predicted", "measured", "worst")

TEXT = """
## Proven bounds and predictions

For every routine the generator proves, from the graph of its operations, a bound B of its rounding error:
norm2(computed - T x) <= B u norm2(T) norm2(x) for every x that leads to no overflow and no underflow. T is the exact
transform with its scale, between the numbers that are read and those that are stored, norm2(T) its largest singular
value, u is 2^-24 for f32 and 2^-53 for f64. It also predicts the root mean square of the error for white noise, from
the distribution of every value and what its rounding loses. `generator/error/analysis.hpp` and `noise.hpp` tell how;
`tfmgen-generator --errors` prints both.

"Measured" is the root mean square over at least {vectors} vectors of white noise of variance 1, "worst" the largest
error found, over these vectors, over sparse and periodic ones and by climbing from all of them. All figures are in units of
u norm2(T) norm2(x), so those of half spectra differ from the relative errors above, which refer to norm2(T x). The first
four columns are without a rounded scale (`TFM_NO_DIV`), the last four with the named factor, the one of 1/n and
1/sqrt(n) with the larger bound. The three formats of a half spectrum have equal figures.

![Bound, prediction and measurement by length](error-bounds.svg)

"""


def family_of(name):
    return next(title for prefix, title in FAMILIES.items() if name.startswith("tfmg" + prefix))


def parse(rows):
    """Rows by family and sample type, then by length and scale; formats of a spectrum fall together."""
    series = {}
    for row in rows:
        length, bits = map(int, re.search(r"_(\d+)_(\d+)f", row["name"]).groups())
        figures = {key: float(row[key]) for key in FIGURES} | {"scale": row["scale"]}
        pair = series.setdefault((family_of(row["name"]), f"f{bits}"), {}).setdefault(length, {})
        kind = "unscaled" if row["scale"] == "1" else "scaled"
        if pair.setdefault(kind, figures) != figures:
            raise ValueError(f"{row['name']} has other figures than the same transform in another format")
    return series


def summary(series):
    yield "| Transform | Samples | Measured / predicted | Largest bound, at | Largest ratio of bound to worst, at |"
    yield "|---|---|---|---|---|"
    for (family, samples), lengths in series.items():
        each = [(length, figures) for length, pair in lengths.items() for figures in pair.values()]
        ratios = [figures["measured"] / figures["predicted"] for _, figures in each]
        bound, at = max((figures["bound"], length) for length, figures in each)
        slack, where = max((figures["bound"] / figures["worst"], length) for length, figures in each)
        yield (f"| {family} | {samples} | {min(ratios):.3f} to {max(ratios):.3f} | {bound:.1f}, {at} "
               f"| {slack:.1f}, {where} |")


WORST = """
The largest bounds stand at the primes whose algorithm is a convolution with further convolutions inside, 47, 53 and 59
above all (with 32-bit complex samples 47 and 59 are chirps of length 96 and 128): each convolution is two transforms and a spectrum of
factors between them, and what one of them amplifies most the bound passes on to the next. The ratio of bound to worst is
largest there for the same reason: no input meets the worst of all stages at once.
"""


def table(title, lengths):
    yield f"\n### {title}\n"
    yield ("| Length | bound | predicted | measured | worst | scale | bound | predicted | measured | worst |\n"
           "|---|---:|---:|---:|---:|---|---:|---:|---:|---:|")
    for length, pair in sorted(lengths.items()):
        cells = [[f"{pair[kind][key]:.3f}" for key in FIGURES] for kind in ("unscaled", "scaled")]
        yield f"| {length} | " + " | ".join(cells[0] + [pair["scaled"]["scale"]] + cells[1]) + " |"


def main(measured, vectors, report, data):
    with open(measured, encoding="ascii") as file:
        series = parse(csv.DictReader(file))
    with open(report, "a", encoding="ascii") as file:
        file.write(TEXT.format(vectors=vectors))
        file.write("\n".join(summary(series)) + "\n" + WORST)
        for (family, samples), lengths in series.items():
            file.write("\n".join(table(f"{family}, {samples}: bounds", lengths)) + "\n")
    with open(data, "w", encoding="ascii") as file:
        for (family, samples), lengths in series.items():
            for length, pair in sorted(lengths.items()):
                figures = " ".join(str(pair["unscaled"][key]) for key in FIGURES)
                file.write(f'"{family}, {samples}" {length} {figures}\n')


if __name__ == "__main__":
    main(*sys.argv[1:])
