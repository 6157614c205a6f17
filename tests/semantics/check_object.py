"""check_object.py BUILD OBJECT LIBRARY_OBJECT...: no fused, packed or x87 arithmetic in an object of scalar expressions,
and the options behind that on the command line of every object of the library."""

import re
import subprocess
import sys

from compile_commands import commands_of

PACKED = re.compile(r"v?(add|sub|mul|div)p[sd]|vfn?m|f(add|mul|sub|ld|st)|cvtps2pd")
NEEDED = {"-ffp-contract=off", "-fno-fast-math"}
BASELINE = {"-mno-fma", "-mno-avx"}
NO_VECTORS = ({"-fno-tree-vectorize", "-fno-tree-slp-vectorize"}, {"-fno-vectorize", "-fno-slp-vectorize"})
HARMFUL = re.compile(r"-(ffast-math|Ofast|funsafe-\S+|fassociative-math|freciprocal-math|ffinite-math-only|march=\S+|"
                     r"fno-signed-zeros|mfma|mavx\S*|mfpmath=387|ffp-contract=(fast|on))$")


def main():
    build, target, *objects = sys.argv[1:]
    code = subprocess.run(["objdump", "-d", "--no-show-raw-insn", target], check=True, capture_output=True, text=True)
    faults = [line.strip() for line in code.stdout.splitlines()
              if ":\t" in line and PACKED.match(line.partition(":\t")[2])]
    library = commands_of(build, objects)
    for command in library:
        options = set(command.words)
        # Objects named "left" are of the default library's code at every level.
        level = re.match(r"levels/(x86-64-v\d)/(?!.*_left_)", str(command.object.relative_to(build)))
        registers = {f"-march={level[1]}"} if level else BASELINE
        if not NEEDED | registers <= options or not any(n <= options for n in NO_VECTORS):
            faults.append(f"{command.source}: compiled without the semantics of the library")
        faults += [f"{command.source}: {o}" for o in command.words if HARMFUL.match(o) and o not in registers]
    print(*faults, f"{len(library)} objects of the library, {len(faults)} faults", sep="\n")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
