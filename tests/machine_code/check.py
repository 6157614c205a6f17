"""check.py LIBRARY: checks the machine code of a built library against the shape that its speed and its promises rest on.

Every fixed-length routine is a straight line behind its checks, reaches its arrays only inside their bounds, every
element once, in accesses of the stated width, and keeps a small frame. The library holds no writable data and starts
nothing when it is loaded. Prints what does not hold; exit status 1 then."""

import re
import sys

from binary import Binary
from walk import Walker

KERNEL = re.compile(r"tfmg(DFT(?:Fwd|Inv)_\w+?|Hartley|WHT)_(\d+)_(32fc?|64fc?)$")
GENERAL = re.compile(r"tfmg(DFT(?:Fwd|Inv)_[A-Za-z]+|Hartley|WHT)_(32fc?|64fc?)$")
STRAIGHT_ORDERS = range(1, 8)  # Walsh-Hadamard kernels above have passes over memory
PAIRED = {8, 16, 18, 24, 32, 40, 48, 50, 54, 56, 60, 64}  # 32-bit complex: two elements an access
PAIRED_BUT_ONE = {9, 25, 27, 45, 46, 47, 49, 59, 62}  # the same with an element that has no partner
IMPORTS = {"tfmMalloc", "tfmFree", "sin", "cos", "sinf", "cosf"}
RUNTIME = {"__cxa_finalize", "__gmon_start__", "_ITM_deregisterTMCloneTable", "_ITM_registerTMCloneTable"}
RUNTIME_DATA = {"__dso_handle", "__TMC_END__", "completed.0", "_edata", "__bss_start", "_end", ".data", ".bss"}
FORBIDDEN = {
    "fused operation": re.compile(r"vfn?m(add|sub)"),
    "x87 or MMX": re.compile(r"f[a-z]|emms"),
    "encoding beyond the baseline": re.compile(r"v[a-z]"),
    "instruction beyond SSE2": re.compile(
        r"haddp|hsubp|addsubp|movs[hl]dup|movddup|lddqu|pshufb|palignr|p?blend|insertp|extractp|round[ps]|dpp|"
        r"p(ins|ext)r[bdq]|pmulld|pabs|psign|phadd|phsub|ptest|pmov[sz]x"),
    "prefetch or non-temporal access": re.compile(r"prefetch|movnt|maskmov"),
}


class Report:
    def __init__(self):
        self.faults, self.checked = [], 0

    def check(self, holds, where, what):
        self.checked += 1
        if not holds:
            self.faults.append(f"{where}: {what}")


