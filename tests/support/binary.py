"""A shared library as objdump shows it: sections, dynamic symbols, relocations, instructions."""

import re
import subprocess
from dataclasses import dataclass


@dataclass(frozen=True)
class Operand:
    """One operand: the text of a register, number or target, or a memory reference."""

    text: str
    width: int = 0  # bytes of a memory reference; 0 when it has no size (lea) or is no reference
    base: str = ""
    index: bool = False
    offset: int = 0

    @property
    def is_memory(self):
        return "[" in self.text


WIDTHS = {"BYTE": 1, "WORD": 2, "DWORD": 4, "QWORD": 8, "XMMWORD": 16, "YMMWORD": 32, "ZMMWORD": 64, "TBYTE": 10}


def parse_operand(text):
    reference = re.match(r"(?:(\w+) PTR )?(?:[cdefgs]s:)?\[(.*?)\]", text)
    if not reference:
        return Operand(text.split(" <")[0].strip())
    terms = re.findall(r"([+-]?)([^+-]+)", reference[2])
    registers = [term for _, term in terms if not term.startswith("0x")]
    offset = sum(int(sign + term, 16) for sign, term in terms if term.startswith("0x"))
    if offset >= 1 << 63:
        offset -= 1 << 64
    scaled = any("*" in r for r in registers) or len(registers) > 1
    return Operand(text, WIDTHS.get(reference[1], 0), registers[0] if registers else "", scaled, offset)


class Instruction:
    __slots__ = ("address", "mnemonic", "text", "function", "next", "_operands")

    def __init__(self, address, mnemonic, text, function):
        self.address, self.mnemonic, self.text, self.function = address, mnemonic, text, function
        self.next = None
        self._operands = None

    @property
    def operands(self):
        if self._operands is None:
            parts = re.split(r",(?![^\[]*\])", self.text.split("#")[0].strip())
            self._operands = [parse_operand(p) for p in parts if p]
        return self._operands

    @property
    def target(self):
        """Address of a direct jump, else None."""
        match = re.match(r"([0-9a-f]+)\b", self.text)
        return int(match[1], 16) if match and self.mnemonic[0] == "j" else None

    def __str__(self):
        return f"{self.address:x}: {self.mnemonic} {self.text}"


def objdump(path, *options):
    return subprocess.run(["objdump", *options, path], check=True, capture_output=True, text=True).stdout


class Binary:
    def __init__(self, path):
        self.private = objdump(path, "-p")
        self.sections = {m[0]: (int(m[2], 16), int(m[1], 16))  # name -> (address, size)
                         for m in re.findall(r"^ *\d+ (\S+) +(\w+) +(\w+)", objdump(path, "-h"), re.M)}
        symbols = re.findall(r"^([0-9a-f]+) (.{7}) (\S+)\t[0-9a-f]+ +(?:\(?\w+\S* +)?(\S+)$", objdump(path, "-T"), re.M)
        self.exports = {name: int(address, 16) for address, _, section, name in symbols if section != "*UND*"}
        self.imports = {name for _, _, section, name in symbols if section == "*UND*"}
        self.data_symbols = {(section, name) for section, name in re.findall(
            r"^[0-9a-f]+ .{7} (\.t?(?:data|bss)\S*)\t[0-9a-f]+ +(?:\.hidden )?(\S+)$", objdump(path, "-t"), re.M)}
        self.relocations = [(int(offset, 16), kind, value) for offset, kind, value in re.findall(
            r"^([0-9a-f]+) (R_\S+) +(\S+)$", objdump(path, "-R"), re.M)]
        self.code = {}
        self._read_code(objdump(path, "-d", "-M", "intel", "--no-show-raw-insn"))

    def _read_code(self, text):
        function, previous = None, None
        for line in text.splitlines():
            if line.startswith(" "):
                address, _, rest = line.partition(":\t")
                mnemonic, _, operands = rest.partition(" ")
                instruction = Instruction(int(address, 16), mnemonic, operands.strip(), function)
                if previous and previous.function == function:
                    previous.next = instruction
                self.code[instruction.address] = previous = instruction
            elif line.endswith(">:"):
                function = line[line.index("<") + 1:-2]
