"""check_bits.py DIGEST FOLDER: the digest of the library in a folder is that of the default one. Exit status 77, as of the
digest itself, where the processor lacks the level of that library."""

import os
import subprocess
import sys

CANNOT_RUN = 77


def main():
    digest, folder = sys.argv[1:]
    expected = subprocess.run([digest], check=True, stdout=subprocess.PIPE, text=True).stdout
    actual = subprocess.run([digest], stdout=subprocess.PIPE, text=True, env={**os.environ, "LD_LIBRARY_PATH": folder})
    if actual.returncode == CANNOT_RUN:
        return CANNOT_RUN
    actual.check_returncode()
    different = sorted({line.split()[0] for line in set(expected.splitlines()) ^ set(actual.stdout.splitlines())})
    print(f"{len(expected.splitlines())} routines, {len(different)} with different bits: {' '.join(different[:20])}")
    return 1 if different else 0


if __name__ == "__main__":
    sys.exit(main())
