"""check_object.py OBJECT COMPILE_COMMANDS: no fused, packed or x87 arithmetic in an object of scalar expressions, and the
options behind that on the command line of every object of the library."""

import json
import re
import subprocess
import sys

PACKED = re.compile(r"v?(add|sub|mul|div)p[sd]|vfn?m|f(add|mul|sub|ld|st)|cvtps2pd")
NEEDED = {"-ffp-contract=off", "-fno-fast-math", "-mno-fma", "-mno-avx"}
NO_VECTORS = ({"-fno-tree-vectorize", "-fno-tree-slp-vectorize"}, {"-fno-vectorize", "-fno-slp-vectorize"})
HARMFUL = re.compile(r"-(ffast-math|Ofast|funsafe-\S+|fassociative-math|freciprocal-math|ffinite-math-only|march=\S+|"
                     r"fno-signed-zeros|mfma|mavx\S*|mfpmath=387|ffp-contract=(fast|on))$")


def main():
    target, commands = sys.argv[1:]
    code = subprocess.run(["objdump", "-d", "--no-show-raw-insn", target], check=True, capture_output=True, text=True)
    faults = [line.strip() for line in code.stdout.splitlines()
              if ":\t" in line and PACKED.match(line.partition(":\t")[2])]
    library = [c for c in json.load(open(commands)) if re.search(r"(^|/)src/.*\.cpp$", c["file"])]
    for command in library:
        options = command["command"].split()
        if not NEEDED <= set(options) or not any(n <= set(options) for n in NO_VECTORS):
            faults.append(f"{command['file']}: compiled without the semantics of the library")
        faults += [f"{command['file']}: {o}" for o in options if HARMFUL.match(o)]
    print(*faults, f"{len(library)} objects of the library, {len(faults)} faults", sep="\n")
    return 1 if faults or not library else 0


if __name__ == "__main__":
    sys.exit(main())
