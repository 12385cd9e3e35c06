"""Runs a linker: `strict_link.py COMMAND ...`. What it warns of fails the link as its errors do."""

import subprocess
import sys


def main():
    linker = subprocess.run(sys.argv[1:], stderr=subprocess.PIPE, check=False)
    sys.stderr.buffer.write(linker.stderr)
    sys.exit(linker.returncode or bool(linker.stderr))


main()
