"""Writes text stubs for the armv7 linker: `armv7_stubs.py FOLDER STUB.tbd ...`.

That linker reads no .tbd file for armv7; it reads the same facts in a YAML form of its own.
"""

import re
import sys
from pathlib import Path

TARGET = "armv7-ios"
EXPORTS = re.compile(r"- targets:\s*\[(.*?)\]\s*symbols:\s*\[(.*?)\]", re.DOTALL)


def words(text):
    return re.split(r"[,\s]+", text.strip())


def field(text, name):
    return re.search(rf"^{name}:\s*(\S+)", text, re.MULTILINE)[1]


def main():
    folder, *stubs = map(Path, sys.argv[1:])
    for stub in stubs:
        text = stub.read_text()
        symbols = [name for targets, names in EXPORTS.findall(text) if TARGET in words(targets) for name in words(names)]
        lines = [
            "--- !mach-o",
            "arch: armv7",
            "file-type: MH_DYLIB",
            "flags: [ ]",
            f"install-name: {field(text, 'install-name')}",
            f"compat-version: {field(text, 'compatibility-version')}.0",
            "exports:" if symbols else "exports: [ ]",
            *(f"  - name: {symbol}" for symbol in symbols),
            "...",
        ]
        (folder / stub.with_suffix(".yaml").name).write_text("\n".join(lines) + "\n")


main()
