"""Checks what a library says of what may be missing on a phone: `weak_imports_test.py LIBRARY ... [unittest arguments]`.

The libraries are the fixture's, one for each processor. Each may lack one library, and a function and a variable of another.
"""

import subprocess
import sys
import unittest
from pathlib import Path

import mach_o
import weak_imports

SOURCES = Path(__file__).parents[2]
LIBRARIES = [Path(argument) for argument in sys.argv[1:] if argument.endswith(".dylib")]
del sys.argv[1 : 1 + len(LIBRARIES)]

OF_SOME_PHONES = {"_functionOfSomePhones", "_variableOfSomePhones"}
OF_NO_PHONE = {"_functionThatNoPhoneHas"}


class WeakImports(unittest.TestCase):
    def test_are_the_libraries_that_may_be_missing(self):
        for library in LIBRARIES:
            data = library.read_bytes()
            for found in (weak_imports.libraries(data), mach_o.Image(data).weak_libraries):
                self.assertEqual(found, {"/usr/lib/libNoSuchLibrary.dylib"}, library)

    def test_are_the_symbols_that_may_be_missing(self):
        for library in LIBRARIES:
            data = library.read_bytes()
            self.assertEqual(weak_imports.symbols(data), OF_SOME_PHONES | OF_NO_PHONE, library)
            self.assertEqual(mach_o.Image(data).weak_bindings(), OF_SOME_PHONES | OF_NO_PHONE, library)


class Linker(unittest.TestCase):
    def test_fails_when_it_warns(self):
        for linker, outcome in (("exit 0", 0), ("echo 'warning: ignoring' >&2", 1), ("exit 3", 3)):
            link = [sys.executable, SOURCES / "packaging/tools/strict_link.py", "sh", "-c", linker]
            self.assertEqual(subprocess.run(link, capture_output=True, check=False).returncode, outcome, linker)


if __name__ == "__main__":
    unittest.main()