class Kernel:
    def __init__(self, name):
        self.name = name
        family, size, self.suffix = KERNEL.match(name).groups()
        self.size = int(size)
        self.wht = family == "WHT"
        self.complex = self.suffix.endswith("c")
        self.real_bytes = 4 if self.suffix.startswith("32") else 8
        self.length = 2**self.size if self.wht else self.size
        ccs = 2 * (self.length // 2 + 1)
        plain = 2 * self.length if self.complex else self.length
        self.source_reals = ccs if "_CCSToR" in name else plain
        self.destination_reals = ccs if "_RToCCS" in name else plain
        # I(0) and I(N/2) of a packed spectrum are zero by symmetry and never looked at.
        self.unread = set()
        if "_CCSToR" in name:
            self.unread = {1, self.length + 1} if self.length % 2 == 0 else {1}

    @property
    def bodies_and_functions(self):
        first_split, first_apart = (self.length + 1,) * 2
        if self.complex:
            first_split, first_apart = (6, 6) if self.real_bytes == 4 else (2, 5)
        elif self.wht:
            first_split, first_apart = (4, 4) if self.real_bytes == 4 else (3, 4)
        return 2 if self.size >= first_split else 1, 2 if self.size >= first_apart else 1

    def widths(self, aligned_body):
        """Bytes of one access, and how many narrower ones an odd element may take among loads and among stores."""
        bodies, _ = self.bodies_and_functions
        if bodies == 1:
            return self.real_bytes, 0
        if self.real_bytes == 8:
            return (16 if aligned_body else 8), 0
        if self.wht or self.size in PAIRED:
            return 16, 0
        return (16, 2) if self.size in PAIRED_BUT_ONE else (8, 0)

    @property
    def frame_limit(self):
        return 1536 if self.complex else 1023


def spans(accesses, real_bytes):
    return sorted(r for a in accesses for r in range(a.offset // real_bytes, (a.offset + a.width) // real_bytes))


def check_body(kernel, body, aligned_body, report):
    where = f"{kernel.name} ({'aligned' if aligned_body else 'unaligned'} body)"
    loads = [a for a in body.accesses if a.array == "src" and not a.store]
    stores = [a for a in body.accesses if a.array == "dst" and a.store]
    report.check(len(loads) + len(stores) == len(body.accesses), where, "writes the source or reads the destination")
    wanted = [r for r in range(kernel.source_reals) if r not in kernel.unread]
    reached = spans(loads, kernel.real_bytes)
    # Complex kernels load once; a scalar kernel may take an operand from memory again.
    report.check((reached if kernel.complex else sorted(set(reached))) == wanted, where, "does not read each element once")
    report.check(spans(stores, kernel.real_bytes) == list(range(kernel.destination_reals)), where,
                 "does not write each element once")
    if kernel.complex:
        first = next((i for i, a in enumerate(body.accesses) if a.store), 0)
        report.check(all(a.store for a in body.accesses[first:]), where, "loads after its first store")
    width, odd = kernel.widths(aligned_body)
    for kind, accesses in ("load", loads), ("store", stores):
        narrow = [a for a in accesses if a.width != width]
        report.check(len(narrow) <= odd and all(a.width == 8 for a in narrow), where,
                     f"has {kind}s of {sorted({a.width for a in narrow})} bytes, not {width}")
    wide = [a for a in body.accesses if a.width == 16]
    report.check(all(a.must_align == aligned_body for a in wide), where, "mixes aligned and unaligned accesses")


def check_kernel(name, binary, walker, report):
    kernel = Kernel(name)
    walk = walker.walk(binary.exports[name])
    for fault in walk.faults:
        report.check(False, name, fault)
    if walk.faults:
        return
    bodies, functions = kernel.bodies_and_functions
    report.check(len(walk.bodies) == bodies, name, f"has {len(walk.bodies)} bodies, not {bodies}")
    report.check(len(walk.crossings) == functions - 1, name, f"jumps to {sorted(walk.crossings)}")
    report.check(not walk.crossings & binary.exports.keys(), name, "hands over to another exported routine")
    report.check(walk.alignment_test == (bodies == 2), name, "alignment test missing or needless")
    report.check(walk.frame <= kernel.frame_limit, name, f"frame of {walk.frame} bytes")
    entry = binary.code[binary.exports[name]].function
    for body in walk.bodies.values():
        other = any(b is not body and len(b.accesses) < len(body.accesses) for b in walk.bodies.values())
        aligned = bodies == 2 and (body.function == entry if functions == 2 else not other)
        check_body(kernel, body, aligned, report)


def check_general_entry(name, binary, report):
    instruction, count, sizes_in_range = binary.code[binary.exports[name]], 0, None
    while instruction and not (instruction.mnemonic == "jmp" and instruction.target is None):
        if instruction.mnemonic == "ret" and sizes_in_range:  # the refusal stood first
            instruction, sizes_in_range = binary.code[sizes_in_range], None
            continue
        report.check(instruction.mnemonic not in ("call", "ret", "jmp"), name, f"no indexed jump: {instruction}")
        sizes_in_range = instruction.target or sizes_in_range
        instruction, count = instruction.next, count + 1
    report.check(count <= 10, name, f"{count} instructions before the indexed jump")


def check_library(binary, report):
    data = {name for section, name in binary.data_symbols if not section.startswith(".data.rel.ro")}
    report.check(data <= RUNTIME_DATA, "writable data", sorted(data - RUNTIME_DATA))
    report.check(not {".tdata", ".tbss"} & binary.sections.keys(), "thread-local data", "present")
    report.check(binary.sections.get(".init_array", (0, 0))[1] <= 8, "static constructors", "more than the C runtime's")
    report.check(binary.sections.get(".fini_array", (0, 0))[1] <= 8, "static destructors", "more than the C runtime's")
    report.check(" TEXTREL " not in binary.private, "text relocations", "present")
    report.check(" RELRO " in binary.private, "read-only relocations", "missing")
    now = re.search(r"^ +FLAGS_1 +0x([0-9a-f]+)", binary.private, re.M)
    report.check(now and int(now[1], 16) & 1, "bind now", "missing")
    report.check(binary.imports <= IMPORTS | RUNTIME, "imports", sorted(binary.imports - IMPORTS - RUNTIME))
    named = {value.split("@")[0].split("+")[0] for _, kind, value in binary.relocations if kind != "R_X86_64_RELATIVE"}
    report.check(not named & binary.exports.keys(), "own functions reached through the linker",
                 sorted(named & binary.exports.keys()))
    first_use = {}
    for instruction in binary.code.values():
        first_use.setdefault(instruction.mnemonic, instruction)
    for mnemonic, instruction in first_use.items():
        for what, pattern in FORBIDDEN.items():
            report.check(not pattern.match(mnemonic), instruction.function, f"{what}: {instruction}")


def main():
    binary, report = Binary(sys.argv[1]), Report()
    check_library(binary, report)
    walker = Walker(binary)
    kernels = [n for n in binary.exports if KERNEL.match(n)]
    kernels = [n for n in kernels if "WHT" not in n or int(KERNEL.match(n)[2]) in STRAIGHT_ORDERS]
    for name in kernels:
        check_kernel(name, binary, walker, report)
    general = [n for n in binary.exports if GENERAL.match(n)]
    for name in general:
        check_general_entry(name, binary, report)
    for fault in report.faults[:50]:
        print(fault)
    print(f"{len(kernels)} kernels, {len(general)} general entries, {report.checked} checks, {len(report.faults)} faults")
    return 1 if report.faults or not kernels else 0


if __name__ == "__main__":
    sys.exit(main())
