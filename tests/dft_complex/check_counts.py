"""check_counts.py GENERATOR TABLE: compares the operation counts of all complex kernels with those of their plans, worked
out by hand and by independent models. A plan that loses a shared value or a free rotation shows here first."""

import csv
import subprocess
import sys


def main(generator, table):
    lines = subprocess.run([generator, "--counts"], check=True, capture_output=True, text=True).stdout.splitlines()
    counts = {fields[0]: fields[1:] for fields in csv.reader(lines)}
    faults = 0
    with open(table, encoding="ascii") as rows:
        for row in csv.DictReader(rows):
            for direction in ("Fwd", "Inv"):
                for bits, columns in (("32", ("multiplications32", "additions32")),
                                      ("64", ("multiplications64", "additions64", "rotations64"))):
                    name = f"DFT{direction}_CToC_{row['length']}_{bits}fc"
                    expected = [row[column] for column in columns]
                    actual = counts[name][:2] + counts[name][3:] if bits == "64" else counts[name][:2]
                    if actual != expected:
                        print(f"{name}: {actual} instead of {expected}")
                        faults += 1
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
