"""Does for an armv7 library what its linker leaves undone: `armv7_finish.py LIBRARY OBJECT ... [--weak STUB.tbd ...]`.

It takes the local symbols out, of which the linker keeps all (the stripping tools of the other processors' linker move the
segments to its own page size), marks the exported functions as Thumb code, so that a caller who looks one up by name enters
it in the right state, and mends the code by which a function that ends in a call of the platform goes to it. It gives the
image info its name, which the linker must not read, makes weak what may be missing on a phone, which the linker forgets (the
symbols that all objects that use them call weak, the libraries of the weak stubs, and all symbols of those), and writes the
instructions that adjust pointers as short as they can be. The layout follows "OS X ABI Mach-O File Format Reference" and
<mach-o/loader.h>.
"""

import argparse
import re
import struct
import sys
from pathlib import Path

HEADER_SIZE = 28
LC_SEGMENT = 0x1
LC_SYMTAB = 0x2
LC_DYSYMTAB = 0xB
LC_LOAD_DYLIB = 0xC
LC_DATA_IN_CODE = 0x29
LC_LOAD_WEAK_DYLIB = 0x80000018
LC_DYLD_INFO_ONLY = 0x80000022
FILE_OFFSET = 32  # in a segment's command; the number of its bytes follows
SYMBOL = struct.Struct("<IBBhI")
POINTER_SIZE = 4
TYPE = 0x0E  # in a symbol's type; none of it: undefined
THUMB = 0x0008  # in a symbol's description
WEAK = 0x0040  # in the description of an undefined symbol; the high byte is the number of its library, from 1
BIND_SYMBOL = 0x40  # of the loading instructions, with the symbol's name behind it
BIND_WEAK = 0x1  # with it
NUMBERS_BEHIND = {0x20: 1, 0x60: 1, 0x70: 1, 0x80: 1, 0xA0: 1, 0xC0: 2}  # in other such instructions
# Instructions that adjust pointers; the low half of the byte is a number too.
REBASE_SET_TYPE_POINTER = 0x11
REBASE_SET_SEGMENT = 0x20
REBASE_SKIP = 0x30
REBASE_SKIP_SCALED = 0x40
REBASE_SOME = 0x50
REBASE_MANY = 0x60
REBASE_AND_SKIP = 0x70
REBASE_MANY_AND_SKIP = 0x80
NUMBERS_BEHIND_REBASE = {0: 0, 0x10: 0, 0x20: 1, 0x30: 1, 0x40: 0, 0x50: 0, 0x60: 1, 0x70: 1, 0x80: 2}
# From Thumb code to a stub, which is not: the linker adds the program counter to itself in place of ip.
SHIM = bytes.fromhex("dff804c0 ff44 6047")  # ldr ip, [pc, #4]; add pc, pc; bx ip
MENDED_SHIM = bytes.fromhex("dff804c0 fc44 6047")  # ldr ip, [pc, #4]; add ip, pc; bx ip
LINKED_IMAGE_INFO = b"__objc_infoimage"
IMAGE_INFO = b"__objc_imageinfo"
NO_SYMBOL = 0x40000000  # in the table of indirect symbols: a local or absolute one


def load_commands(image):
    """The kind and offset of each load command, in order."""
    offset = HEADER_SIZE
    for _ in range(struct.unpack_from("<I", image, 16)[0]):
        kind, size = struct.unpack_from("<II", image, offset)
        yield kind, offset
        offset += size


def commands(image):
    """The offset of each load command by its kind; of the segments, the last one's."""
    return dict(load_commands(image))


def text(image, offset):
    return bytes(image[offset : image.index(0, offset)])


def undefined_symbols(image):
    """The names of the symbols that an object takes from others, and whether it calls them weak."""
    symbols, count, strings, _ = struct.unpack_from("<4I", image, commands(image)[LC_SYMTAB] + 8)
    for number in range(count):
        name, kind, _, description, _ = SYMBOL.unpack_from(image, symbols + number * SYMBOL.size)
        if kind & TYPE == 0:
            yield text(image, strings + name), bool(description & WEAK)


def weak_symbols(objects):
    used = [symbol for image in objects for symbol in undefined_symbols(image)]
    return {name for name, is_weak in used if is_weak} - {name for name, is_weak in used if not is_weak}


