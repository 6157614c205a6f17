"""Installs the Debian packages of a build folder into a bare Debian, builds and runs the programs of the README there, and
removes the packages.

usage: check_system.py SOURCE BUILD [MIRROR]

Takes root, debootstrap and a Debian mirror."""

import os
import pathlib
import shutil
import sys
import tempfile

from examples import blocks
from users import LOADER, best_level, run

TOOLS = "g++,cmake,make,pkg-config"
# Where the package manager keeps its own records, and what is no file of the system.
RECORDS = ("dev", "proc", "sys", "run", "tmp", "var/cache", "var/lib/apt", "var/lib/dpkg/status-old", "var/log")
PKG_CONFIG = "$(pkg-config --cflags --libs tfmgen)"
# As the README says, with no other option.
COMMANDS = {
    "C": f"cc first.c {PKG_CONFIG} -o first",
    "C++20": f"c++ -std=c++20 first.cpp {PKG_CONFIG} -o first",
    "CMake": "cmake -S . -B build && cmake --build build && cp build/first first",
}


def files_of(root):
    found = set()
    for folder, folders, names in os.walk(root):
        at = pathlib.Path(folder).relative_to(root)
        found.update(str(at / name) for name in names + folders)
        folders[:] = [name for name in folders if str(at / name) not in RECORDS]
    return {name for name in found if not name.startswith(RECORDS)}


def inside(root, command):
    plain = {"PATH": "/usr/sbin:/usr/bin:/sbin:/bin", "HOME": "/root", "LC_ALL": "C", "DEBIAN_FRONTEND": "noninteractive"}
    variables = [f"{name}={value}" for name, value in plain.items()]
    return run("env", "-i", *variables, "chroot", root, "sh", "-euc", "cd /root; " + command)


def check_programs(source, root):
    """Every program runs, on the library of the processor's level."""
    home = root / "root"
    readme = source / "README.md"
    for name, language in ("first.c", "c"), ("first.cpp", "cpp"), ("CMakeLists.txt", "cmake"):
        [(_, text)] = blocks(readme, language)
        (home / name).write_text(text)
    multiarch = inside(root, "gcc -print-multiarch").strip()
    library = f"/lib/{multiarch}/{best_level(root / 'usr/lib' / multiarch)}libtfmgen.so.6"
    for kind, command in COMMANDS.items():
        if kind != "CMake":
            assert command in readme.read_text(), f"the README has another command for {kind}"
        inside(root, command)
        assert inside(root, "./first").strip(), f"{kind}: no output"
        loaded = inside(root, f"{LOADER} --list ./first")
        assert library in loaded, f"{kind}: {loaded}"
        print(f"{kind}: runs on {library}")
    inside(root, "rm -rf first* CMakeLists.txt build")


def check(source, packages, root):
    before = files_of(root)
    for package in packages:
        shutil.copy(package, root / "tmp")
    inside(root, "apt-get install -y --no-install-recommends /tmp/*.deb")
    added = files_of(root) - before
    assert any(name.endswith("glibc-hwcaps/x86-64-v3/libtfmgen.so.6") for name in added), added
    assert "libtfmgen.so.6" in inside(root, "ldconfig -p"), "ldconfig has not run"
    check_programs(source, root)
    inside(root, f"apt-get purge -y {' '.join(package.name.split('_')[0] for package in packages)}")
    left, lost = files_of(root) - before, before - files_of(root)
    assert not left and not lost, f"left behind: {sorted(left)}, lost: {sorted(lost)}"
    assert "libtfm" not in inside(root, "ldconfig -p"), "the cache of the loader still knows the libraries"
    print(f"{len(packages)} packages came with {len(added)} files and folders and went with them")


def main():
    source, build, *mirror = sys.argv[1:]
    packages = sorted(pathlib.Path(build).glob("*.deb"))
    assert packages, f"no packages in {build}"
    with tempfile.TemporaryDirectory() as directory:
        root = pathlib.Path(directory) / "debian"
        run("debootstrap", "--variant=minbase", f"--include={TOOLS}", "bookworm", root, *mirror)
        check(pathlib.Path(source), packages, root)


main()
