"""Rewrites the assembly of an armv7 source for its linker: `armv7_assembly.py IN OUT`.

The armv7 linker leaves out the fixups of non-lazy symbol pointers; those of ordinary pointers in data it writes. So each
non-lazy pointer becomes an ordinary one, and gets a name that the linker sees: of what has none but the assembler's own it
would take the beginning of the section. And it knows no place for the image info by which the runtime tells that there is
something for it to fix: that goes by another name until the library is linked.
"""

import re
import sys
from pathlib import Path

SECTION = "\t.section\t__DATA,__nl_symbol_ptr,non_lazy_symbol_pointers\n"
NAME = re.compile(r"\bL_(\S+?\$non_lazy_ptr)")
IMAGE_INFO = "__objc_imageinfo"
LINKED_IMAGE_INFO = "__objc_infoimage"
POINTER = re.compile(r"\t\.indirect_symbol\t(\S+)\n\t\.long\t0\n")


def main():
    source, result = map(Path, sys.argv[1:])
    text = source.read_text().replace(SECTION, "\t.section\t__DATA,__const\n")
    text = POINTER.sub(r"\t.long\t\1\n", text)
    text = NAME.sub(r"l_\1", text)
    if ".indirect_symbol" in text or "non_lazy_symbol_pointers" in text:
        sys.exit(f"{source}: a symbol pointer of unknown form")
    result.write_text(text.replace(IMAGE_INFO, LINKED_IMAGE_INFO))


main()
