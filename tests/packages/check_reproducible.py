"""Compiles and packs the sources once more, elsewhere and from nothing: the packages are the same bytes.

usage: check_reproducible.py SOURCE BUILD"""

import os
import pathlib
import shutil
import sys
import tempfile

from users import run


def main():
    source, build = map(pathlib.Path, sys.argv[1:])
    packages = sorted(build.glob("*.deb"))
    assert packages, f"no packages in {build}"
    # Nothing that was compiled before is taken again.
    plain = {name: "" for name in os.environ if name.endswith("_COMPILER_LAUNCHER")} | {"CCACHE_DISABLE": "1"}
    with tempfile.TemporaryDirectory(prefix="another place ") as directory:
        copy = pathlib.Path(directory) / "sources"
        shutil.copytree(source, copy, ignore=shutil.ignore_patterns("build", ".git"))
        for step in ("--preset",), ("--build", "--preset"):
            run("cmake", *step, "package", environment=plain, folder=copy)
        run("cpack", "--preset", "package", environment=plain, folder=copy)
        differing = [package.name for package in packages
                     if package.read_bytes() != (copy / "build/package" / package.name).read_bytes()]
    if differing:
        sys.exit(f"not the same bytes: {', '.join(differing)}")
    print(f"{len(packages)} packages are the same bytes when compiled again")


main()
