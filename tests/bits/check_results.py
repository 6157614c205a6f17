"""check_results.py DIGEST RESULTS: the results of every transform of fixed length are those that RESULTS states, a line
for each family. A change that means to alter bits renews the file: check_results.py DIGEST RESULTS --renew."""

import re
import subprocess
import sys
from pathlib import Path

# The general entries, which reach every length. Plans hold sines and cosines of the C library at hand; a batch is
# compared with single calls elsewhere.
OF_A_LENGTH = re.compile(r"_\d+_(32|64)fc? ")
LEFT_OUT = ("tfmgDCT4", "tfmb")


def main():
    program, stated, *options = sys.argv[1:]
    digest = subprocess.run([program], check=True, capture_output=True, text=True).stdout
    lines = [l for l in digest.splitlines() if not OF_A_LENGTH.search(l) and not l.startswith(LEFT_OUT)]
    if options == ["--renew"]:
        Path(stated).write_text("\n".join(lines) + "\n", encoding="utf-8")
        return 0
    expected = Path(stated).read_text(encoding="utf-8").splitlines()
    different = sorted({line.split()[0] for line in set(lines) ^ set(expected)})
    print(f"{len(lines)} families, {'other bits: ' + ' '.join(different) if different else 'the stated bits'}")
    return 1 if different or not lines else 0


if __name__ == "__main__":
    sys.exit(main())
