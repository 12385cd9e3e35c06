"""Gives a Mach-O library of one processor a code signature: `sign.py IDENTIFIER LIBRARY`.

It has the form in which extensions for iOS 7 and 8 are signed: one code directory of SHA-1 hashes without any flag, an empty set
of requirements, and nothing else. No certificate stands behind it. Its layout follows "cs_blobs.h" (XNU); that of the file,
"OS X ABI Mach-O File Format Reference". The same input gives the same output, byte for byte.
"""

import hashlib
import struct
import sys
from pathlib import Path

HEADER_SIZES = {0xFEEDFACE: 28, 0xFEEDFACF: 32}
SEGMENT_COMMANDS = {0x1: "<16s4I", 0x19: "<16s4Q"}
LC_CODE_SIGNATURE = 0x1D

EMBEDDED_SIGNATURE = 0xFADE0CC0
CODE_DIRECTORY = 0xFADE0C02
REQUIREMENTS = 0xFADE0C01

CODE_DIRECTORY_SLOT = 0
REQUIREMENTS_SLOT = 2

CODE_DIRECTORY_VERSION = 0x20001
NO_FLAGS = 0
PAGE_SHIFT = 12
PAGE = 1 << PAGE_SHIFT
SEGMENT_ALIGNMENT = 0x4000  # the largest page of the phones' processors
SHA1 = 1


class Fault(Exception):
    pass


def aligned(offset, alignment):
    return (offset + alignment - 1) // alignment * alignment


def blob(magic, content=b""):
    return struct.pack(">II", magic, 8 + len(content)) + content


def digest(data):
    return hashlib.sha1(data).digest()


def code_directory(identifier, code, requirements):
    pages = [digest(code[start : start + PAGE]) for start in range(0, len(code), PAGE)]
    no_info_plist = bytes(len(pages[0]))
    special = [digest(requirements), no_info_plist]  # slots -2 and -1

    head = struct.Struct(">IIIIIIIIIBBBBI")
    name = identifier.encode() + b"\0"
    hash_offset = head.size + len(name) + len(special) * len(pages[0])
    size = hash_offset + len(pages) * len(pages[0])
    return (
        head.pack(
            CODE_DIRECTORY, size, CODE_DIRECTORY_VERSION, NO_FLAGS, hash_offset, head.size, len(special), len(pages),
            len(code), len(pages[0]), SHA1, 0, PAGE_SHIFT, 0,
        )
        + name
        + b"".join(special)
        + b"".join(pages)
    )  # fmt: skip


def signature(identifier, code):
    requirements = blob(REQUIREMENTS, struct.pack(">I", 0))
    parts = [
        (CODE_DIRECTORY_SLOT, code_directory(identifier, code, requirements)),
        (REQUIREMENTS_SLOT, requirements),
    ]
    offset = 12 + 8 * len(parts)
    index = b""
    for slot, part in parts:
        index += struct.pack(">II", slot, offset)
        offset += len(part)
    return blob(EMBEDDED_SIGNATURE, struct.pack(">I", len(parts)) + index + b"".join(part for _, part in parts))


def commands(image):
    """The load commands: the offset and kind of each."""
    header_size = HEADER_SIZES.get(struct.unpack_from("<I", image)[0])
    if header_size is None:
        raise Fault("not a little-endian Mach-O file of one processor")
    count, _ = struct.unpack_from("<II", image, 16)
    offset = header_size
    for _ in range(count):
        kind, size = struct.unpack_from("<II", image, offset)
        yield offset, kind
        offset += size
    yield offset, None


def segments(image):
    """By name: the offset and form of the segment's fields, and their values: name, address, size, file offset, file size."""
    found = {}
    for offset, kind in commands(image):
        if kind in SEGMENT_COMMANDS:
            form = SEGMENT_COMMANDS[kind]
            fields = struct.unpack_from(form, image, offset + 8)
            found[fields[0].rstrip(b"\0")] = (offset + 8, form, fields)
    return found


def first_section(image):
    """Where the contents of the first section begin in the file."""
    starts = []
    for offset, kind in commands(image):
        if kind in SEGMENT_COMMANDS:
            head, size, place = (56, 68, 40) if kind == 0x1 else (72, 80, 48)
            (count,) = struct.unpack_from("<I", image, offset + head - 8)
            starts += [struct.unpack_from("<I", image, offset + head + size * i + place)[0] for i in range(count)]
    return min(start for start in starts if start)


def signed(image, identifier):
    places = list(commands(image))
    if any(kind == LC_CODE_SIGNATURE for _, kind in places):
        raise Fault("it has a signature already")

    start = aligned(len(image), 16)
    image = bytearray(image.ljust(start, b"\0"))

    # The size of a signature depends on the size of the code alone.
    size = len(signature(identifier, bytes(start)))

    # A load command more, in the room that the linker left behind the others.
    end, _ = places[-1]
    room = 16
    if end + room > first_section(image) or any(image[end : end + room]):
        raise Fault("there is no room for another load command")
    struct.pack_into("<IIII", image, end, LC_CODE_SIGNATURE, room, start, size)
    count, command_size = struct.unpack_from("<II", image, 16)
    struct.pack_into("<II", image, 16, count + 1, command_size + room)

    # The last segment grows by the signature.
    place, form, (name, address, _, file_offset, _) = segments(image)[b"__LINKEDIT"]
    file_size = start + size - file_offset
    struct.pack_into(form, image, place, name, address, aligned(file_size, SEGMENT_ALIGNMENT), file_offset, file_size)

    return bytes(image) + signature(identifier, bytes(image))


def main():
    identifier, library = sys.argv[1], Path(sys.argv[2])
    try:
        library.write_bytes(signed(library.read_bytes(), identifier))
    except Fault as fault:
        sys.exit(f"{library}: {fault}")


if __name__ == "__main__":
    main()
