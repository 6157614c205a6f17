"""Compares the results of different builds of the library, bit for bit. Each is put in front of the library of the build
at hand, whose digest program prints the results and whose generated sources all of them share.

sample  a fixed part of the sources through the other compiler. Of sources in numbered files, file 0 is the sample.
matrix  all sources through g++ and clang++ at -O1, -O2 and -O3. The objects may be those of a level."""

import argparse
import os
import re
import subprocess
import sys
import tempfile
from concurrent.futures import ThreadPoolExecutor
from dataclasses import replace
from pathlib import Path

from compile_commands import commands_of

C_COMPILERS = {"g++": "gcc", "clang++": "clang"}
LIBRARY_ONLY = ["-DBUILD_TESTING=OFF", "-DTFMGEN_EXAMPLES=OFF", "-DTFMGEN_BENCH=OFF", "-DTFMGEN_WERROR=OFF"]


def run(*command, **options):
    return subprocess.run([str(c) for c in command], check=True, stdout=subprocess.PIPE, text=True, **options).stdout


class Library:
    """The objects of the library through one compiler, each compiled as a build with this compiler would."""

    def __init__(self, arguments, compiler):
        self.compiler, self.build = compiler, arguments.build
        self.work = arguments.build / "other_builds" / compiler
        run("cmake", "-S", arguments.source, "-B", self.work, "-G", "Ninja", f"-DCMAKE_CXX_COMPILER={compiler}",
            f"-DCMAKE_C_COMPILER={C_COMPILERS[compiler]}", "-DCMAKE_BUILD_TYPE=Release", *LIBRARY_ONLY)
        objects = [self.work / o.relative_to(self.build) for o in arguments.objects]
        self.commands = [self._from_sources_at_hand(c) for c in commands_of(self.work, objects)]

    def _from_sources_at_hand(self, command):
        words = tuple(w.replace(str(self.work), str(self.build)) if w != "-o" else w for w in command.words)
        return replace(command, words=words)

    def sample(self):
        self.commands = [c for c in self.commands if not re.search(r"_[1-9]\d*\.cpp$", c.source.name)]

    def link(self, pool, *options):
        """The shared library compiled with `options` besides; a future of its path."""
        folder = self.work / "-".join(["objects", *options])
        folder.mkdir(exist_ok=True)
        targets = [folder / f"{i}_{c.source.name}.o" for i, c in enumerate(self.commands)]
        compiled = [pool.submit(run, *c.writing(t, *options), cwd=c.folder) for c, t in zip(self.commands, targets)]

        def linked():
            for job in compiled:
                job.result()
            library = folder / "libcompared.so"
            run(self.compiler, "-shared", "-Wl,-Bsymbolic", "-o", library, *targets)
            return library
        return linked


def digest(arguments, library=None):
    if not library:
        return run(arguments.digest)
    with tempfile.TemporaryDirectory() as folder:  # the loader takes a space in LD_PRELOAD for the end of a name
        link = Path(folder) / "libcompared.so"
        link.symlink_to(library.absolute())
        digested = subprocess.run([arguments.digest], env={**os.environ, "LD_PRELOAD": str(link)}, check=True,
                                  capture_output=True, text=True)
    if "cannot be preloaded" in digested.stderr:
        sys.exit(digested.stderr)
    return digested.stdout


def exports(library):
    return set(re.findall(r" T (tfmg\w+)", run("nm", "-D", "--defined-only", library)))


def single_calls(results):
    """The routines of the library itself; kernels of batches are no exports."""
    return {name for name in (line.split()[0] for line in results.splitlines()) if name.startswith("tfmg")}


def report(what, expected, actual):
    expected, actual = (dict(line.split() for line in text.splitlines()) for text in (expected, actual))
    different = sorted(name for name in expected.keys() | actual.keys() if expected.get(name) != actual.get(name))
    print(f"{what}: {'different bits: ' + ' '.join(different[:20]) if different else 'same bits'}", flush=True)
    return not different


def sample(arguments, pool):
    other = Library(arguments, arguments.compiler)
    other.sample()
    library = other.link(pool)()
    expected = digest(arguments)
    names = single_calls(expected)
    sampled = exports(library) & names

    def family(name):
        return re.sub(r"_\d+_", "_", name)

    missing = {family(n) for n in names} - {family(n) for n in sampled}
    if missing:
        sys.exit(f"no routine of {sorted(missing)} in the sample")
    print(f"{len(sampled)} of {len(names)} routines compiled with {arguments.compiler}")
    return report(arguments.compiler, expected, digest(arguments, library))


def matrix(arguments, pool):
    expected = digest(arguments)
    names = single_calls(expected)
    print(f"{len(names)} routines; compared with the build at hand:", flush=True)
    builds = {}
    for compiler in C_COMPILERS:
        library = Library(arguments, compiler)
        for level in "-O1", "-O2", "-O3":
            builds[f"{compiler} {level}"] = library.link(pool, level)
    same = True
    for name, linked in builds.items():
        library = linked()
        if names - exports(library):
            sys.exit(f"{name}: lacks {sorted(names - exports(library))[:5]}")
        same &= report(name, expected, digest(arguments, library))
    return same


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("mode", choices=["sample", "matrix"])
    parser.add_argument("--source", type=Path, required=True)
    parser.add_argument("--build", type=Path, required=True, help="the build at hand")
    parser.add_argument("--digest", required=True, help="its digest program")
    parser.add_argument("--compiler", choices=C_COMPILERS, help="the other compiler (sample)")
    parser.add_argument("objects", type=Path, nargs="+", help="the objects of its library")
    arguments = parser.parse_args()
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        return 0 if {"sample": sample, "matrix": matrix}[arguments.mode](arguments, pool) else 1


if __name__ == "__main__":
    sys.exit(main())
