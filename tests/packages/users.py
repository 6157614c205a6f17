"""Programs of users of an installation, built and run in the ways in which users build and run them."""

import os
import pathlib
import re
import subprocess

CONSUMER = pathlib.Path(__file__).with_name("consumer")
LOADER = "/lib64/ld-linux-x86-64.so.2"


def run(*command, environment=None, folder=None):
    """What the command prints; the end of all when it fails."""
    outcome = subprocess.run([str(word) for word in command], capture_output=True, text=True, cwd=folder,
                             env={**os.environ, **(environment or {})})
    if outcome.returncode:
        raise SystemExit(f"{' '.join(map(str, command))}\n{outcome.stdout}{outcome.stderr}")
    return outcome.stdout


def best_level(libdir):
    """The folder below `libdir` with the library of the highest level that the processor has."""
    supported = re.findall(r"^  (x86-64-v\d) \(supported, searched\)", run(LOADER, "--help"), re.M)
    present = {path.name for path in (libdir / "glibc-hwcaps").iterdir()}
    assert present, "no library of a level"
    return next((f"glibc-hwcaps/{level}/" for level in supported if level in present), "")


def use_cmake(work, package, compilers, *options):
    """find_package, from `package` as CMake's option, and both programs."""
    run("cmake", "-S", CONSUMER, "-B", work, "-G", "Ninja", f"-DCMAKE_C_COMPILER={compilers[0]}",
        f"-DCMAKE_CXX_COMPILER={compilers[1]}", package, *options)
    run("cmake", "--build", work)
    return [work / "first_c", work / "first_cpp"]


def use_pkg_config(work, libdir, compilers):
    """pkg-config --cflags --libs, and both programs."""
    work.mkdir()
    environment = {"PKG_CONFIG_PATH": str(libdir / "pkgconfig")}
    flags = run("pkg-config", "--cflags", "--libs", "tfmgen >= 6.1", "tfmcore", environment=environment).split()
    programs = []
    for compiler, source, standard in (compilers[0], "first.c", "c99"), (compilers[1], "first.cpp", "c++20"):
        programs.append(work / source.replace(".", "_"))
        run(compiler, f"-std={standard}", "-Wall", "-Wextra", "-Werror", CONSUMER / source, "-o", programs[-1], *flags)
    return programs
