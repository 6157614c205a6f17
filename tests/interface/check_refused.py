"""Case 0 of refused.cpp compiles; every other is refused with the word in the message that stands beside it.

usage: check_refused.py COMPILER SOURCE INCLUDE"""

import concurrent.futures
import pathlib
import re
import subprocess
import sys

compiler, source, include = sys.argv[1:]


def compile_case(number):
    return subprocess.run([compiler, "-std=c++20", "-fsyntax-only", "-Werror", f"-DCASE={number}", f"-I{include}", source],
                          capture_output=True, text=True)


def fault(case):
    number, word = case
    outcome = compile_case(number)
    if outcome.returncode == 0:
        return f"case {number} compiles"
    if not re.search(rf"\b{word}\b", outcome.stderr):
        return f"case {number}: no word of {word}: {outcome.stderr}"
    return None


def main():
    accepted = compile_case(0)
    faults = [accepted.stderr] if accepted.returncode else []
    cases = re.findall(r"CASE == (\d+) +// (\w+)", pathlib.Path(source).read_text())
    with concurrent.futures.ThreadPoolExecutor(2) as pool:
        faults += filter(None, pool.map(fault, cases))
    print("\n".join(faults) or f"{len(cases)} wrong calls are refused")
    sys.exit(bool(faults))


main()
