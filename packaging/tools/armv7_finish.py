"""Does for an armv7 library what its linker leaves undone: `armv7_finish.py LIBRARY OBJECT ... [--weak STUB.tbd ...]`.

It takes the local symbols out, of which the linker keeps all (the stripping tools of the other processors' linker move the
segments to its own page size), marks the exported functions as Thumb code, so that a caller who looks one up by name enters
it in the right state, and mends the code by which a function that ends in a call of the platform goes to it. It also makes weak
what may be missing on a phone, which the linker forgets: the symbols that all objects that use them call weak, the libraries of
the weak stubs, and all symbols of those. The layout follows "OS X ABI Mach-O File Format Reference" and <mach-o/loader.h>.
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
LC_LOAD_WEAK_DYLIB = 0x80000018
LC_DYLD_INFO_ONLY = 0x80000022
SYMBOL = struct.Struct("<IBBhI")
TYPE = 0x0E  # in a symbol's type; none of it: undefined
THUMB = 0x0008  # in a symbol's description
WEAK = 0x0040  # in the description of an undefined symbol; the high byte is the number of its library, from 1
BIND_SYMBOL = 0x40  # of the loading instructions, with the symbol's name behind it
BIND_WEAK = 0x1  # with it
NUMBERS_BEHIND = {0x20: 1, 0x60: 1, 0x70: 1, 0x80: 1, 0xA0: 1, 0xC0: 2}  # in other such instructions
# From Thumb code to a stub, which is not: the linker adds the program counter to itself in place of ip.
SHIM = bytes.fromhex("dff804c0 ff44 6047")  # ldr ip, [pc, #4]; add pc, pc; bx ip
MENDED_SHIM = bytes.fromhex("dff804c0 fc44 6047")  # ldr ip, [pc, #4]; add ip, pc; bx ip
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


def finished(image, weak, weak_libraries):
    """`weak` are names of symbols, `weak_libraries` names of libraries as the load commands have them."""
    image = bytearray(image.replace(SHIM, MENDED_SHIM))
    weak_numbers = make_libraries_weak(image, weak_libraries)
    found = commands(image)
    link_edit, symtab, dysymtab = found[LC_SEGMENT], found[LC_SYMTAB], found[LC_DYSYMTAB]
    symbol_offset, count, string_offset, _ = struct.unpack_from("<4I", image, symtab + 8)
    local_first, local_count, defined_first, defined_count, undefined_first, undefined_count = struct.unpack_from("<6I", image, dysymtab + 8)
    indirect_offset, indirect_count = struct.unpack_from("<2I", image, dysymtab + 56)
    if (local_first, defined_first, undefined_first) != (0, local_count, local_count + defined_count):
        sys.exit("the symbols are not in their usual order")
    if symbol_offset > min(indirect_offset, string_offset):
        sys.exit("the symbol table is not the first of its tables")

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
    strings += bytes(-len(strings) % 4)

    bind, bind_size, lazy_bind, lazy_bind_size, export_offset = struct.unpack_from("<2I8x3I", image, found[LC_DYLD_INFO_ONLY] + 16)
    make_bindings_weak(image, bind, bind_size, made_weak)
    make_bindings_weak(image, lazy_bind, lazy_bind_size, made_weak)
    mark_thumb_exports(image, export_offset, thumb_addresses)

    indirect = b""
    for entry in struct.unpack_from(f"<{indirect_count}I", image, indirect_offset):
        local = not entry & NO_SYMBOL and entry < local_count
        indirect += struct.pack("<I", NO_SYMBOL if local else entry if entry & NO_SYMBOL else entry - local_count)

    new_indirect_offset = symbol_offset + len(symbols)
    new_string_offset = new_indirect_offset + len(indirect)
    struct.pack_into("<4I", image, symtab + 8, symbol_offset, count - local_count, new_string_offset, len(strings))
    struct.pack_into("<6I", image, dysymtab + 8, 0, 0, 0, defined_count, defined_count, undefined_count)
    struct.pack_into("<I", image, dysymtab + 56, new_indirect_offset)
    result = image[:symbol_offset] + symbols + indirect + strings

    file_offset = struct.unpack_from("<I", result, link_edit + 8 + 16 + 8)[0]
    struct.pack_into("<I", result, link_edit + 8 + 16 + 12, len(result) - file_offset)
    return bytes(result)


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
