"""Operation counts of the generated real kernels against the reference, length by length.

The reference has the operations of a kernel on 64-bit samples: additions with subtractions and negations, and
multiplications with those by the scale, by 2 and by 0.5."""

import csv
import subprocess
import sys

FAMILIES = {"forward": "DFTFwd_RToSpectrum", "inverse": "DFTInv_SpectrumToR", "Hartley": "Hartley"}


def main():
    generator, reference = sys.argv[1:]
    lines = subprocess.run([generator, "--counts"], check=True, capture_output=True, text=True).stdout.splitlines()
    counts = {name: (int(additions), int(multiplications))
              for name, multiplications, additions, *_ in csv.reader(lines)}
    faults = []
    with open(reference, newline="") as file:
        rows = list(csv.DictReader(file))
    for row in rows:
        for family, prefix in FAMILIES.items():
            expected = int(row[f"{family} additions"]), int(row[f"{family} multiplications"])
            actual = counts.get(f"{prefix}_{row['length']}")
            if actual != expected:
                faults.append(f"{family} {row['length']}: {actual} instead of {expected}")
    print(*faults, f"{len(rows)} lengths, {len(faults)} faults", sep="\n")
    return 1 if faults or [int(row["length"]) for row in rows] != list(range(2, 65)) else 0


if __name__ == "__main__":
    sys.exit(main())
