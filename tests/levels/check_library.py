"""check_library.py LIBRARY DEFAULT: the library of a level as it was linked. It exports what the default one exports,
asks for the same libraries and finds them from its place. It uses the registers that its level brings, and leaves their
upper halves clear: instructions of the baseline are slow behind others. Routines that are of the baseline are the same
instructions as in the default library."""

import re
import subprocess
import sys

from binary import Binary

WIDE = re.compile(r"[yz]mm\d")  # a register wider than 128 bits
KERNEL = re.compile(r"_\d+_(32|64)fc?$")
PLACES = re.compile(r"\[rip[^]]*\]|\b[0-9a-f]+ <.*>|#.*")  # of constants and targets


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def exports(library):
    return {tuple(line.split()[1:]) for line in output("nm", "-D", "--defined-only", library).splitlines()}


def dynamic(library, tag):
    return re.findall(rf"\({tag}\).*\[(.*)\]", output("readelf", "-dW", library))


def dirty_exits(binary, entry):
    """Returns and calls from `entry` on with upper halves in use."""
    exits, seen, ways = [], set(), [(entry, False)]
    while ways:
        address, dirty = ways.pop()
        while (address, dirty) not in seen and address in binary.code:
            seen.add((address, dirty))
            instruction = binary.code[address]
            dirty = instruction.mnemonic != "vzeroupper" and (dirty or bool(WIDE.search(instruction.text)))
            if dirty and instruction.mnemonic in ("ret", "call"):
                exits.append(f"upper halves in use: {instruction}")
            if instruction.target is not None:
                ways.append((instruction.target, dirty))
            if instruction.mnemonic in ("ret", "jmp") or instruction.next is None:
                break
            address = instruction.next.address
    return exits


def routine(binary, entry):
    """The instructions of a routine without the places of what they refer to; none where AVX is among them."""
    instruction, lines = binary.code[entry], []
    while instruction:
        if instruction.mnemonic.startswith("v"):
            return []
        if instruction.mnemonic not in ("nop", "int3", "cs", "data16", "xchg"):  # padding
            lines.append(f"{instruction.mnemonic} {PLACES.sub('', instruction.text)}")
        instruction = instruction.next
    return lines


def main():
    library, default = sys.argv[1:]
    faults = [f"exports: {' '.join(name)}" for name in sorted(exports(library) ^ exports(default))[:20]]
    for tag in "SONAME", "NEEDED":
        if dynamic(library, tag) != dynamic(default, tag):
            faults.append(f"{tag}: {dynamic(library, tag)}")
    if dynamic(library, "RUNPATH") != ["$ORIGIN/../.."] or dynamic(library, "RPATH"):
        faults.append(f"RUNPATH: {dynamic(library, 'RUNPATH')}")
    code, default_code = Binary(library), Binary(default)
    widest = "zmm" if "x86-64-v4" in library else "ymm"
    if not any(widest in instruction.text for instruction in code.code.values()):
        faults.append(f"no {widest} register")
    left = 0
    for name, entry in code.exports.items():
        if entry in code.code:
            faults += dirty_exits(code, entry)
            lines = routine(code, entry) if KERNEL.search(name) else []
            left += bool(lines)
            if lines and lines != routine(default_code, default_code.exports[name]):
                faults.append(f"{name}: of the baseline, but not as in the default library")
    if left == 0:
        faults.append("no routine is of the baseline")
    print(*faults[:50], f"{len(code.exports)} exports, {left} as in the default library, {len(faults)} faults", sep="\n")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
