"""Installs the build into a prefix, moves the prefix and uses it; uses the build folder; puts the sources into a project.

usage: check_install.py SOURCE BUILD CC CXX"""

import pathlib
import shutil
import sys
import tempfile

from users import run, use_cmake, use_pkg_config


def files_of(build, component, prefix):
    run("cmake", "--install", build, "--prefix", prefix, "--component", component)
    return {str(path.relative_to(prefix)) for path in prefix.rglob("*") if not path.is_dir() or path.is_symlink()}


def check_components(build, work):
    """Run time and development are apart, and every library comes by itself."""
    core = files_of(build, "core", work / "core")
    tfmgen = files_of(build, "tfmgen", work / "tfmgen")
    development = files_of(build, "development", work / "development")
    assert core and all("libtfmcore.so.6" in name for name in core), core
    assert tfmgen and all("libtfmgen.so.6" in name for name in tfmgen), tfmgen
    assert not any(".so." in name for name in development), development
    assert {"include/tfmgen.h", "include/tfmgen.hpp", "include/tfmcore.h"} <= development, development


def main():
    source, build, *compilers = sys.argv[1:]
    with tempfile.TemporaryDirectory() as directory:
        work = pathlib.Path(directory)
        check_components(build, work / "components")

        run("cmake", "--install", build, "--prefix", work / "first")
        prefix = shutil.move(work / "first", work / "moved")
        libdir = next(prefix.rglob("pkgconfig")).parent
        for program in use_cmake(work / "installed", f"-DCMAKE_PREFIX_PATH={prefix}", compilers):
            run(program)
        for program in use_pkg_config(work / "pkg-config", libdir, compilers):
            run(program, environment={"LD_LIBRARY_PATH": str(libdir)})
        for program in use_cmake(work / "built", f"-Dtfmgen_DIR={build}", compilers):
            run(program)

        run("cmake", "-S", pathlib.Path(__file__).with_name("container"), "-B", work / "container", "-G", "Ninja",
            f"-DTFMGEN_SOURCE={source}", f"-DCMAKE_C_COMPILER={compilers[0]}", f"-DCMAKE_CXX_COMPILER={compilers[1]}")


main()
