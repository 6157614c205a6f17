"""Follows every path through a routine: which arrays it reaches, how, and in what order.

Pointers are known by array and offset, in registers and in spill slots; all other values are unknown. The paths through
the checks are few, and a path that has reached an array must go straight to its return, so walking all of them is
cheap."""

from dataclasses import dataclass, field

from binary import Instruction

ARGUMENTS = {"rdi": ("src", 0), "rsi": ("dst", 0), "rsp": ("stack", 0)}
WIDE = {short: wide for wide, shorts in {
    "rax": "eax ax al ah", "rbx": "ebx bx bl bh", "rcx": "ecx cx cl ch", "rdx": "edx dx dl dh", "rsi": "esi si sil",
    "rdi": "edi di dil", "rbp": "ebp bp bpl", "rsp": "esp sp spl",
    **{f"r{i}": f"r{i}d r{i}w r{i}b" for i in range(8, 16)}}.items() for short in [wide, *shorts.split()]}
READ_ONLY = ("cmp", "test", "ucomis", "comis", "push", "bt")  # a first operand in memory that is not written
ALIGNED_MOVES = ("movaps", "movapd", "movdqa")
UNALIGNED_MOVES = ("movups", "movupd", "movdqu", "lddqu")


@dataclass(frozen=True)
class Access:
    array: str
    offset: int
    width: int
    store: bool
    must_align: bool  # faults at an address that is no multiple of 16


@dataclass
class Body:
    """The straight line behind the checks."""

    function: str
    accesses: list = field(default_factory=list)
    instructions: int = 0
    left: Instruction | None = None  # the jump to a return that is shared


@dataclass
class Walk:
    bodies: dict = field(default_factory=dict)  # by address of the first access
    crossings: set = field(default_factory=set)  # jumps into other functions
    alignment_test: bool = False
    frame: int = 0
    faults: list = field(default_factory=list)


class State:
    def __init__(self, registers, slots):
        self.registers, self.slots = registers, slots

    def copy(self):
        return State(dict(self.registers), dict(self.slots))

    def key(self):
        return (frozenset(self.registers.items()), frozenset(self.slots.items()))


class Walker:
    def __init__(self, binary):
        self.code = binary.code

    def walk(self, start):
        result = Walk()
        visited = set()
        pending = [(start, State(dict(ARGUMENTS), {}), frozenset())]
        while pending:
            address, state, path = pending.pop()
            body = None
            while address is not None and not result.faults:
                instruction = self.code[address]
                if body is None:
                    if address in path:
                        result.faults.append(f"loop at {instruction}")
                        break
                    path |= {address}
                    if (address, state.key()) in visited:
                        break
                    visited.add((address, state.key()))
                access = self._step(instruction, state, result)
                if access and body is None:
                    if address in result.bodies:
                        break
                    body = result.bodies[address] = Body(instruction.function)
                if body:
                    body.instructions += 1
                    if access:
                        body.accesses.append(access)
                        if body.left:
                            result.faults.append(f"control flow in the arithmetic: {body.left}")
                address = self._successor(instruction, state, body, path, pending, result)
        return result

    def _successor(self, instruction, state, body, path, pending, result):
        """Address of the next instruction; the other way of a branch goes to `pending`."""
        mnemonic = instruction.mnemonic
        if mnemonic == "ret":
            return None
        if mnemonic[0] != "j" and mnemonic != "call":
            return instruction.next.address if instruction.next else None
        target = instruction.target
        if body and mnemonic == "jmp" and target and not body.left:
            body.left = instruction  # two bodies may share their return
            return target
        if body or target is None:
            result.faults.append(f"{'control flow in the arithmetic' if body else 'call or indirect jump'}: {instruction}")
            return None
        if self.code[target].function != instruction.function:
            result.crossings.add(self.code[target].function)
        if mnemonic == "jmp":
            return target
        pending.append((target, state.copy(), path))
        return instruction.next.address

    def _step(self, instruction, state, result):
        """Moves pointers along; returns the access to an array, if there is one."""
        mnemonic, operands = instruction.mnemonic, instruction.operands
        registers = state.registers
        if mnemonic in ("test", "and") and operands[1].text == "0xf":
            result.alignment_test = True
        place, access = None, None
        for position, operand in enumerate(operands):
            if operand.is_memory and mnemonic != "lea" and not mnemonic.startswith("nop"):
                store = position == 0 and not mnemonic.startswith(READ_ONLY)
                place, access = self._reach(instruction, operand, store, state, result)
        self._move(instruction, state, place)
        depth = -registers.get("rsp", ("stack", 0))[1]
        result.frame = max(result.frame, depth, -place[1] if place and place[0] == "stack" else 0)
        return access

    def _reach(self, instruction, operand, store, state, result):
        base = state.registers.get(operand.base)
        if operand.base == "rip" and not store and not operand.index:
            return None, None
        if base is None or operand.index:
            result.faults.append(f"memory reached through an unknown address: {instruction}")
            return None, None
        place = (base[0], base[1] + operand.offset)
        if base[0] == "stack":
            if store:
                source = instruction.operands[1] if len(instruction.operands) > 1 else None
                known = state.registers.get(source.text) if source and instruction.mnemonic == "mov" else None
                state.slots.pop(place[1], None)
                if known:
                    state.slots[place[1]] = known
            return place, None
        aligned = operand.width == 16 and not instruction.mnemonic.startswith(UNALIGNED_MOVES)
        return place, Access(place[0], place[1], operand.width, store, aligned)

    def _move(self, instruction, state, place):
        """What a general instruction does to the pointers in registers."""
        mnemonic, operands, registers = instruction.mnemonic, instruction.operands, state.registers
        if mnemonic in ("push", "pop"):
            offset = registers["rsp"][1] + (-8 if mnemonic == "push" else 0)
            if mnemonic == "push":
                state.slots[offset] = registers.get(operands[0].text)
            else:
                registers[operands[0].text] = state.slots.get(offset)
            registers["rsp"] = ("stack", offset + (0 if mnemonic == "push" else 8))
        elif mnemonic == "leave":
            frame = registers["rbp"]
            registers["rbp"], registers["rsp"] = state.slots.get(frame[1]), (frame[0], frame[1] + 8)
        elif operands and not operands[0].is_memory and mnemonic not in ("cmp", "test") and mnemonic[0] != "j":
            target = WIDE.get(operands[0].text)
            if target is None:
                return
            value = None
            if operands[0].text == target and len(operands) == 2:
                value = self._value(mnemonic, operands, registers, state, place)
            registers[target] = value
        for dead in [name for name, value in registers.items() if value is None]:
            del registers[dead]

    @staticmethod
    def _value(mnemonic, operands, registers, state, place):
        source = operands[1]
        if mnemonic == "mov":
            return state.slots.get(place[1]) if place and place[0] == "stack" else registers.get(source.text)
        if mnemonic == "lea" and not source.index and registers.get(source.base):
            array, offset = registers[source.base]
            return (array, offset + source.offset)
        pointer = registers.get(operands[0].text)
        if pointer and source.text.startswith("0x") and mnemonic in ("add", "sub", "and"):
            number = int(source.text, 16)
            if number >= 1 << 63:
                number -= 1 << 64
            if mnemonic == "and":  # rounds down: by at most the alignment
                return (pointer[0], pointer[1] + number + 1) if pointer[0] == "stack" else None
            return (pointer[0], pointer[1] + (number if mnemonic == "add" else -number))
        return None
