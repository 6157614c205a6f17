"""check_library.py LIBRARY DEFAULT: the library of a level as it was linked. It exports what the default one exports,
asks for the same libraries and finds them from its place. It uses the registers that its level brings."""

import re
import subprocess
import sys


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def exports(library):
    return {tuple(line.split()[1:]) for line in output("nm", "-D", "--defined-only", library).splitlines()}


def dynamic(library, tag):
    return re.findall(rf"\({tag}\).*\[(.*)\]", output("readelf", "-dW", library))


def main():
    library, default = sys.argv[1:]
    faults = [f"exports: {' '.join(name)}" for name in sorted(exports(library) ^ exports(default))[:20]]
    for tag in "SONAME", "NEEDED":
        if dynamic(library, tag) != dynamic(default, tag):
            faults.append(f"{tag}: {dynamic(library, tag)}")
    if dynamic(library, "RUNPATH") != ["$ORIGIN/../.."] or dynamic(library, "RPATH"):
        faults.append(f"RUNPATH: {dynamic(library, 'RUNPATH')}")
    widest = "%zmm" if "x86-64-v4" in library else "%ymm"
    if widest not in output("objdump", "-d", "--no-show-raw-insn", library):
        faults.append(f"no {widest} register")
    print(*faults, f"{len(exports(library))} exports, {len(faults)} faults", sep="\n")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
