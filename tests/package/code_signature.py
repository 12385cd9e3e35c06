"""Checks embedded code signatures, from what "cs_blobs.h" (XNU) says of them."""

import hashlib
import struct

EMBEDDED_SIGNATURE, CODE_DIRECTORY = 0xFADE0CC0, 0xFADE0C02
CODE_DIRECTORY_SLOT, REQUIREMENTS_SLOT = 0, 2
NO_REQUIREMENTS = bytes.fromhex("fade0c01 0000000c 00000000")
ALGORITHMS = {1: hashlib.sha1, 2: hashlib.sha256}


def read_blobs(signature):
    magic, length, count = struct.unpack_from(">III", signature)
    assert magic == EMBEDDED_SIGNATURE
    assert length == len(signature), "the signature does not fill its place"
    blobs = {}
    for i in range(count):
        slot, offset = struct.unpack_from(">II", signature, 12 + 8 * i)
        size = struct.unpack_from(">I", signature, offset + 4)[0]
        blobs[slot] = signature[offset : offset + size]
    return blobs


def check_directory(directory, code, blobs):
    """Recomputes every hash of a code directory and gives its algorithm's name and its identifier."""
    (magic, length, version, flags, hash_offset, identifier_offset, special_count, page_count, limit) = struct.unpack_from(
        ">9I", directory
    )
    size, kind, _, page_shift = directory[36:40]
    hash_of = ALGORITHMS[kind]
    assert magic == CODE_DIRECTORY and length == len(directory)
    assert version >= 0x20001
    assert flags == 0, "flags that an extension's directory does not have"
    assert page_shift == 12, "the phone signs pages of 4096 bytes"
    assert limit == len(code)
    assert page_count == -(-len(code) // 4096)

    def stored(slot):
        start = hash_offset + slot * size
        return directory[start : start + size]

    for page in range(page_count):
        assert stored(page) == hash_of(code[page * 4096 : (page + 1) * 4096]).digest(), f"the hash of page {page}"
    for slot in range(1, special_count + 1):
        expected = hash_of(blobs[slot]).digest() if slot in blobs else bytes(size)
        assert stored(-slot) == expected, f"the hash of special slot {slot}"
    return hash_of().name, directory[identifier_offset : directory.index(0, identifier_offset)].decode()
