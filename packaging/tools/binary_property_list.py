"""Writes a property list in the binary form: `binary_property_list.py IN OUT`."""

import plistlib
import sys
from pathlib import Path


def main():
    source, result = map(Path, sys.argv[1:])
    result.write_bytes(plistlib.dumps(plistlib.loads(source.read_bytes()), fmt=plistlib.FMT_BINARY))


main()
