"""The names of the public header, the rule of naming, the dynamic symbols and the registry of the tests must agree.

A family is either complete or absent, so the rule needs no list of what exists so far."""

import argparse
import re
import subprocess
import sys
from pathlib import Path

FORMATS = {"DFTFwd": ["CToC", "RToCCS", "RToPack", "RToPerm"], "DFTInv": ["CToC", "CCSToR", "PackToR", "PermToR"]}
DCT4 = ["GetSize", "Init", "InitAlloc", "Free", ""]
CORE = {"tfmMalloc", "tfmFree"}
NEEDED = {"libtfmcore.so.6", "libm.so.6", "libc.so.6"}
NEEDED_BY_BATCH = {"libtfmgen.so.6", "libm.so.6", "libc.so.6"}


STEMS = [(f"{direction}_{form}", "fc" if form == "CToC" else "f")
         for direction, forms in FORMATS.items() for form in forms] + [("Hartley", "f")]
BATCH = {f"tfmb{stem}_{bits}{kind}" for bits in (32, 64) for stem, kind in STEMS}


def groups():
    """Sets of names that exist together."""
    for bits in 32, 64:
        for stem, kind in STEMS:
            yield {f"tfmg{stem}_{n}_{bits}{kind}" for n in range(2, 65)} | {f"tfmg{stem}_{bits}{kind}"}
        yield {f"tfmgWHT_{order}_{bits}f" for order in range(1, 14)} | {f"tfmgWHT_{bits}f", f"tfmgWHTGetBufferSize_{bits}f"}
        yield {f"tfmgDCT4{operation}_{bits}f" for operation in DCT4}
    yield {"tfmgenGetLibVersion"}


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def exported(library):
    return {line.split()[-1].split("@")[0] for line in output("nm", "-D", "--defined-only", library).splitlines()}


def dynamic(library, tag):
    return set(re.findall(rf"\({tag}\).*\[(.*)\]", output("readelf", "-dW", library)))


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    for option in "cc", "header", "library", "core", "batch-header", "batch", "digest":
        parser.add_argument("--" + option, required=True)
    arguments = parser.parse_args()
    faults = []

    def same(what, expected, actual):
        for word, names in ("lacks", expected - actual), ("has besides", actual - expected):
            if names:
                faults.append(f"{what} {word} {len(names)}: {' '.join(sorted(names)[:5])}")

    every_group = list(groups())
    header = output(arguments.cc, "-E", "-P", arguments.header)
    declared = set(re.findall(r"\b(tfm\w+)\s*\(", header))
    ruled = set().union(*(group for group in every_group if group & declared))
    same("header against the rule", ruled, declared)
    same("library against the header", declared, exported(arguments.library))
    same("core library", CORE, exported(arguments.core))
    batch = output(arguments.cc, "-E", "-P", f"-I{Path(arguments.header).parent}", arguments.batch_header)
    same("batch header", BATCH, set(re.findall(r"\b(tfmb\w+)\s*\(", batch)))
    same("batch library", BATCH, exported(arguments.batch))
    registered = {line.split()[0] for line in output(arguments.digest).splitlines()}
    same("digest against the headers", (declared | BATCH) - {"tfmgenGetLibVersion"}, registered)

    assert len(set().union(*every_group)) == 1193
    same("soname of the library", {"libtfmgen.so.6"}, dynamic(arguments.library, "SONAME"))
    same("soname of the core library", {"libtfmcore.so.6"}, dynamic(arguments.core, "SONAME"))
    same("soname of the batch library", {"libtfmbatch.so.6"}, dynamic(arguments.batch, "SONAME"))
    same("libraries needed", set(), dynamic(arguments.library, "NEEDED") - NEEDED)
    same("libraries needed by batches", set(), dynamic(arguments.batch, "NEEDED") - NEEDED_BY_BATCH)
    print(*faults, f"{len(declared)} of 1193 names, {len(faults)} faults", sep="\n")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