def make_libraries_weak(image, install_names):
    """Gives the numbers of these libraries, from 1."""
    libraries = [offset for kind, offset in load_commands(image) if kind == LC_LOAD_DYLIB]
    numbers = set()
    for number, offset in enumerate(libraries, 1):
        if text(image, offset + struct.unpack_from("<I", image, offset + 8)[0]) in install_names:
            struct.pack_into("<I", image, offset, LC_LOAD_WEAK_DYLIB)
            numbers.add(number)
    if len(numbers) != len(install_names):
        sys.exit("a library that may be missing is not in the list")
    return numbers


def make_bindings_weak(image, start, size, symbols):
    offset = start
    while offset < start + size:
        instruction = image[offset] & 0xF0
        if instruction == BIND_SYMBOL:
            name = text(image, offset + 1)
            if name in symbols:
                image[offset] |= BIND_WEAK
            offset += len(name) + 2
        else:
            offset += 1
            for _ in range(NUMBERS_BEHIND.get(instruction, 0)):
                _, offset = variable_length_number(image, offset)


def variable_length_number(image, offset):
    """An unsigned LEB128 number, and the offset behind it."""
    number = shift = 0
    while True:
        byte = image[offset]
        number |= (byte & 0x7F) << shift
        offset += 1
        shift += 7
        if not byte & 0x80:
            return number, offset


def mark_thumb_exports(image, trie, thumb_addresses, node=0):
    """Sets the lowest bit of the address of each of these functions in the trie of exports."""
    size, offset = variable_length_number(image, trie + node)
    if size:
        _, address_offset = variable_length_number(image, offset)
        address, _ = variable_length_number(image, address_offset)
        if address in thumb_addresses:
            image[address_offset] |= 1
    offset += size
    child_count = image[offset]
    offset += 1
    for _ in range(child_count):
        label_end = image.index(0, offset)
        child, offset = variable_length_number(image, label_end + 1)
        mark_thumb_exports(image, trie, thumb_addresses, child)


def rebased_pointers(image, start, size):
    """The segment and offset of each pointer that the loading instructions adjust."""
    offset, end = start, start + size
    segment = address = 0
    while offset < end:
        kind, immediate = image[offset] & 0xF0, image[offset] & 0x0F
        numbers = []
        offset += 1
        for _ in range(NUMBERS_BEHIND_REBASE[kind]):
            number, offset = variable_length_number(image, offset)
            numbers.append(number)
        count = skipped = 0
        if kind == REBASE_SET_SEGMENT:
            segment, address = immediate, numbers[0]
        elif kind == REBASE_SKIP:
            address += numbers[0]
        elif kind == REBASE_SKIP_SCALED:
            address += immediate * POINTER_SIZE
        elif kind == REBASE_SOME:
            count = immediate
        elif kind == REBASE_MANY:
            count = numbers[0]
        elif kind == REBASE_AND_SKIP:
            count, skipped = 1, numbers[0]
        elif kind == REBASE_MANY_AND_SKIP:
            count, skipped = numbers
        for _ in range(count):
            yield segment, address
            address += POINTER_SIZE + skipped


def rebase_instructions(pointers):
    """The shortest: the linker writes several bytes for each pointer."""
    result = bytes([REBASE_SET_TYPE_POINTER])
    pointers = sorted(pointers)
    segment = address = None
    first = 0
    while first < len(pointers):
        if pointers[first][0] != segment:
            segment, address = pointers[first]
            result += bytes([REBASE_SET_SEGMENT | segment]) + encoded(address)
        skipped = pointers[first][1] - address
        if skipped:
            scaled, rest = divmod(skipped, POINTER_SIZE)
            short = rest == 0 and scaled < 16
            result += bytes([REBASE_SKIP_SCALED | scaled]) if short else bytes([REBASE_SKIP]) + encoded(skipped)
        address = pointers[first][1]
        count = 0
        while first + count < len(pointers) and pointers[first + count] == (segment, address + count * POINTER_SIZE):
            count += 1
        result += bytes([REBASE_SOME | count]) if count < 16 else bytes([REBASE_MANY]) + encoded(count)
        address += count * POINTER_SIZE
        first += count
    return aligned(result)


def encoded(number):
    """An unsigned LEB128 number."""
    result = b""
    while number >= 0x80:
        result += bytes([number & 0x7F | 0x80])
        number >>= 7
    return result + bytes([number])


