"""Takes the Thumb bit out of an armv7 object's pointers: `armv7_addends.py OBJECT`.

A pointer to a Thumb function has its lowest bit set. Where the function can be seen from other objects, the assembler sets it
in the pointer, and the armv7 linker adds it to that once more: the pointer would lead behind the function's first instruction.
So the bit is left to the linker. The layout follows "OS X ABI Mach-O File Format Reference" and <mach-o/loader.h>.
"""

import struct
import sys
from pathlib import Path

HEADER_SIZE = 28
LC_SEGMENT = 0x1
LC_SYMTAB = 0x2
SEGMENT_SIZE = 56
SECTION = struct.Struct("<16s16s9I")
SYMBOL = struct.Struct("<IBBhI")
THUMB = 0x0008  # in a symbol's description
SCATTERED = 0x80000000  # in a relocation's address
# What a relocation's second word has above the symbol's number, for a pointer to a symbol: 4 bytes, not relative, external.
POINTER_TO_SYMBOL = 0b0000_1_10_0


def without_thumb_bits(image):
    image = bytearray(image)
    sections = []
    symbols = 0
    offset = HEADER_SIZE
    for _ in range(struct.unpack_from("<I", image, 16)[0]):
        kind, size = struct.unpack_from("<II", image, offset)
        if kind == LC_SEGMENT:
            sections = [SECTION.unpack_from(image, at) for at in range(offset + SEGMENT_SIZE, offset + size, SECTION.size)]
        elif kind == LC_SYMTAB:
            (symbols,) = struct.unpack_from("<I", image, offset + 8)
        offset += size
    for _, _, _, _, content, _, relocations, count, *_ in sections:
        for number in range(count):
            address, target = struct.unpack_from("<II", image, relocations + 8 * number)
            if address & SCATTERED or target >> 24 != POINTER_TO_SYMBOL:
                continue
            _, _, _, description, _ = SYMBOL.unpack_from(image, symbols + (target & 0xFFFFFF) * SYMBOL.size)
            if description & THUMB:
                image[content + address] &= 0xFE
    return bytes(image)


def main():
    object_file = Path(sys.argv[1])
    object_file.write_bytes(without_thumb_bits(object_file.read_bytes()))


main()
