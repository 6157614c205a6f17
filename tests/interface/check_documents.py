"""Every example in the documents compiles; those that are whole programs also run.

An example is a block of C or C++ of a Markdown file, or an indented block in the first comment of the C++ header."""

import argparse
import pathlib
import re
import subprocess
import sys
import tempfile

from examples import blocks

PREAMBLE = """
#include <tfmgen.hpp>
#include <array>
#include <complex>
#include <span>
#include <vector>
"""
# Names that the examples of the header take for granted.
WRAPPING = """
void example() {
  const std::size_t n = 16;
  std::vector<std::complex<float>> y(200);
%s
}
int main() { example(); }
"""


def examples(source):
    for path in [source / "README.md", *sorted((source / "docs").rglob("*.md"))]:
        for language, text in blocks(path, "c", "cpp"):
            yield path.name, language, text
    header = source / "include" / "tfmgen.hpp"
    comment = header.read_text().split("*/")[0]
    body = "\n".join(re.findall(r"^ \*     (.*)", comment, re.M))
    yield header.name, "cpp", PREAMBLE + WRAPPING % body


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    for option in "source", "library", "cc", "cxx":
        parser.add_argument("--" + option, required=True, type=pathlib.Path)
    arguments = parser.parse_args()
    library = arguments.library.parent
    count = 0
    for name, language, text in examples(arguments.source):
        count += 1
        with tempfile.TemporaryDirectory() as directory:
            program = pathlib.Path(directory) / "example"
            compiler, standard = (arguments.cc, "c99") if language == "c" else (arguments.cxx, "c++20")
            is_program = "main(" in text
            command = [compiler, f"-std={standard}", "-Wall", "-Wextra", "-Werror", f"-x{'c' if language == 'c' else 'c++'}",
                       "-", f"-I{arguments.source}/include", f"-I{arguments.source}/batch", "-o", program]
            command += [f"-L{library}", f"-Wl,-rpath,{library}", "-ltfmbatch", "-ltfmgen"] if is_program else ["-c"]
            built = subprocess.run(command, input=text, text=True, capture_output=True)
            if built.returncode:
                sys.exit(f"example {count} ({name}) does not compile:\n{text}\n{built.stderr}")
            if is_program and subprocess.run([program], stdout=subprocess.DEVNULL).returncode:
                sys.exit(f"example {count} ({name}) fails:\n{text}")
    print(f"{count} examples")


main()
