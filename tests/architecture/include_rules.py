"""Checks who includes whom: `include_rules.py SOURCE-FOLDER`."""

import re
import sys
from pathlib import Path

FREESTANDING = {"cstddef", "cstdint", "type_traits", "concepts", "limits", "bit"}

# The library's folders and platform: the only folders that each may include besides itself.
ALLOWED = {
    "core": {"lockscreen", "text", "calendar", "appstrip", "platform"},
    "lockscreen": {"text", "appstrip", "platform"},
    "text": {"calendar", "platform"},
    "calendar": {"platform"},
    "appstrip": {"text", "platform"},
    "platform": set(),
}
LIBRARY = set(ALLOWED) - {"platform"}

INCLUDE = re.compile(r'\s*#\s*(?:include|import)\s*([<"])([^>"]+)[>"]')
CONDITION = re.compile(r"\s*#\s*(?:if|ifdef|ifndef|elif|else|endif)\b")


def folder_of(path):
    return path.split("/")[0]


def library_fault(folder, bracket, path):
    if bracket == "<":
        return None if path in FREESTANDING else "is no free-standing header"
    if folder_of(path) in ALLOWED[folder] | {folder}:
        return None
    return f"is not for {folder}/"


def simulator_fault(bracket, path):
    if bracket == '"' and folder_of(path) not in {"simulator", "platform"}:
        return "is not for simulator/"
    return None


def faults_in(source, folder):
    for number, line in enumerate(source.read_text().splitlines(), 1):
        include = INCLUDE.match(line)
        if include:
            fault = simulator_fault(*include.groups()) if folder == "simulator" else library_fault(folder, *include.groups())
            if fault:
                yield number, f"{include.group(2)} {fault}"
        elif folder in LIBRARY and CONDITION.match(line):
            yield number, "the library is the same source everywhere"


def main():
    root = Path(sys.argv[1])
    count = 0
    failures = 0
    for folder in [*ALLOWED, "simulator"]:
        for source in sorted((root / folder).rglob("*.[ch]pp")):
            count += 1
            for number, fault in faults_in(source, folder):
                failures += 1
                print(f"{source.relative_to(root)}:{number}: {fault}")
    print(f"{count} files, {failures} faults")
    sys.exit(0 if count > 0 and failures == 0 else 1)


main()
