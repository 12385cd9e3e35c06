"""What a slice can do without, as the LLVM tools read it."""

import re
import subprocess


def listing(data, *command):
    """What an LLVM tool says of a slice."""
    return subprocess.run([*command, "-"], input=data, capture_output=True, check=True).stdout.decode()


def libraries(data):
    """The libraries with a weak load command."""
    return set(re.findall(r"^\t(\S+) \(.*, weak\)$", listing(data, "llvm-objdump-19", "--macho", "--dylibs-used"), re.MULTILINE))


def symbols(data):
    """The symbols that the symbol table calls weak, or the loading instructions that are followed at once."""
    table = re.findall(r"\(undefined\) weak external (\S+)", listing(data, "llvm-nm-19", "-m"))
    bound = re.findall(r"(\S+) \(weak_import\)$", listing(data, "llvm-objdump-19", "--macho", "--bind"), re.MULTILINE)
    return {*table, *bound}
