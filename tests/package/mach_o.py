"""Reads Mach-O files: as much as a test of the library's file needs ("OS X ABI Mach-O File Format Reference")."""

import struct

CPU_NAMES = {12: "armv7", 0x0100000C: "arm64", 0x01000007: "x86_64"}

LC_SEGMENT = 0x1
LC_SYMTAB = 0x2
LC_LOAD_DYLIB = 0xC
LC_ID_DYLIB = 0xD
LC_LOAD_WEAK_DYLIB = 0x80000018
LC_SEGMENT_64 = 0x19
LC_CODE_SIGNATURE = 0x1D
LC_VERSION_MIN_IPHONEOS = 0x25
LC_DYLD_INFO_ONLY = 0x80000022

S_MOD_INIT_FUNC_POINTERS = 9


def slices(data):
    """By processor: the bytes of its slice, and the exponent and offset of its place in the file."""
    magic, count = struct.unpack_from(">II", data)
    assert magic == 0xCAFEBABE, "not a file for several processors"
    found = {}
    for i in range(count):
        cpu, _, offset, size, alignment = struct.unpack_from(">5I", data, 8 + 20 * i)
        found[CPU_NAMES[cpu]] = (data[offset : offset + size], alignment, offset)
    return found


def uleb(data, offset):
    value = shift = 0
    while True:
        byte = data[offset]
        offset += 1
        value |= (byte & 0x7F) << shift
        shift += 7
        if byte < 0x80:
            return value, offset


def text(data, offset):
    return data[offset : data.index(0, offset)].decode()


class Image:
    """One slice."""

    def __init__(self, data):
        self.data = data
        magic, _, _, self.file_type, count, _, self.flags = struct.unpack_from("<7I", data)
        self.is_64_bit = magic == 0xFEEDFACF
        self.word = 8 if self.is_64_bit else 4
        self.segments = []
        self.sections = {}
        self.libraries = []
        self.weak_libraries = set()
        self.commands = {}
        offset = 32 if self.is_64_bit else 28
        for _ in range(count):
            kind, size = struct.unpack_from("<II", data, offset)
            self.commands.setdefault(kind, offset)
            if kind in (LC_SEGMENT, LC_SEGMENT_64):
                self._read_segment(offset)
            elif kind in (LC_LOAD_DYLIB, LC_LOAD_WEAK_DYLIB, LC_ID_DYLIB):
                name, _, current, compatibility = struct.unpack_from("<4I", data, offset + 8)
                entry = (text(data, offset + name), compatibility)
                if kind == LC_ID_DYLIB:
                    self.install_name = entry[0]
                else:
                    self.libraries.append(entry)
                    if kind == LC_LOAD_WEAK_DYLIB:
                        self.weak_libraries.add(entry[0])
            offset += size

    def _read_segment(self, offset):
        form, section_form = ("<16s4Q4I", "<16s16sQQ6I") if self.is_64_bit else ("<16s4I4I", "<16s16sII6I")
        name, address, size, file_offset, file_size, _, protection, count, _ = struct.unpack_from(form, self.data, offset + 8)
        segment = {
            "name": name.rstrip(b"\0").decode(),
            "address": address,
            "size": size,
            "file_offset": file_offset,
            "file_size": file_size,
            "protection": protection,
        }
        self.segments.append(segment)
        start = offset + 8 + struct.calcsize(form)
        stride = 80 if self.is_64_bit else 68
        for i in range(count):
            fields = struct.unpack_from(section_form, self.data, start + i * stride)
            self.sections[segment["name"], fields[0].rstrip(b"\0").decode()] = {
                "address": fields[2],
                "size": fields[3],
                "file_offset": fields[4],
                "kind": fields[8] & 0xFF,
            }

    def number(self, kind, offset):
        return struct.unpack_from("<I", self.data, self.commands[kind] + offset)[0]

    @property
    def minimum_version(self):
        version = self.number(LC_VERSION_MIN_IPHONEOS, 8)
        return version >> 16, version >> 8 & 0xFF

    def initialisers(self):
        """The addresses in the order in which they run, with an armv7 one's Thumb bit."""
        addresses = []
        for section in self.sections.values():
            if section["kind"] == S_MOD_INIT_FUNC_POINTERS:
                form = f"<{section['size'] // self.word}{'Q' if self.is_64_bit else 'I'}"
                addresses += struct.unpack_from(form, self.data, section["file_offset"])
        return addresses

    def exports(self):
        """The address of each exported symbol."""
        start, size = (self.number(LC_DYLD_INFO_ONLY, offset) for offset in (40, 44))
        trie = self.data[start : start + size]
        found = {}

        def walk(node, name):
            length, offset = uleb(trie, node)
            if length:
                _, place = uleb(trie, offset)
                found[name] = uleb(trie, place)[0]
            offset += length
            count = trie[offset]
            offset += 1
            for _ in range(count):
                label = text(trie, offset)
                child, offset = uleb(trie, offset + len(label) + 1)
                walk(child, name + label)

        if trie:
            walk(0, "")
        return found

    def undefined_symbols(self):
        symbols, count, strings, _ = (self.number(LC_SYMTAB, 8 + 4 * i) for i in range(4))
        stride = 16 if self.is_64_bit else 12
        found = set()
        for i in range(count):
            name, kind = struct.unpack_from("<IB", self.data, symbols + i * stride)
            if kind & 0x0E == 0:
                found.add(text(self.data, strings + name))
        return found

    def local_symbol_count(self):
        symbols, count, _, _ = (self.number(LC_SYMTAB, 8 + 4 * i) for i in range(4))
        stride = 16 if self.is_64_bit else 12
        return sum(1 for i in range(count) if not self.data[symbols + i * stride + 4] & 1)

    def bindings(self):
        """What the loader fills in, lazily or not: each symbol with the library that it is to come from."""
        return {(symbol, library) for symbol, library, _ in self._bindings()}

    def weak_bindings(self):
        """The symbols of which each binding says that they may be missing."""
        bindings = self._bindings()
        return {symbol for symbol, _, _ in bindings} - {symbol for symbol, _, is_weak in bindings if not is_weak}

    def _bindings(self):
        found = set()
        for field in (16, 32):
            start, size = (self.number(LC_DYLD_INFO_ONLY, field + offset) for offset in (0, 4))
            offset, end = start, start + size
            library = symbol = is_weak = None
            while offset < end:
                opcode, immediate = self.data[offset] & 0xF0, self.data[offset] & 0x0F
                offset += 1
                if opcode == 0x10:
                    library = immediate
                elif opcode == 0x20:
                    library, offset = uleb(self.data, offset)
                elif opcode == 0x30:
                    library = -immediate
                elif opcode == 0x40:
                    symbol, is_weak = text(self.data, offset), bool(immediate & 1)
                    offset += len(symbol) + 1
                elif opcode in (0x60, 0x70, 0x80):
                    _, offset = uleb(self.data, offset)
                elif opcode >= 0x90:
                    found.add((symbol, self.libraries[library - 1][0] if library > 0 else library, is_weak))
                    for _ in range({0xA0: 1, 0xC0: 2}.get(opcode, 0)):
                        _, offset = uleb(self.data, offset)
        return found
