"""check_objects.py LIBRARY OBJECTS...: no fused arithmetic in the library of batches, and no function that a linker could
take for two widths.

OBJECTS are lists of objects, one argument a width, joined by commas. Each width has instructions of its own, so a function
that two lists define, as an inline function does whose copy remains, would run on processors without them."""

import re
import subprocess
import sys

FUSED = re.compile(r"\tvfn?m(add|sub)")


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def defined(objects):
    lines = output("nm", "--defined-only", "--extern-only", *objects).splitlines()
    return {line.split()[2] for line in lines if len(line.split()) == 3}


def main():
    library, *widths = sys.argv[1:]
    symbols = [defined(objects.split(",")) for objects in widths]
    faults = [f"defined at two widths: {name}" for i, names in enumerate(symbols) for others in symbols[:i]
              for name in sorted(names & others)[:5]]
    code = output("objdump", "-d", "--no-show-raw-insn", library)
    faults += [f"fused: {line.strip()}" for line in code.splitlines() if FUSED.search(line)][:5]
    for register in "ymm", "zmm":
        if register not in code:
            faults.append(f"no {register} registers")
    print(*faults, f"{sum(map(len, symbols))} functions of {len(widths)} widths, {len(faults)} faults", sep="\n")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
