"""Does for an armv7 library what its linker leaves undone: `armv7_finish.py LIBRARY`.

It takes the local symbols out, of which the linker keeps all (the stripping tools of the other processors' linker move the
segments to its own page size), marks the exported functions as Thumb code, so that a caller who looks one up by name enters
it in the right state, and mends the code by which a function that ends in a call of the platform goes to it. The layout follows "OS X ABI Mach-O File Format Reference" and <mach-o/loader.h>.
"""

import struct
import sys
from pathlib import Path

HEADER_SIZE = 28
LC_SEGMENT = 0x1
LC_SYMTAB = 0x2
LC_DYSYMTAB = 0xB
LC_DYLD_INFO_ONLY = 0x80000022
SYMBOL = struct.Struct("<IBBhI")
THUMB = 0x0008  # in a symbol's description
# From Thumb code to a stub, which is not: the linker adds the program counter to itself in place of ip.
SHIM = bytes.fromhex("dff804c0 ff44 6047")  # ldr ip, [pc, #4]; add pc, pc; bx ip
MENDED_SHIM = bytes.fromhex("dff804c0 fc44 6047")  # ldr ip, [pc, #4]; add ip, pc; bx ip
NO_SYMBOL = 0x40000000  # in the table of indirect symbols: a local or absolute one


def commands(image):
    """The offset of each load command by its kind; of the segments, the last one's."""
    offset = HEADER_SIZE
    found = {}
    for _ in range(struct.unpack_from("<I", image, 16)[0]):
        kind, size = struct.unpack_from("<II", image, offset)
        found[kind] = offset
        offset += size
    return found


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


def finished(image):
    image = bytearray(image.replace(SHIM, MENDED_SHIM))
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
    for number in range(local_count, count):
        name, *rest = SYMBOL.unpack_from(image, symbol_offset + number * SYMBOL.size)
        start = string_offset + name
        if rest[2] & THUMB:
            thumb_addresses.add(rest[3])
        symbols += SYMBOL.pack(len(strings), *rest)
        strings += image[start : image.index(0, start) + 1]
    strings += bytes(-len(strings) % 4)

    (export_offset,) = struct.unpack_from("<I", image, found[LC_DYLD_INFO_ONLY] + 40)
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
    library = Path(sys.argv[1])
    library.write_bytes(finished(library.read_bytes()))


main()
