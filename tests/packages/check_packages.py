"""Unpacks the Debian packages of a build folder into an empty root, builds programs against it and runs them there.

usage: check_packages.py BUILD CC CXX"""

import pathlib
import re
import shutil
import sys
import tempfile

from users import LOADER, best_level, run, use_cmake, use_pkg_config

LIBRARIES = {"libtfmcore6", "libtfmgen6"}
# Only the owner of the rights can say what this file holds.
TOLERATED = {"no-copyright-file"}


def field(package, name):
    return run("dpkg-deb", "-f", package, name).strip()


def check_control(packages):
    """Dependencies, and the files by which other packages find theirs."""
    version = field(packages["tfmgen-dev"], "Version")
    for name in LIBRARIES:
        assert f"{name} (= {version})" in field(packages["tfmgen-dev"], "Depends"), name
    for name in packages.keys() - {"tfmgen-dev", "tfmgen-doc"}:
        depends = field(packages[name], "Depends")
        assert re.search(r"libc6 \(>= [\d.]+\)", depends), (name, depends)
        assert (name == "libtfmcore6") == ("libtfm" not in depends), (name, depends)
        assert "ldconfig" in run("dpkg-deb", "-I", packages[name], "postinst"), name
        for control in "shlibs", "symbols":
            assert run("dpkg-deb", "-I", packages[name], control), (name, control)


def check_reproducible(build, packages, work):
    run("cpack", "--config", build / "CPackConfig.cmake", "-G", "DEB", "-B", work)
    for path in packages.values():
        assert path.read_bytes() == (work / path.name).read_bytes(), f"{path.name} differs when packed again"


def check_loader(libdir, program):
    """The loader takes the library of the highest level that the processor has."""
    loaded = run(LOADER, "--library-path", libdir, "--list", program)
    assert f"{libdir}/{best_level(libdir)}libtfmgen.so.6 " in loaded, loaded
    run(LOADER, "--library-path", libdir, program)


def check_with_lintian(packages):
    if not shutil.which("lintian"):
        print("skipped: lintian is not installed")
        return
    found = run("lintian", "--fail-on", "none", "--tag-display-limit", "0", *packages.values())
    errors = {tag for tag in re.findall(r"^E: \S+(?: \w+)?: (\S+)", found, re.M)} - TOLERATED
    assert not errors, found


def main():
    build, *compilers = sys.argv[1:]
    build = pathlib.Path(build)
    packages = {path.name.split("_")[0]: path for path in build.glob("*.deb")}
    assert LIBRARIES | {"tfmgen-dev"} <= packages.keys(), packages
    check_control(packages)
    with tempfile.TemporaryDirectory() as directory:
        work = pathlib.Path(directory)
        check_reproducible(build, packages, work / "again")
        root = work / "root"
        for path in packages.values():
            run("dpkg-deb", "-x", path, root)
        libdir = next(root.rglob("pkgconfig")).parent
        for library in libdir.rglob("*.so.6"):
            assert not re.search("RPATH|RUNPATH", run("readelf", "-d", library)), library
        for program in (use_pkg_config(work / "pkg-config", libdir, compilers) +
                        use_cmake(work / "cmake", f"-DCMAKE_PREFIX_PATH={root}/usr", compilers,
                                  "-DCMAKE_SKIP_RPATH=ON")):
            check_loader(libdir, program)
    check_with_lintian(packages)
    print(f"{len(packages)} packages are good")


main()