def aligned(part):
    return part + bytes(-len(part) % POINTER_SIZE)


def finished(image, weak, weak_libraries):
    """`weak` are names of symbols, `weak_libraries` names of libraries as the load commands have them."""
    image = bytearray(image.replace(SHIM, MENDED_SHIM).replace(LINKED_IMAGE_INFO, IMAGE_INFO))
    weak_numbers = make_libraries_weak(image, weak_libraries)
    found = commands(image)
    link_edit, symtab, dysymtab, info = (found[kind] for kind in (LC_SEGMENT, LC_SYMTAB, LC_DYSYMTAB, LC_DYLD_INFO_ONLY))
    symbol_offset, count, string_offset, _ = struct.unpack_from("<4I", image, symtab + 8)
    local_first, local_count, defined_first, defined_count, undefined_first, undefined_count = struct.unpack_from("<6I", image, dysymtab + 8)
    indirect_offset, indirect_count = struct.unpack_from("<2I", image, dysymtab + 56)
    if (local_first, defined_first, undefined_first) != (0, local_count, local_count + defined_count):
        sys.exit("the symbols are not in their usual order")

    symbols = b""
    strings = b" \0"
    thumb_addresses = set()
    made_weak = set()
    for number in range(local_count, count):
        name, kind, section, description, value = SYMBOL.unpack_from(image, symbol_offset + number * SYMBOL.size)
        name = text(image, string_offset + name)
        if kind & TYPE == 0:
            if name in weak or description >> 8 in weak_numbers:
                description |= WEAK
                made_weak.add(name)
        elif description & THUMB:
            thumb_addresses.add(value)
        symbols += SYMBOL.pack(len(strings), kind, section, description, value)
        strings += name + b"\0"

    indirect = b""
    for entry in struct.unpack_from(f"<{indirect_count}I", image, indirect_offset):
        local = not entry & NO_SYMBOL and entry < local_count
        indirect += struct.pack("<I", NO_SYMBOL if local else entry if entry & NO_SYMBOL else entry - local_count)

    rebase, rebase_size, bind, bind_size, _, _, lazy_bind, lazy_bind_size, exports, exports_size = struct.unpack_from("<10I", image, info + 8)
    make_bindings_weak(image, bind, bind_size, made_weak)
    make_bindings_weak(image, lazy_bind, lazy_bind_size, made_weak)
    if exports_size:
        mark_thumb_exports(image, exports, thumb_addresses)

    # Where each part of the last segment is told, at which offset the number of its bytes follows, and what it is now.
    parts = [(info + 8, info + 12, rebase_instructions(rebased_pointers(image, rebase, rebase_size)))]
    parts += [(at, at + 4, part_at(image, at)) for at in (info + 16, info + 32, info + 40, found[LC_DATA_IN_CODE] + 8)]
    parts += [(symtab + 8, None, symbols), (dysymtab + 56, None, indirect), (symtab + 16, symtab + 20, aligned(strings))]
    result = image[: struct.unpack_from("<I", image, link_edit + FILE_OFFSET)[0]]
    begin = len(result)
    for offset_at, size_at, part in parts:
        struct.pack_into("<I", result, offset_at, len(result))
        if size_at:
            struct.pack_into("<I", result, size_at, len(part))
        result += part
    struct.pack_into("<I", result, symtab + 12, count - local_count)
    struct.pack_into("<6I", result, dysymtab + 8, 0, 0, 0, defined_count, defined_count, undefined_count)
    struct.pack_into("<I", result, link_edit + FILE_OFFSET + 4, len(result) - begin)
    return bytes(result)


def part_at(image, command_offset):
    """The bytes whose offset in the file and number stand there."""
    offset, size = struct.unpack_from("<2I", image, command_offset)
    return bytes(image[offset : offset + size])


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("library", type=Path)
    parser.add_argument("objects", type=Path, nargs="+")
    parser.add_argument("--weak", type=Path, nargs="*", default=[])
    arguments = parser.parse_args()
    weak = weak_symbols([file.read_bytes() for file in arguments.objects])
    install_names = {re.search(r"^install-name:\s*(\S+)", stub.read_text(), re.MULTILINE)[1].encode() for stub in arguments.weak}
    arguments.library.write_bytes(finished(arguments.library.read_bytes(), weak, install_names))


main()
