"""Compares the exported interface with that of the last tag, by abidiff of abigail-tools.

Both are built anew, with debug information, which tells types. New functions are no difference."""

import argparse
import pathlib
import shutil
import subprocess
import sys

LIBRARIES = ("libtfmcore.so", "libtfmgen.so", "libtfmbatch.so")


def skip(reason):
    print(f"skipped: {reason}")
    sys.exit(0)


def last_tag(source):
    outcome = subprocess.run(["git", "-C", source, "describe", "--tags", "--abbrev=0"], capture_output=True, text=True)
    return outcome.stdout.strip() if outcome.returncode == 0 else None


def build(source, folder):
    """The folder of the libraries of these sources. Without optimisation kernels take longer to compile, not shorter."""
    subprocess.run(["cmake", "--preset", "release", "-S", source, "-B", folder, "-DCMAKE_BUILD_TYPE=RelWithDebInfo",
                    "-DBUILD_TESTING=OFF", "-DTFMGEN_EXAMPLES=OFF", "-DTFMGEN_LEVELS="],
                   check=True, cwd=source, stdout=subprocess.DEVNULL)
    subprocess.run(["cmake", "--build", folder], check=True, stdout=subprocess.DEVNULL)
    return folder / "lib"


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("source", type=pathlib.Path)
    parser.add_argument("work", type=pathlib.Path, help="folder for both builds")
    arguments = parser.parse_args()
    tag = last_tag(arguments.source)
    if not shutil.which("abidiff"):
        skip("abidiff is not installed (Debian: abigail-tools)")
    if not tag:
        skip("the repository has no tag to compare with")
    old_source = arguments.work / tag
    if not old_source.exists():
        subprocess.run(["git", "clone", "-q", "--branch", tag, arguments.source, old_source], check=True)
    old = build(old_source, arguments.work / f"{tag}-build")
    new = build(arguments.source, arguments.work / "new-build")
    status = 0
    for library in LIBRARIES:
        if (old / library).exists():
            outcome = subprocess.run(["abidiff", "--no-added-syms", old / library, new / library])
            status |= outcome.returncode
    sys.exit(bool(status))


main()
