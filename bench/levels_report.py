"""levels_report.py TABLE.csv...: tables of bench_dft, bench_wht and bench_dct4, in Markdown.

By family, type and level: geometric means of time against the default library and the fastest peer of the run, back to
back and with dependent calls, over the lengths 25 to 64 (all orders and lengths of wht and dct4); then every routine
that is more than 3 % slower at a level than in the default library in all of the tables, which are runs of one kind."""

import csv
import math
import sys
from collections import defaultdict

TOLERANCE = 1.03
SHORT = 25  # lengths below are left out of the means of those families that have every length


def mean(values):
    return math.exp(sum(map(math.log, values)) / len(values)) if values else float("nan")


def read(path):
    """Figures by (family, type, routine, n) and level."""
    cases = defaultdict(dict)
    with open(path) as table:
        for row in csv.DictReader(table):
            figures = {name: float(row[name]) for name in ("ns", "dependent_ns", "best_peer_ns", "mark_ns")}
            cases[row["family"], row["type"], row["routine"], int(row["n"])][row["level"]] = figures
    return cases


def print_means(cases):
    groups = defaultdict(list)
    for (family, sample, _, n), levels in cases.items():
        if n >= SHORT or family in ("wht", "dct4"):
            for level, figures in levels.items():
                groups[family, sample, level].append((n, figures, levels["default"]))
    print("| Family | Type | Level | To default | Dependent calls | To fastest peer (faster of all) | Worst to peer (n) | "
          "To mark |")
    print("|---|---|---|---|---|---|---|---|")
    for (family, sample, level), rows in groups.items():
        to_default = mean([figures["ns"] / base["ns"] for _, figures, base in rows])
        dependent = mean([figures["dependent_ns"] / base["dependent_ns"] for _, figures, base in rows])
        to_peer = [figures["ns"] / figures["best_peer_ns"] for _, figures, _ in rows]
        to_mark = mean([figures["ns"] / figures["mark_ns"] for _, figures, _ in rows if figures["mark_ns"] < math.inf])
        worst, n = max((ratio, row[0]) for ratio, row in zip(to_peer, rows))
        print(f"| {family} | {sample} | {level} | {to_default:.2f} | {dependent:.2f} | {mean(to_peer):.2f} "
              f"({sum(r < 1 for r in to_peer)} of {len(to_peer)}) | {worst:.2f} ({n}) | {to_mark:.2f} |")


def print_slower(tables):
    """A routine counts when it is slower in every table: the least of the ratios."""
    print("\n| Family | Type | Level | Back to back | Dependent calls |\n|---|---|---|---|---|")
    groups = defaultdict(lambda: defaultdict(list))
    for key in tables[0]:
        family, sample, routine, n = key
        for level in tables[0][key]:
            for name in "ns", "dependent_ns":
                ratio = min(t[key][level][name] / t[key]["default"][name] for t in tables)
                if ratio > TOLERANCE:
                    groups[family, sample, level][name].append((n, routine, ratio))
    for (family, sample, level), names in groups.items():
        cells = []
        for name in "ns", "dependent_ns":
            by_length = defaultdict(list)
            for n, _, ratio in names[name]:
                by_length[n].append(ratio)
            cells.append(", ".join(f"{n} ({max(r):.2f})" for n, r in sorted(by_length.items())) or "-")
        print(f"| {family} | {sample} | {level} | {cells[0]} | {cells[1]} |")


def main():
    tables = [read(path) for path in sys.argv[1:]]
    print_means(tables[0])
    print_slower(tables)


if __name__ == "__main__":
    main()
