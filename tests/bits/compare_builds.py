"""Compares the results of different builds, bit for bit.

sample  compiles a fixed part of the library's sources with the other compiler, puts these routines in front of the built
        library and compares their digests. Of sources in numbered files, file 0 is the sample.
matrix  builds the whole library with g++ and clang++ at -O1, -O2 and -O3 and compares all digests."""

import argparse
import json
import os
import re
import shlex
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

LIBRARY_ONLY = ["-DTFMGEN_EXAMPLES=OFF", "-DTFMGEN_BENCH=OFF", "-DTFMGEN_WERROR=OFF"]


def run(*command, **options):
    return subprocess.run([str(c) for c in command], check=True, stdout=subprocess.PIPE, text=True, **options).stdout


def configure(source, build, compiler, *options):
    c_compiler = {"g++": "gcc", "clang++": "clang"}[compiler]
    run("cmake", "-S", source, "-B", build, "-G", "Ninja", f"-DCMAKE_CXX_COMPILER={compiler}",
        f"-DCMAKE_C_COMPILER={c_compiler}", *LIBRARY_ONLY, *options)


def differences(expected, actual):
    expected, actual = (dict(line.split() for line in text.splitlines()) for text in (expected, actual))
    return sorted(name for name in expected.keys() | actual.keys() if expected.get(name) != actual.get(name))


def report(what, different):
    print(f"{what}: {'different bits: ' + ' '.join(different[:20]) if different else 'same bits'}")
    return not different


def sample(arguments):
    work = arguments.build / "other_compiler"
    configure(arguments.source, work, arguments.compiler, "-DCMAKE_BUILD_TYPE=Release", "-DBUILD_TESTING=OFF")
    library = work / "libsample.so"

    def compile_source(entry):
        # Generated sources are those of the build under test.
        command = entry["command"].replace(str(work), str(arguments.build))
        words = shlex.split(command)
        output = work / (re.sub(r"\W", "_", os.path.relpath(entry["file"], arguments.source)) + ".o")
        words[words.index("-o") + 1] = str(output)
        run(*words, cwd=work)
        return output

    commands = json.loads((work / "compile_commands.json").read_text())
    chosen = [c for c in commands if "/src/" in c["file"] and not re.search(r"_[1-9]\d*\.cpp$", c["file"])]
    with ThreadPoolExecutor(2) as pool:
        objects = list(pool.map(compile_source, chosen))
    run(arguments.compiler, "-shared", "-Wl,-Bsymbolic", "-o", library, *objects)

    def family(name):
        return re.sub(r"_\d+_", "_", name)

    sampled = set(re.findall(r" T (tfmg\w+)", run("nm", "-D", "--defined-only", library)))
    expected = run(arguments.digest)
    names = [line.split()[0] for line in expected.splitlines()]
    missing = {family(n) for n in names} - {family(n) for n in names if n in sampled}
    if missing:
        sys.exit(f"no routine of {sorted(missing)} in the sample")
    different = differences(expected, run(arguments.digest, env={**os.environ, "LD_PRELOAD": str(library)}))
    print(f"{len(sampled & set(names))} of {len(names)} routines compiled with {arguments.compiler}")
    return report(arguments.compiler, different)


def matrix(arguments):
    digests = {}
    for compiler in "g++", "clang++":
        for level in "-O1", "-O2", "-O3":
            build = arguments.build / "matrix" / (compiler + level)
            configure(arguments.source, build, compiler, "-DCMAKE_BUILD_TYPE=None", f"-DCMAKE_CXX_FLAGS={level}")
            run("cmake", "--build", build, "--target", "digest", "-j", str(os.cpu_count()))
            digests[f"{compiler} {level}"] = run(build / "bin" / "digest")
    (first, expected), *others = digests.items()
    print(f"{len(expected.splitlines())} routines; compared with {first}:")
    return all([report(name, differences(expected, actual)) for name, actual in others])


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("mode", choices=["sample", "matrix"])
    parser.add_argument("--source", type=Path, required=True)
    parser.add_argument("--build", type=Path, required=True)
    parser.add_argument("--compiler", help="the other compiler (sample)")
    parser.add_argument("--digest", help="the digest program of the build under test (sample)")
    arguments = parser.parse_args()
    return 0 if {"sample": sample, "matrix": matrix}[arguments.mode](arguments) else 1


if __name__ == "__main__":
    sys.exit(main())
