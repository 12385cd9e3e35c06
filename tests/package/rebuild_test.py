"""Builds the phone's package once more, from a copy of the sources in another folder, and compares every byte:
`rebuild_test.py PACKAGE COMPILER CMAKE`.
"""

import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

SOURCES = Path(__file__).parents[2]


def main():
    package, compiler, cmake = Path(sys.argv[1]), sys.argv[2], sys.argv[3]
    with tempfile.TemporaryDirectory() as folder:
        copy = Path(folder) / "another name for the sources"
        shutil.copytree(SOURCES, copy, ignore=lambda parent, names: [name for name in names if name in ("build", ".git")])
        build = copy / "build/again"
        configure = [cmake, "-S", copy, "-B", build, "-G", "Ninja", f"-DCMAKE_CXX_COMPILER={compiler}", "-DBUILD_TESTING=OFF"]
        for command in (configure, [cmake, "--build", build, "--target", "phone_package"]):
            done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
            if done.returncode != 0:
                sys.exit(done.stdout)
        again = build / "package" / package.name
        if again.read_bytes() != package.read_bytes():
            kept = Path(tempfile.mkdtemp()) / package.name
            shutil.copy(again, kept)
            sys.exit(f"{package} and {kept} differ")


main()
