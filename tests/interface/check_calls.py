"""The functions of calls.cpp compile to what their names say.

usage: check_calls.py OBJECT"""

import pathlib
import re
import subprocess
import sys

SOURCE = pathlib.Path(__file__).with_name("calls.cpp")
ARGUMENT = re.compile(r"(mov|movq|movl|movabs|lea|leaq|xor|xorl|endbr64|nop\w*|data16|cs)$")


def functions(listing):
    """Instructions by function: (mnemonic, operands and relocation)."""
    found = {}
    for line in listing.splitlines():
        if heading := re.match(r"[0-9a-f]+ <([\w.]+)>:$", line):
            found[name := heading[1]] = []
        elif relocation := re.match(r"\s+[0-9a-f]+: R_X86_64_\w+\s+(\S+)", line):
            mnemonic, operands = found[name][-1]
            found[name][-1] = mnemonic, operands + " " + relocation[1]
        elif instruction := re.match(r"\s+[0-9a-f]+:\s+(\w+)\s*(.*)", line):
            found[name].append((instruction[1], instruction[2]))
    return found


def faults_of(name, code, entry):
    branches = [(m, o) for m, o in code if re.match(r"j|call|ret", m)]
    targets = [o for m, o in branches if re.search(rf"\b{entry}\b", o)]
    if len(targets) != 1:
        yield f"{name} does not call {entry} once"
    if name.startswith("bare"):
        work = [f"{m} {o}" for m, o in code if not ARGUMENT.match(m) and not m.startswith("jmp")]
        if work or [m for m, _ in branches] not in (["jmp"], ["jmpq"]):
            yield f"{name} is not a bare jump: {code}"
    else:
        tests = sum(bool(re.match(r"test|cmp", m)) for m, _ in code)
        conditional = sum(bool(re.match(r"j(?!mp)", m)) for m, _ in branches)
        if tests != 1 or conditional != 1:
            yield f"{name} has {tests} tests and {conditional} conditional jumps, not one of each"


def main():
    listing = subprocess.run(["objdump", "-dr", "--no-show-raw-insn", *sys.argv[1:]], check=True, capture_output=True,
                             text=True).stdout
    code = functions(listing)
    expected = re.findall(r"\b((?:bare|checked)\w+)\([^{]*\{[^}]*// (\w+)", SOURCE.read_text())
    if not expected:
        sys.exit("no calls")
    faults = [fault for name, entry in expected for fault in faults_of(name, code[name], entry)]
    print("\n".join(faults) or f"{len(expected)} functions are what they should be")
    sys.exit(bool(faults))


main()
