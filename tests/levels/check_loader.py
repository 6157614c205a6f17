"""check_loader.py PROGRAM FOLDER LEVEL...: the dynamic loader takes the library of the highest level that the processor
has and that its mask leaves, the default library where there is none, and the one in a folder that the user names."""

import os
import re
import subprocess
import sys
from pathlib import Path

LOADER = "/lib64/ld-linux-x86-64.so.2"


def output(*command, **environment):
    environment = {k: v for k, v in os.environ.items() if k not in ("LD_LIBRARY_PATH", "LD_PRELOAD")} | environment
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True, env=environment).stdout


def main():
    program, folder, *built = sys.argv[1:]
    supported = re.findall(r"^\s+(\S+) \(supported, searched\)", output(LOADER, "--help"), re.M)  # highest first
    usable = [level for level in supported if level in built]
    for level in set(built) - set(usable):
        print(f"this processor or its loader has no {level}")
    default = Path(folder)
    folders = {level: default / "glibc-hwcaps" / level for level in built}
    expectations = [(folders[usable[0]] if usable else default, [program], {})]
    expectations += [(folders[level], [LOADER, "--glibc-hwcaps-mask", level, program], {}) for level in usable]
    expectations += [(default, [LOADER, "--glibc-hwcaps-mask", "none", program], {})]
    # A folder that is named and has no levels below is what pins a library.
    expectations += [(f, [program], {"LD_LIBRARY_PATH": str(f)}) for f in (default / "default", *folders.values())]
    faults = []
    for expected, command, environment in expectations:
        actual = Path(output(*command, **environment).strip()).parent
        print(*command[1:-1], *environment.values(), "->", actual)
        if actual.resolve() != expected.resolve():
            faults.append(f"expected the library in {expected}")
    print(*faults, f"{len(expectations)} cases, {len(faults)} faults", sep="\n")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
