"""Checks the library's file: `library_image.py exports|initialisers TREE`, TREE being the phone's file tree.

SOLVANE_PHONE_TREE in the environment names another tree.
"""

import os
import re
import subprocess
import sys
from pathlib import Path


def run(*words):
    return subprocess.run(words, check=True, capture_output=True, text=True).stdout


def check_exports(library):
    intended = set((Path(__file__).parent.parent / "exported_names.txt").read_text().split())
    # The address sanitizer marks each exported variable with a symbol of its own.
    exported = {
        line.split()[-1].split("@")[0]
        for line in run("nm", "-D", "--defined-only", library).splitlines()
        if "__odr_asan" not in line
    }
    for name in sorted(exported - intended):
        print(f"{name} is exported and not meant to be")
    for name in sorted(intended - exported):
        print(f"{name} is not exported")
    return exported == intended


def initialisers(library):
    """The functions that the loader calls, in its order: names, or addresses where the file has no names for them."""
    array = re.search(r"\.init_array\s+INIT_ARRAY\s+([0-9a-f]+)\s+[0-9a-f]+\s+([0-9a-f]+)", run("readelf", "-SW", library))
    start, size = (int(number, 16) for number in array.groups())
    names = {}
    for line in run("nm", library).splitlines():
        fields = line.split()
        if len(fields) == 3 and fields[1] in "tT":
            names[int(fields[0], 16)] = fields[2]
    functions = {}
    for line in run("readelf", "-rW", library).splitlines():
        fields = line.split()
        if len(fields) == 4 and "RELATIVE" in fields[2]:
            functions[int(fields[0], 16)] = int(fields[3], 16)
    return [names.get(functions.get(place), hex(functions.get(place, 0))) for place in range(start, start + size, 8)]


def check_initialisers(library):
    # The compiler's own: the start files' frame_dummy, and the address sanitizer's registration of each file's variables.
    ours = [name for name in initialisers(library) if name != "frame_dummy" and not name.startswith("_sub_I_00099")]
    print("\n".join(ours))
    return len(ours) == 2 and "installHooks" in ours[0] and "buildGreetings" in ours[1]


def main():
    checks = {"exports": check_exports, "initialisers": check_initialisers}
    tree = Path(os.environ.get("SOLVANE_PHONE_TREE", sys.argv[2]))
    library = str(tree / "Library/MobileSubstrate/DynamicLibraries/Solvane.dylib")
    sys.exit(0 if checks[sys.argv[1]](library) else 1)


main()
